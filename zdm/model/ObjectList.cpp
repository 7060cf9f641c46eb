#include "zdm/model/ObjectList.h"

#include "platform/ole/Bstr.h"
#include "platform/system/Text.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/identity/OID.h"
#include "zdm/model/IZDMObjColl.h"
#include "zdm/module/ClassTable.h"

#include <algorithm>
#include <string>
#include <utility>

namespace {

using zdm::ObjectList;

POSITION ToPosition(LONGLONG pos) { return reinterpret_cast<POSITION>(pos); }
LONGLONG FromPosition(POSITION pos) { return reinterpret_cast<LONGLONG>(pos); }

/// The first position from `pos` on whose object passes; null if none.
template <class Test>
POSITION FirstFrom(ObjectList& objects, POSITION pos, Test passes) {
  while (pos != nullptr) {
    const POSITION at = pos;
    if (passes(objects.GetNext(pos).Get())) return at;
  }
  return nullptr;
}

template <class Test>
POSITION LastFrom(ObjectList& objects, POSITION pos, Test passes) {
  while (pos != nullptr) {
    const POSITION at = pos;
    if (passes(objects.GetPrev(pos).Get())) return at;
  }
  return nullptr;
}

auto With(LONG bit) {
  return [bit](IZDMObject* object) { return zdm::HasStatus(object, bit); };
}

zdm::Bstr NameOf(IZDMObject* object) {
  zdm::Bstr name;
  object->GetName(name.Out());
  return name;
}

/// The first object of that name among those that pass.
template <class Test>
IZDMObject* FindNamed(ObjectList& objects, const OLECHAR* name, Test passes) {
  const zdm::Bstr wanted(name);
  const POSITION pos = FirstFrom(objects, objects.GetHeadPosition(), [&](IZDMObject* object) {
    return passes(object) && zdm::SameName(NameOf(object).Get(), wanted.Get());
  });
  return pos != nullptr ? objects.GetAt(pos).Get() : nullptr;
}

}  // namespace

LONGLONG zdm::GetHeadStatusPosition(ObjectList& objects, LONG bit) {
  return FromPosition(FirstFrom(objects, objects.GetHeadPosition(), With(bit)));
}

LONGLONG zdm::GetTailStatusPosition(ObjectList& objects, LONG bit) {
  return FromPosition(LastFrom(objects, objects.GetTailPosition(), With(bit)));
}

IZDMObject* zdm::GetStatusNext(ObjectList& objects, LONG bit, LONGLONG& pos) {
  POSITION next = ToPosition(pos);
  IZDMObject* object = objects.GetNext(next).Get();
  pos = FromPosition(FirstFrom(objects, next, With(bit)));
  return object;
}

IZDMObject* zdm::GetStatusPrev(ObjectList& objects, LONG bit, LONGLONG& pos) {
  POSITION prev = ToPosition(pos);
  IZDMObject* object = objects.GetPrev(prev).Get();
  pos = FromPosition(LastFrom(objects, prev, With(bit)));
  return object;
}

ULONG zdm::GetStatusCount(ObjectList& objects, LONG bit) {
  ULONG count = 0;
  for (POSITION pos = objects.GetHeadPosition(); pos != nullptr;) {
    if (HasStatus(objects.GetNext(pos), bit)) ++count;
  }
  return count;
}

LONG zdm::MovePrevStatus(ObjectList& objects, IZDMObject* object, LONG bit) {
  // From the tail, like the list's own MovePrev: of two positions of one object the last one moves.
  const auto isObject = [&](IZDMObject* other) { return other == object && HasStatus(other, bit); };
  const POSITION head = ToPosition(GetHeadStatusPosition(objects, bit));
  if (head == nullptr || objects.GetAt(head).Get() == object) return E_FAIL;
  const POSITION at = LastFrom(objects, objects.GetTailPosition(), isObject);
  if (at == nullptr) return E_FAIL;
  LONGLONG prev = FromPosition(at);
  GetStatusPrev(objects, bit, prev);
  objects.SwapElements(at, ToPosition(prev));
  return S_OK;
}

LONG zdm::MoveNextStatus(ObjectList& objects, IZDMObject* object, LONG bit) {
  const auto isObject = [&](IZDMObject* other) { return other == object && HasStatus(other, bit); };
  const POSITION tail = ToPosition(GetTailStatusPosition(objects, bit));
  if (tail == nullptr || objects.GetAt(tail).Get() == object) return E_FAIL;
  const POSITION at = FirstFrom(objects, objects.GetHeadPosition(), isObject);
  if (at == nullptr) return E_FAIL;
  LONGLONG next = FromPosition(at);
  GetStatusNext(objects, bit, next);
  objects.SwapElements(at, ToPosition(next));
  return S_OK;
}

IZDMObject* zdm::FindByName(ObjectList& objects, const OLECHAR* name) {
  return FindNamed(objects, name, [](IZDMObject* object) { return object != nullptr; });
}

IZDMObject* zdm::FindByNameStatus(ObjectList& objects, const OLECHAR* name, LONG bit) {
  return FindNamed(objects, name, With(bit));
}

void zdm::CollectStatus(ObjectList& objects, IZDMObjColl* coll, LONG bit,
                        unsigned short interfaceId) {
  if (coll == nullptr) return;
  for (POSITION pos = objects.GetHeadPosition(); pos != nullptr;) {
    IZDMObject* object = objects.GetNext(pos).Get();
    if (HasStatus(object, bit) && Answers(object, interfaceId)) coll->AddTail(object);
  }
}

// Collect.

namespace {

/// Holds the status lock of a bit while it lives; a lock found there comes back afterwards.
class StatusLock {
 public:
  StatusLock(LONG bit, ULONGLONG key)
      : bit_(static_cast<std::size_t>(bit)),
        wasLocked_(OID::c_ObjStatusLock.test(bit_)),
        formerKey_(std::exchange(OID::c_ObjStatusKey[bit_], key)) {
    OID::c_ObjStatusLock.set(bit_);
  }
  StatusLock(const StatusLock&) = delete;
  StatusLock& operator=(const StatusLock&) = delete;
  ~StatusLock() {
    OID::c_ObjStatusLock.set(bit_, wasLocked_);
    OID::c_ObjStatusKey[bit_] = formerKey_;
  }

 private:
  std::size_t bit_;
  bool wasLocked_;
  ULONGLONG formerKey_;
};

/// Sets a status bit on objects and takes it off everything in a collection when it ends.
class Marks {
 public:
  Marks(IZDMObjColl& coll, LONG bit, ULONGLONG key) : coll_(coll), bit_(bit), key_(key) {}
  Marks(const Marks&) = delete;
  Marks& operator=(const Marks&) = delete;
  ~Marks() {
    for (LONGLONG pos = coll_.GetHeadPosition(); pos != 0;) {
      IZDMObject* object = coll_.GetNext(pos);
      OID* oid = object != nullptr ? object->GetOID() : nullptr;
      if (oid != nullptr) oid->ClearStatus(bit_, key_);
    }
  }

  bool Has(IZDMObject* object) const { return object->JudgeStatus(bit_); }
  void Set(IZDMObject* object) const {
    if (OID* oid = object->GetOID()) oid->SetStatus(bit_, key_);
  }

 private:
  IZDMObjColl& coll_;
  LONG bit_;
  ULONGLONG key_;
};

void CollectInto(IZDMObjColl& coll, ObjectList& objects, unsigned short interfaceId, bool all,
                 LONG mark, ULONGLONG key) {
  const Marks marks(coll, mark, key);
  for (POSITION pos = objects.GetHeadPosition(); pos != nullptr;) {
    IZDMObject* object = objects.GetNext(pos).Get();
    if (!zdm::Answers(object, interfaceId)) continue;
    if (!all && marks.Has(object)) continue;
    coll.AddTail(object);
    if (!all) marks.Set(object);
  }
}

}  // namespace

void zdm::Collect(ObjectList& objects, unsigned short interfaceId, bool all, LONG mark,
                  ULONGLONG key, IZDMObjColl** out) {
  *out = nullptr;
  auto coll = CreateAs<IZDMObjColl>(ClassRow<CZDMObjColl>::kClassID);
  if (coll == nullptr) throw CAtlException(E_OUTOFMEMORY);
  if (key != 0) {
    const StatusLock lock(mark, key);
    CollectInto(*coll, objects, interfaceId, all, mark, key);
  } else {
    CollectInto(*coll, objects, interfaceId, all, mark, key);
  }
  *out = coll.Detach();
}

// Unique names.

namespace {

constexpr LONGLONG kLastNumber = 0x7FFFFFFFFFFFFFFE;  // one more is still a number

bool IsSpace(OLECHAR unit) {
  return unit == ' ' || (unit >= 0x09 && unit <= 0x0D) || unit == 0x85 || unit == 0xA0 ||
         unit == 0x1680 || (unit >= 0x2000 && unit <= 0x200A) || unit == 0x2028 || unit == 0x2029 ||
         unit == 0x202F || unit == 0x205F || unit == 0x3000;
}

/// `text` without any occurrence of `part`, from left to right.
zdm::WideString Without(zdm::WideView text, zdm::WideView part) {
  zdm::WideString rest;
  std::size_t from = 0;
  for (std::size_t at; !part.empty() && (at = text.find(part, from)) != zdm::WideView::npos;
       from = at + part.size()) {
    rest += text.substr(from, at - from);
  }
  rest += text.substr(from);
  return rest;
}

/// The decimal number at the start of `text`, behind blanks; 0 without digits, for a negative one,
/// and for one beyond kLastNumber, which no new name can run into.
LONGLONG NumberAtStart(zdm::WideView text) {
  std::size_t at = 0;
  while (at < text.size() && IsSpace(text[at])) ++at;
  if (at < text.size() && text[at] == '+') ++at;
  LONGLONG number = 0;
  for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
    const LONGLONG digit = text[at] - '0';
    if (number > (kLastNumber - digit) / 10) return 0;
    number = number * 10 + digit;
  }
  return number;
}

}  // namespace

void zdm::GetUniqueName(ObjectList& objects, const OLECHAR* prefix, BSTR* out) {
  const WideView start = prefix != nullptr ? WideView(prefix) : WideView();
  LONGLONG count = 0;
  LONGLONG highest = 0;
  for (POSITION pos = objects.GetHeadPosition(); pos != nullptr && prefix != nullptr;) {
    IZDMObject* object = objects.GetNext(pos).Get();
    if (object == nullptr) continue;
    const Bstr name = NameOf(object);
    if (name.View().find(start) == WideView::npos) continue;
    highest = std::max(highest, NumberAtStart(Without(name.View(), start)));
    ++count;
  }
  WideString text(start);
  text += ' ';
  for (const char digit : std::to_string(std::max(count, highest) + 1)) {
    text += static_cast<OLECHAR>(digit);
  }
  *out = Bstr(WideView(text)).Detach();
}
