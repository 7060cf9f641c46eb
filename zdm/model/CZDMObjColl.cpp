#include "zdm/model/CZDMObjColl.h"

#include "platform/geometry/GeBox.h"
#include "platform/geometry/IGeArc.h"
#include "platform/geometry/IGeCircle.h"
#include "platform/geometry/IGeLnSeg.h"
#include "platform/ole/Bstr.h"
#include "platform/system/TextResource.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/host/IZGiDevice.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/identity/OID.h"
#include "zdm/model/ObjectList.h"
#include "zdm/relations/ZReltnVisitorSelfContained.h"
#include "zdm/relations/ZReltnVisitorStatus.h"

#include <cstdint>
#include <optional>

ZDM_OBJECT_BODY(CZDMObjColl)

namespace {

// Display objects, made by the host's classes.
constexpr GUID kLineClass = zdm::ParseGuid("372A4411-F452-4DB6-81C3-8C5BDAF1CEC9");
constexpr GUID kCircleClass = zdm::ParseGuid("94981451-1622-411E-92B0-A3CCA6B855D9");
constexpr GUID kArcClass = zdm::ParseGuid("3C92B48A-4A96-469C-A49E-4E9B188AB88A");

/// True at the first element that is not null and for which `test(IZDMObject&)` is. What is called
/// may change the collection.
template <class Test>
bool AnyOf(zdm::ObjectList& objects, Test test) {
  zdm::ObjectList::Walk walk(objects);
  while (const ZRefPtr<IZDMObject>* next = walk.Next()) {
    IZDMObject* const object = *next;
    if (object != nullptr && test(*object)) return true;
  }
  return false;
}

/// Calls `action(IZDMObject&)` for every element that is not null, as AnyOf does.
template <class Action>
void ForEach(zdm::ObjectList& objects, Action action) {
  AnyOf(objects, [&](IZDMObject& object) {
    action(object);
    return false;
  });
}

/// A new object of the class, given its geometry by `shape(Geometry&)`; null without such a class.
template <class Geometry, class Shape>
ZRefPtr<IZDMObject> MakeShape(const GUID& classId, Shape shape) {
  auto object = zdm::CreateAs<IZDMObject>(classId);
  auto* geometry = zdm::ViewAs<Geometry>(object);
  if (geometry == nullptr) return nullptr;
  shape(*geometry);
  return object;
}

/// The text that `name` is or whose number it is; none when the library has no such text.
std::optional<zdm::WideString> TextOf(const OLECHAR* name) {
  const auto number = reinterpret_cast<std::uintptr_t>(name);
  if (number > 0xFFFF) return zdm::WideString(name);
  return zdm::LoadTextResource(static_cast<USHORT>(number));
}

/// Marks what a collection holds, and takes the mark off again.
class MembersMarked {
 public:
  // Delegates, so that the destructor runs also when a mark cannot be set.
  explicit MembersMarked(zdm::ObjectList& objects) : MembersMarked() {
    ForEach(objects, [this](IZDMObject& object) { Mark(&object); });
  }
  MembersMarked(const MembersMarked&) = delete;
  MembersMarked& operator=(const MembersMarked&) = delete;
  ~MembersMarked() {
    for (IZDMObject* object : held_) object->ClearStatus(ZOS_COLLECTMARK);
  }

  /// Held until the mark goes, since what is asked meanwhile may run any code.
  void Mark(IZDMObject* object) {
    held_.emplace_back(object);
    object->SetStatus(ZOS_COLLECTMARK);
  }

 private:
  MembersMarked() = default;

  std::vector<ZRefPtr<IZDMObject>> held_;
};

}  // namespace

// Here, so that an element which looks at the collection as it goes finds it whole.
CZDMObjColl::~CZDMObjColl() { List::RemoveAll(); }

// Walks by status.

LONGLONG CZDMObjColl::GetHeadStatusPosition(LONG bit) {
  return zdm::GetHeadStatusPosition(*this, bit);
}

LONGLONG CZDMObjColl::GetTailStatusPosition(LONG bit) {
  return zdm::GetTailStatusPosition(*this, bit);
}

IZDMObject* CZDMObjColl::GetStatusNext(LONG bit, LONGLONG& pos) {
  return zdm::GetStatusNext(*this, bit, pos);
}

IZDMObject* CZDMObjColl::GetStatusPrev(LONG bit, LONGLONG& pos) {
  return zdm::GetStatusPrev(*this, bit, pos);
}

ULONG CZDMObjColl::GetStatusCount(LONG bit) { return zdm::GetStatusCount(*this, bit); }

LONGLONG CZDMObjColl::GetValidHeadPosition() {
  LONGLONG pos = GetHeadPosition();
  while (pos != 0) {
    const LONGLONG at = pos;
    IZDMObject* object = GetNext(pos);
    if (object != nullptr && object->IsObjectValid()) return at;
  }
  return 0;
}

IZDMObject* CZDMObjColl::GetValidNext(LONGLONG& pos) { return GetStatusNext(ZOS_VALID, pos); }

void CZDMObjColl::ClearStatusAll(LONG bit) {
  ForEach(*this, [&](IZDMObject& object) { object.ClearStatus(bit); });
}

void CZDMObjColl::SetStatusAll(LONG bit) {
  ForEach(*this, [&](IZDMObject& object) { object.SetStatus(bit); });
}

void CZDMObjColl::SetValidAll(bool valid) {
  ForEach(*this, [&](IZDMObject& object) { object.SetObjectValid(valid); });
}

void CZDMObjColl::SetOwnerOIDAll(OID* oid) {
  ForEach(*this, [&](IZDMObject& object) { object.SetOwnerOID(oid); });
}

// References.

void CZDMObjColl::Isolate(LONG selector, bool isolated) {
  ZReltnVisitorStatus visitor;
  visitor.Isolate(static_cast<IZDMObjColl*>(this), static_cast<eZRelation>(selector), isolated);
}

void CZDMObjColl::SelfContained() { ZReltnVisitorSelfContained().SelfContained(this); }

void CZDMObjColl::GetSortedCopy(IZDMObjColl** out) {
  *out = nullptr;
  std::vector<OID*> records;
  records.reserve(List::GetCount());
  ForEach(*this, [&](IZDMObject& object) {
    if (OID* oid = object.GetOID()) records.push_back(oid);
  });
  COIDManager::Sort(records);
  auto copy = zdm::MakeObject<IZDMObjColl, CZDMObjColl>();
  copy->AddOwnersVector(records);
  *out = copy.Detach();
}

// Display.

void CZDMObjColl::DrawStatus(LONG bit, IZGiDevice* device) {
  ForEach(*this, [&](IZDMObject& object) {
    if (object.JudgeStatus(bit)) object.Draw(device, nullptr, nullptr);
  });
}

void CZDMObjColl::DrawAll(IZGiDevice* device, GiContext* context) {
  ForEach(*this, [&](IZDMObject& object) { object.Draw(device, nullptr, context); });
}

void CZDMObjColl::DrawOptionAllowed(LONGLONG mask, IZGiDevice* device) {
  if (device == nullptr) return;
  GiContext* context = device->GetContext(mask);
  AnyOf(*this, [&](IZDMObject& object) {
    if (!object.JudgeOptionAllowed(mask)) return false;
    if (device->GetState() != IZGiDevice::kTakesObjects) return true;
    device->DrawObject(&object, context);
    return false;
  });
}

void CZDMObjColl::DrawAllEx(IZGiDevice* device, GiContext* context) {
  if (device == nullptr) return;
  AnyOf(*this, [&](IZDMObject& object) {
    if (device->GetState() != IZGiDevice::kTakesObjects) return true;
    device->DrawObject(&object, context);
    return false;
  });
}

void CZDMObjColl::TransformAll(const GeMatrix& matrix) {
  ForEach(*this, [&](IZDMObject& object) { object.Transform(matrix); });
}

void CZDMObjColl::UnionBoxes(GeBox* box, GiContext* context, bool refresh) {
  ForEach(*this, [&](IZDMObject& object) {
    if (refresh) object.Update(nullptr, context);
    GeBox part;
    object.GetGeBox(&part, nullptr, context);
    box->UnionBoxToSelf(part);
  });
}

// Copies and selections.

void CZDMObjColl::CloneAll(IZDMObjColl** out) {
  *out = nullptr;
  const auto copies = zdm::Attached(new CZDMObjColl);
  for (POSITION pos = List::GetHeadPosition(); pos != nullptr;) {
    copies->List::AddTail(zdm::CloneAs<IZDMObject>(List::GetNext(pos)));
  }
  *out = ZRefPtr<IZDMObjColl>(copies.Get()).Detach();
}

bool CZDMObjColl::IsSameClass() {
  std::optional<GUID> first;
  for (POSITION pos = List::GetHeadPosition(); pos != nullptr;) {
    IZDMObject* object = List::GetNext(pos);
    if (object == nullptr) continue;
    GUID classId = GUID_NULL;
    object->GetClassID(&classId);
    if (first.has_value() && !(*first == classId)) return false;
    first = classId;
  }
  return true;
}

void CZDMObjColl::CollectInterface(IZDMObjColl* coll, LONG bit, unsigned short interfaceId) {
  if (coll != this) zdm::CollectStatus(*this, coll, bit, interfaceId);
}

void CZDMObjColl::Collect(unsigned short interfaceId, bool all, IZDMObjColl** out) {
  zdm::Collect(*this, interfaceId, all, ZOS_COLLECTMARK, 0, out);
}

ULONG CZDMObjColl::GetInterfaceCount(unsigned short interfaceId) {
  ULONG count = 0;
  ForEach(*this, [&](IZDMObject& object) { count += zdm::Answers(&object, interfaceId) ? 1 : 0; });
  return count;
}

void CZDMObjColl::SelectInterface(unsigned short interfaceId, IZDMObjColl** out) {
  *out = nullptr;
  ZRefPtr<IZDMObjColl> selected;
  ForEach(*this, [&](IZDMObject& object) {
    if (!zdm::Answers(&object, interfaceId)) return;
    if (selected == nullptr) selected = zdm::MakeObject<IZDMObjColl, CZDMObjColl>();
    selected->AddTail(&object);
  });
  *out = selected.Detach();
}

void CZDMObjColl::GetObjects(std::vector<IZDMObject*>& objects) {
  ForEach(*this, [&](IZDMObject& object) { objects.push_back(&object); });
}

// Names and IDs.

IZDMObject* CZDMObjColl::FindByName(const OLECHAR* name) { return zdm::FindByName(*this, name); }

IZDMObject* CZDMObjColl::FindByNameStatus(const OLECHAR* name, LONG bit) {
  return zdm::FindByNameStatus(*this, name, bit);
}

bool CZDMObjColl::HasName(const OLECHAR* name) {
  if (List::IsEmpty()) return false;
  const auto wanted = TextOf(name);
  if (!wanted.has_value()) return false;
  for (POSITION pos = List::GetHeadPosition(); pos != nullptr;) {
    IZDMObject* object = List::GetNext(pos);
    if (object == nullptr) continue;
    zdm::Bstr found;
    object->GetName(found.Out());
    if (found.View() == *wanted) return true;
  }
  return false;
}

void CZDMObjColl::GetUniqueName(const OLECHAR* prefix, BSTR* out) {
  zdm::GetUniqueName(*this, prefix, out);
}

void CZDMObjColl::FindByID(IZDMObject* key, IZDMObject** out) {
  if (out == nullptr) return;
  *out = nullptr;
  if (key == nullptr) return;
  const ULONG id = key->GetID();
  for (POSITION pos = List::GetHeadPosition(); pos != nullptr;) {
    const ZRefPtr<IZDMObject>& object = List::GetNext(pos);
    if (object == nullptr || object->GetID() != id) continue;
    *out = ZRefPtr<IZDMObject>(object).Detach();
    return;
  }
}

// Adding.

void CZDMObjColl::AddOwners(const std::list<OID*>& records) {
  for (const OID* record : records) {
    if (record != nullptr) AddObject(record->Object);
  }
}

void CZDMObjColl::AddOwnersVector(const std::vector<OID*>& records) {
  for (const OID* record : records) {
    if (record != nullptr) AddObject(record->Object);
  }
}

void CZDMObjColl::AddObject(IZObject* object) { AddTail(zdm::ViewAs<IZDMObject>(object)); }

void CZDMObjColl::AddTailUnique(IZDMObjIterator* other) {
  // Its own objects are there, also those without a record to bear the mark.
  if (other == nullptr || other == static_cast<IZDMObjIterator*>(this)) return;
  MembersMarked marked(*this);
  for (LONGLONG pos = other->GetHeadPosition(); pos != 0;) {
    IZDMObject* object = other->GetNext(pos);
    if (object == nullptr || object->JudgeStatus(ZOS_COLLECTMARK)) continue;
    AddTail(object);
    marked.Mark(object);
  }
}

void CZDMObjColl::AddLine(const XYZ& start, const XYZ& end) {
  AddTail(MakeShape<IGeLnSeg>(kLineClass, [&](IGeLnSeg& line) { line.SetPoints(start, end); }));
}

void CZDMObjColl::AddCircle(const XYZ& center, const XYZ& normal, double radius) {
  AddTail(MakeShape<IGeCircle>(
      kCircleClass, [&](IGeCircle& circle) { circle.SetCircle(center, normal, radius); }));
}

void CZDMObjColl::AddArc(const GeArc& arc, ULONG displayValue) {
  const auto object = MakeShape<IGeArc>(kArcClass, [&](IGeArc& shape) { shape.SetArc(arc); });
  if (object == nullptr) return;
  object->SetDisplayValue(displayValue);
  AddTail(object);
}

void CZDMObjColl::AddArcFrom(IGeArc* arc) {
  if (arc == nullptr) return;
  AddTail(MakeShape<IGeArc>(kArcClass, [&](IGeArc& shape) { shape.SetArc(arc->GetArc()); }));
}
