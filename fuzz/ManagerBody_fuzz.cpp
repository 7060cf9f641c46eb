// Hostile bytes as the record of a manager, then as the calls on the manager that holds what is
// left: adds, moves and removals of objects and of managers, itself among them. What loads is saved
// to bytes that load to the same bytes again; what does not load leaves name and current object.
#include "fuzz/ObjectFuzz.h"
#include "zdm/model/CZDMObjMgr.h"
#include "zdm/model/IZDMObjColl.h"

#include <algorithm>

namespace {

using namespace zdm::test;

constexpr std::size_t kFixed = 41 + 4 + 3 + 4 + 4;  // a record with an empty name
constexpr LONG kBit = 40;

ZRefPtr<IZDMObjMgr> NewManager(TestDatabase& db) {
  auto manager = zdm::MakeObject<IZDMObjMgr, CZDMObjMgr>();
  db.Add(manager);
  return manager;
}

void LoadRecord(const std::vector<BYTE>& bytes, TestDatabase& db) {
  auto fresh = NewManager(db);
  auto held = NewManager(db);
  held->SetName(OLESTR("held"));
  held->SetCurrent(fresh);
  const bool loads = Loads([&] { LoadBytes(*fresh, bytes, &db); });
  Require(Loads([&] { LoadBytes(*held, bytes, &db); }) == loads);
  if (!loads) {
    zdm::Bstr name;
    held->GetName(name.Out());
    Require(name == zdm::Bstr(OLESTR("held")) && held->GetCurrent() == fresh);
  }
  RequireStable(*fresh, *NewManager(db), db);
}

/// One call a byte, on one of four managers, about another one or an object. The counts of the
/// walks both ways have to agree after each.
void Call(const std::vector<BYTE>& calls, TestDatabase& db) {
  ZRefPtr<IZDMObjMgr> managers[4];
  for (auto& manager : managers) manager = NewManager(db);
  for (const BYTE call : calls) {
    IZDMObjMgr& manager = *managers[call & 3];
    const ZRefPtr<IZDMObject> other = (call & 4) != 0
                                          ? ZRefPtr<IZDMObject>(managers[(call >> 3) & 3].Get())
                                          : zdm::MakeObject<IZDMObject, CZDMPlainObject>();
    if ((call & 8) != 0) other->SetStatus(kBit);
    switch (call >> 5) {
      case 0:
        manager.AddTail(other);
        break;
      case 1:
        manager.AttachHead(other);
        break;
      case 2:
        manager.MovePrevStatus(other, kBit);
        break;
      case 3:
        manager.RemoveStatusObjects(kBit);
        break;
      case 4:
        manager.ClearStatusTree((call & 16) != 0 ? kBit : 0, kBit);
        break;
      case 5:
        manager.RemoveItem(other);
        break;
      case 6:
        db.oids.AssignItemID(&manager, (call & 16) != 0, true);
        break;
      default: {
        ZRefPtr<IZDMObjColl> coll;
        manager.Collect(0, (call & 16) != 0, coll.Out());
        Require(coll->GetStatusCount(ZOS_VISITMARK) == 0);
        break;
      }
    }
    ULONG backwards = 0;
    for (LONGLONG pos = manager.GetTailStatusPosition(kBit); pos != 0; ++backwards) {
      manager.GetStatusPrev(kBit, pos);
    }
    Require(manager.GetStatusCount(kBit) == backwards);
  }
  for (auto& manager : managers) manager->RemoveAll();  // they may hold each other
}

}  // namespace

ZDM_FUZZ(bytes) {
  TestDatabase db;
  LoadRecord(bytes, db);
  if (bytes.size() > kFixed) {
    Call({bytes.begin() + kFixed, bytes.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(
                                                      bytes.size(), kFixed + 400))},
         db);
  }
}
