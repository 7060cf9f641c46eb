// Collections of objects: they hold without owning, and work on all they hold at once.
#include "platform/geometry/IGeArc.h"
#include "platform/geometry/IGeCircle.h"
#include "platform/geometry/IGeLnSeg.h"
#include "tests/model/ManagerSupport.h"
#include "tests/support/Thrown.h"
#include "zdm/host/IZGiDevice.h"
#include "zdm/identity/OID.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

using namespace zdm::test;

ZDM_TEST_CLASS(LimitedDevice, IZObject, IZGiDevice)
ZDM_TEST_CLASS(Shown, IZObject, IZDMObject, IZRelation)

namespace zdm::test {

/// Takes so many objects and no more.
class LimitedDevice : public IZObjectImpl<IZGiDevice> {
  ZDM_OBJECT(LimitedDevice)
 public:
  void Select(IZDisplay*) override { selected += "plain "; }
  void SelectMarked(IZDisplay*) override { selected += "marked "; }
  GiContext* GetContext(LONGLONG mask) override {
    askedMask = mask;
    return reinterpret_cast<GiContext*>(&context);
  }
  LONG GetState() override { return room-- > 0 ? kTakesObjects : 0; }
  void DrawObject(IZDisplay* display, GiContext* with) override {
    drawn.push_back(display);
    lastContext = with;
  }

  int room = 100;
  int context = 0;
  LONGLONG askedMask = 0;
  GiContext* lastContext = nullptr;
  std::vector<IZDisplay*> drawn;
  std::string selected;
};

/// Writes down how it is shown.
class Shown : public IZDMObjectImpl<IZDMObject> {
  ZDM_OBJECT(Shown)
 public:
  void Draw(IZGiDevice*, SubID*, GiContext* context) override {
    calls += context != nullptr ? "draw-in-context " : "draw ";
    if (emptied != nullptr) emptied->RemoveAll();
  }
  void Update(IZUpdater*, GiContext*) override { calls += "update "; }
  void GetBox(double* box, SubID*, GiContext*) override {
    calls += "box ";
    GeBox({1, 2, 3}, {4, 5, 6}).GetBox(box);
  }

  std::string calls;
  IZDMObjColl* emptied = nullptr;  // by drawing
};

ZDM_OBJECT_BODY(LimitedDevice)
ZDM_OBJECT_BODY(Shown)

}  // namespace zdm::test

namespace {

using namespace zdm::test;

class ObjColl : public testing::Test {
 protected:
  TestDatabase db;
  ZRefPtr<IZDMObject> a = db.MakeObject(OLESTR("a"), 7);
  ZRefPtr<IZDMObject> b = db.MakeObject(OLESTR("b"), 3);
  ZRefPtr<IZDMObject> c = db.MakeObject(OLESTR("c"), 5);
};

TEST_F(ObjColl, HoldsObjectsWithoutOwningThem) {
  IZDMObject* owner = a->GetOwner();
  auto coll = MakeObjColl({a, b, a});
  EXPECT_EQ(a->GetReferenceCount(), 3u);
  EXPECT_EQ(a->GetOwner(), owner);
  coll->AddObject(zdm::MakeObject<IZObject, zdm::test::Stranger>());
  EXPECT_EQ(NamesIn(*coll), "a b a");
  coll->AddTail(zdm::MakeObject<IZObject, zdm::test::Stranger>());
  EXPECT_EQ(NamesIn(*coll), "a b a -") << "what is no object is held as null";
  coll.Reset();
  EXPECT_EQ(a->GetReferenceCount(), 1u);
}

TEST_F(ObjColl, WalksByStatusPastNullElements) {
  auto coll = MakeObjColl({a, b, c});
  EXPECT_TRUE(coll->IsSameClass());
  coll->AddHead(zdm::MakeObject<IZObject, zdm::test::Stranger>());
  b->SetObjectValid(false);
  EXPECT_EQ(NamesWith(*coll, ZOS_VALID), "a c");
  EXPECT_EQ(NamesBackwardsWith(*coll, ZOS_VALID), "c a");
  EXPECT_EQ(NamesWith(*zdm::ViewAs<IZDMObjIterator>(coll), ZOS_VALID), "a c");
  EXPECT_EQ(coll->GetStatusCount(ZOS_VALID), 2u);
  EXPECT_EQ(coll->GetValidHeadPosition(), coll->FindIndex(1));
  LONGLONG pos = coll->GetValidHeadPosition();
  EXPECT_EQ(coll->GetValidNext(pos), a.Get());
  EXPECT_EQ(coll->GetValidNext(pos), c.Get());
  EXPECT_EQ(pos, 0);
  EXPECT_EQ(Thrown([&] { coll->GetStatusNext(ZOS_VALID, pos); }), E_FAIL);
  EXPECT_EQ(Thrown([&] { coll->GetStatusPrev(ZOS_VALID, pos); }), E_FAIL);

  coll->SetStatusAll(kBit);
  EXPECT_EQ(coll->GetStatusCount(kBit), 3u);
  coll->ClearStatusAll(kBit);
  coll->SetValidAll(true);
  EXPECT_EQ(coll->GetStatusCount(kBit), 0u);
  EXPECT_EQ(coll->GetStatusCount(ZOS_VALID), 3u);
}

TEST_F(ObjColl, AddsWhatIsNewOnceAndLeavesNoMark) {
  auto coll = MakeObjColl({a, b});
  auto other = MakeObjColl({b, c, c, a});
  coll->AddTailUnique(zdm::ViewAs<IZDMObjIterator>(other));
  EXPECT_EQ(NamesIn(*coll), "a b c");
  coll->AddTailUnique(zdm::ViewAs<IZDMObjIterator>(other));
  auto bare = MakeNamed(OLESTR("d"));
  const std::unique_ptr<OID> record(bare->GetOID());
  bare->SetOID(nullptr, true);
  record->Object = nullptr;
  coll->AddTail(bare);
  coll->AddTailUnique(zdm::ViewAs<IZDMObjIterator>(coll));
  EXPECT_EQ(NamesIn(*coll), "a b c d");
  EXPECT_EQ(coll->GetStatusCount(ZOS_COLLECTMARK), 0u);

  auto probe = zdm::Attached(new Probe);
  probe->onJudge = [](LONG) { throw std::runtime_error("asked"); };
  auto more = MakeNamed(OLESTR("e"));
  auto failing = MakeObjColl({more, probe.Get()});
  EXPECT_THROW(coll->AddTailUnique(zdm::ViewAs<IZDMObjIterator>(failing)), std::runtime_error);
  EXPECT_EQ(coll->GetStatusCount(ZOS_COLLECTMARK), 0u);
}

TEST_F(ObjColl, CollectsOnceUnlessAskedForAll) {
  auto manager = MakeManager(OLESTR("m"));
  auto coll = MakeObjColl({a, manager, a});
  EXPECT_FALSE(coll->IsSameClass());
  ZRefPtr<IZDMObjColl> found;
  coll->Collect(0, false, found.Out());
  EXPECT_EQ(NamesIn(*found), "a m");
  coll->Collect(0, true, found.Out());
  EXPECT_EQ(NamesIn(*found), "a m a");
  coll->Collect(ZInterface<IZDMObjMgr>::ID(), true, found.Out());
  EXPECT_EQ(NamesIn(*found), "m");
  EXPECT_EQ(coll->GetStatusCount(ZOS_COLLECTMARK), 0u);
  EXPECT_FALSE(OID::c_ObjStatusLock.any());

  a->SetStatus(kBit);
  auto into = MakeObjColl({b});
  coll->CollectInterface(into, kBit, 0);
  coll->CollectInterface(coll, kBit, 0);
  EXPECT_EQ(NamesIn(*into), "b a a");
  EXPECT_EQ(coll->GetCount(), 3);
  coll->SelectInterface(ZInterface<IZDMObjMgr>::ID(), found.Out());
  EXPECT_EQ(NamesIn(*found), "m");
  EXPECT_EQ(found->GetReferenceCount(), 1u);
  coll->SelectInterface(ZInterface<IZDatabase>::ID(), found.Out());
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(coll->GetInterfaceCount(ZInterface<IZDMObjMgr>::ID()), 1u);
}

TEST_F(ObjColl, CopiesObjectsOneByOne) {
  auto coll = MakeObjColl({a, b});
  coll->AddTail(zdm::MakeObject<IZObject, Probe>());  // unknown to the factory
  ZRefPtr<IZDMObjColl> copies;
  coll->CloneAll(copies.Out());
  EXPECT_EQ(NamesIn(*copies), "a b -");
  EXPECT_NE(copies->GetHead(), a.Get());
  EXPECT_EQ(copies->GetHead()->GetReferenceCount(), 1u);
  EXPECT_EQ(copies->GetReferenceCount(), 1u);
}

TEST_F(ObjColl, IsolatesWhatTheSelectorPicks) {
  auto diffusible = RelationTo(b);
  diffusible->SetReltnDiffusible(true);
  auto other = RelationTo(b);
  a->AddRelation(diffusible);
  a->AddRelation(other);
  auto coll = MakeObjColl({a});
  for (const bool isolate : {true, false}) {
    coll->Isolate(ZR_DIFFUSIBLE, isolate);
    EXPECT_EQ(diffusible->JudgeReltnStatus(ZRS_ISOLATED), isolate);
    EXPECT_FALSE(other->JudgeReltnStatus(ZRS_ISOLATED));
  }
  coll->SelfContained();
  EXPECT_TRUE(other->IsValid()) << "plain targets are not looked at";
}

TEST_F(ObjColl, FindsByNameAndID) {
  auto coll = MakeObjColl({a, b, c});
  EXPECT_EQ(coll->FindByName(OLESTR("b")), b.Get());
  c->SetStatus(kBit);
  EXPECT_EQ(coll->FindByNameStatus(OLESTR("b"), kBit), nullptr);
  EXPECT_EQ(coll->FindByNameStatus(OLESTR("c"), kBit), c.Get());
  EXPECT_TRUE(coll->HasName(OLESTR("b")));
  EXPECT_FALSE(coll->HasName(OLESTR("B")));
  EXPECT_FALSE(coll->HasName(reinterpret_cast<const OLECHAR*>(std::uintptr_t{101})));
  EXPECT_FALSE(coll->HasName(nullptr));

  auto key = MakeNamed(nullptr);
  key->SetID(3);
  ZRefPtr<IZDMObject> found;
  coll->FindByID(key, found.Out());
  EXPECT_EQ(found, b);
  EXPECT_EQ(b->GetReferenceCount(), 3u);
  key->SetID(4);
  coll->FindByID(key, found.Out());
  EXPECT_EQ(found, nullptr);
}

TEST_F(ObjColl, TakesTheObjectsOfRecordsAndHandsOutPointers) {
  OID empty;
  auto coll = MakeObjColl();
  coll->AddOwners({a->GetOID(), &empty, nullptr, b->GetOID()});
  coll->AddOwnersVector({c->GetOID(), a->GetOID()});
  EXPECT_EQ(NamesIn(*coll), "a b c a");
  std::vector<IZDMObject*> objects = {c};
  coll->GetObjects(objects);
  EXPECT_EQ(objects, (std::vector<IZDMObject*>{c, a, b, c, a}));
  coll->SetOwnerOIDAll(c->GetOID());
  EXPECT_EQ(b->GetOwner(), c.Get());
  coll->SetOwnerOIDAll(nullptr);
}

TEST_F(ObjColl, DrawsByStatusByOptionAndWhileTheDeviceTakesObjects) {
  auto first = zdm::Attached(new Shown);
  auto second = zdm::Attached(new Shown);
  first->SetStatus(kBit);
  second->SetOptionAllowed(6);
  auto coll = MakeObjColl({first.Get(), second.Get(), a});
  auto device = zdm::Attached(new LimitedDevice);
  auto* context = reinterpret_cast<GiContext*>(&device->context);

  coll->DrawStatus(kBit, device);
  coll->DrawAll(device, context);
  EXPECT_EQ(first->calls, "draw draw-in-context ");
  EXPECT_EQ(second->calls, "draw-in-context ");

  coll->DrawOptionAllowed(2, device);
  EXPECT_EQ(device->drawn, (std::vector<IZDisplay*>{second.Get()}));
  EXPECT_EQ(device->askedMask, 2);
  EXPECT_EQ(device->lastContext, context);
  device->drawn.clear();
  device->room = 2;
  coll->DrawAllEx(device, nullptr);
  EXPECT_EQ(device->drawn, (std::vector<IZDisplay*>{first.Get(), second.Get()}));
  EXPECT_EQ(device->lastContext, nullptr);

  first->emptied = coll;
  second->calls.clear();
  coll->DrawAll(device, nullptr);
  EXPECT_TRUE(coll->IsEmpty());
  EXPECT_EQ(second->calls, "");
}

TEST_F(ObjColl, DrawVariantsDrawAndSelectionFollowsBit14) {
  Shown object;
  LimitedDevice device;
  object.DrawVariant1(nullptr, nullptr, nullptr);
  object.DrawVariant2(nullptr, nullptr, nullptr);
  object.DrawVariant3(nullptr, nullptr, nullptr);
  object.DrawVariant4(nullptr, nullptr, nullptr);
  object.DrawVariant5(nullptr, nullptr, nullptr);
  EXPECT_EQ(object.calls, "draw draw draw draw draw ");
  object.Select(&device);
  object.SetStatus(14);
  object.Select(&device);
  EXPECT_EQ(device.selected, "plain marked ");
}

TEST_F(ObjColl, UnitesBoxesAndTransformsAll) {
  auto shown = zdm::Attached(new Shown);
  auto coll = MakeObjColl({shown.Get(), a});
  GeBox box({0, 0, 0}, {1, 1, 1});
  coll->UnionBoxes(&box, nullptr, false);
  EXPECT_EQ(box, GeBox({0, 0, 0}, {4, 5, 6}));
  EXPECT_EQ(shown->calls, "box ");
  coll->UnionBoxes(&box, nullptr, true);
  EXPECT_EQ(shown->calls, "box update box ");

  auto lines = MakeObjColl();
  lines->AddLine({1, 2, 3}, {4, 5, 6});
  lines->TransformAll(GeMatrix::MakeTranslation({10, 0, 0}));
  box.SetEmpty();
  lines->UnionBoxes(&box, nullptr, false);
  EXPECT_EQ(box, GeBox({11, 2, 3}, {14, 5, 6}));
}

TEST_F(ObjColl, MakesObjectsForDisplay) {
  auto coll = MakeObjColl();
  coll->AddLine({1, 2, 3}, {4, 5, 6});
  coll->AddCircle({1, 0, 0}, {0, 0, 2}, 3);
  coll->AddArc(GeArc({0, 0, 0}, 2, 0, 1), 0x00FF00);
  auto* arc = zdm::ViewAs<IGeArc>(coll->GetTail());
  ASSERT_NE(arc, nullptr);
  EXPECT_EQ(coll->GetTail()->GetDisplayValue(), 0x00FF00u);
  coll->AddArcFrom(arc);
  coll->AddArcFrom(nullptr);
  ASSERT_EQ(coll->GetCount(), 4);
  EXPECT_EQ(zdm::ViewAs<IGeArc>(coll->GetTail())->GetArc().GetEndAngle(), 1.0);
  EXPECT_EQ(coll->GetTail()->GetReferenceCount(), 1u);
  LONGLONG pos = coll->GetHeadPosition();
  EXPECT_EQ(zdm::ViewAs<IGeLnSeg>(coll->GetNext(pos))->GetLnSeg().End, (XYZ{4, 5, 6}));
  EXPECT_EQ(zdm::ViewAs<IGeCircle>(coll->GetNext(pos))->GetCircle().GetRadius(), 3.0);
}

}  // namespace
