// Managers and collections for tests, and what they hold as text.
#pragma once

#include "platform/system/Text.h"
#include "tests/support/TestDatabase.h"
#include "zdm/model/CZDMDictionary.h"
#include "zdm/model/CZDMObjColl.h"
#include "zdm/model/CZDMObjMgr.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

ZDM_TEST_CLASS(Probe, IZObject, IZDMObject, IZRelation)

namespace zdm::test {

/// A plain object that lets a test look on, or throw, when it is asked for a status bit or a
/// class.
class Probe : public IZDMObjectImpl<IZDMObject> {
  ZDM_OBJECT(Probe)
 public:
  bool JudgeStatus(LONG bit) override {
    if (onJudge) onJudge(bit);
    return IZDMObjectImpl::JudgeStatus(bit);
  }

  std::function<void(LONG)> onJudge;
};

template <class C = CZDMObjMgr>
ZRefPtr<IZDMObjMgr> MakeManager(const OLECHAR* name = nullptr) {
  auto manager = zdm::MakeObject<IZDMObjMgr, C>();
  manager->SetName(name);
  return manager;
}

inline ZRefPtr<IZDMObject> MakeNamed(const OLECHAR* name) {
  auto object = zdm::MakeObject<IZDMObject, CZDMPlainObject>();
  object->SetName(name);
  return object;
}

inline ZRefPtr<IZDMObjColl> MakeObjColl(std::initializer_list<IZDMObject*> objects = {}) {
  auto coll = zdm::MakeObject<IZDMObjColl, CZDMObjColl>();
  for (IZDMObject* object : objects) coll->AddTail(object);
  return coll;
}

inline std::string NameOf(IZDMObject* object) {
  if (object == nullptr) return "-";
  zdm::Bstr name;
  object->GetName(name.Out());
  return zdm::ToUtf8(name.View());
}

/// Names from head to tail, separated by blanks; "-" for a null element.
template <class List>
std::string NamesIn(List& list) {
  std::string names;
  for (LONGLONG pos = list.GetHeadPosition(); pos != 0;) {
    names += (names.empty() ? "" : " ") + NameOf(list.GetNext(pos));
  }
  return names;
}

/// The same by a walk over a status bit, forwards; and backwards.
template <class List>
std::string NamesWith(List& list, LONG bit) {
  std::string names;
  for (LONGLONG pos = list.GetHeadStatusPosition(bit); pos != 0;) {
    names += (names.empty() ? "" : " ") + NameOf(list.GetStatusNext(bit, pos));
  }
  return names;
}

template <class List>
std::string NamesBackwardsWith(List& list, LONG bit) {
  std::string names;
  for (LONGLONG pos = list.GetTailStatusPosition(bit); pos != 0;) {
    names += (names.empty() ? "" : " ") + NameOf(list.GetStatusPrev(bit, pos));
  }
  return names;
}

constexpr LONG kBit = 40;  // a status without a meaning of its own

/// Tests of managers.
class ObjMgr : public testing::Test {
 protected:
  /// A manager in the document, with objects of these names attached to it; the objects whose name
  /// is in capitals have kBit.
  ZRefPtr<IZDMObjMgr> MakeFilled(std::initializer_list<const OLECHAR*> names) {
    auto manager = MakeManager(OLESTR("m"));
    db.Add(manager);
    for (const OLECHAR* name : names) {
      auto object = MakeNamed(name);
      if (name[0] >= 'A' && name[0] <= 'Z') object->SetStatus(kBit);
      manager->AttachTail(object);
    }
    return manager;
  }
  static IZDMObject* Find(const ZRefPtr<IZDMObjMgr>& manager, const OLECHAR* name) {
    return manager->FindByName(name);
  }

  TestDatabase db;
};

}  // namespace zdm::test
