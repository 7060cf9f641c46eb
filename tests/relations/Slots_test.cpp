// The order of operations of the relations' interfaces, as a caller compiled elsewhere sees it.
#include "tests/relations/ReltnSupport.h"
#include "tests/support/SlotOf.h"
#include "zdm/relations/CZReltnRecordObjInReltns.h"
#include "zdm/relations/ZDfValue.h"
#include "zdm/relations/ZReltnVisitorDeduce.h"
#include "zdm/relations/ZReltnVisitorDiffuse.h"
#include "zdm/relations/ZReltnVisitorIsDirectTo.h"
#include "zdm/relations/ZReltnVisitorRecord.h"
#include "zdm/relations/ZReltnVisitorSelfContained.h"
#include "zdm/relations/ZReltnVisitorStatus.h"

namespace {

using namespace zdm::test;

/// The place of one overload.
template <class Signature, class C>
int SlotOfOverload(Signature C::*operation) {
  return SlotOf(operation);
}

TEST(Slots, IZDisplay) {
  ExpectInOrder(
      3, {ZDM_SLOT(IZDisplay, Draw),
          ZDM_SLOT(IZDisplay, DrawVariant1),
          ZDM_SLOT(IZDisplay, DrawVariant2),
          ZDM_SLOT(IZDisplay, DrawVariant3),
          ZDM_SLOT(IZDisplay, DrawVariant4),
          ZDM_SLOT(IZDisplay, DrawVariant5),
          ZDM_SLOT(IZDisplay, Select),
          ZDM_SLOT(IZDisplay, Reserved10),
          ZDM_SLOT(IZDisplay, GetBox),
          ZDM_SLOT(IZDisplay, GetGeBox),
          ZDM_SLOT(IZDisplay, Reserved13),
          ZDM_SLOT(IZDisplay, GetSizeX),
          ZDM_SLOT(IZDisplay, GetSizeY),
          ZDM_SLOT(IZDisplay, GetSizeZ),
          ZDM_SLOT(IZDisplay, UnionBox),
          ZDM_SLOT(IZDisplay, Reserved18),
          ZDM_SLOT(IZDisplay, IsVisible),
          ZDM_SLOT(IZDisplay, SetVisibility),
          ZDM_SLOT(IZDisplay, GetDisplayValue),
          ZDM_SLOT(IZDisplay, SetDisplayValue),
          ZDM_SLOT(IZDisplay, Reserved23),
          ZDM_SLOT(IZDisplay, Reserved24),
          ZDM_SLOT(IZDisplay, Reserved25),
          ZDM_SLOT(IZDisplay, GetDispAttrib),
          ZDM_SLOT(IZDisplay, AttachDispAttrib),
          ZDM_SLOT(IZDisplay, Reserved28),
          ZDM_SLOT(IZDisplay, Reserved29),
          ZDM_SLOT(IZDisplay, JudgeStatus),
          ZDM_SLOT(IZDisplay, SetElementStatus),
          ZDM_SLOT(IZDisplay, Reserved32),
          ZDM_SLOT(IZDisplay, ClearElementStatus),
          ZDM_SLOT(IZDisplay, Reserved34),
          ZDM_SLOT(IZDisplay, Reserved35),
          ZDM_SLOT(IZDisplay, Reserved36),
          {"Transform(rows of 3)", SlotOfOverload<void(const double[][3])>(&IZDisplay::Transform)},
          {"Transform(rows of 4)", SlotOfOverload<void(const double[][4])>(&IZDisplay::Transform)},
          {"Transform(matrix)", SlotOfOverload<void(const GeMatrix&)>(&IZDisplay::Transform)},
          ZDM_SLOT(IZDisplay, GetTransform),
          ZDM_SLOT(IZDisplay, Reserved41),
          ZDM_SLOT(IZDisplay, Reserved42),
          ZDM_SLOT(IZDisplay, GetName),
          ZDM_SLOT(IZDisplay, SetName)});
}

TEST(Slots, IZRelation) {
  ExpectInOrder(
      45, {ZDM_SLOT(IZRelation, CopyFrom), ZDM_SLOT(IZRelation, Update),
           ZDM_SLOT(IZRelation, SetReltnStatus), ZDM_SLOT(IZRelation, GetReltnStatus),
           ZDM_SLOT(IZRelation, ClearReltnStatus), ZDM_SLOT(IZRelation, JudgeReltnStatus),
           ZDM_SLOT(IZRelation, IsReltnDiffusible), ZDM_SLOT(IZRelation, SetReltnDiffusible),
           ZDM_SLOT(IZRelation, Load), ZDM_SLOT(IZRelation, Save), ZDM_SLOT(IZRelation, IsValid),
           ZDM_SLOT(IZRelation, SetReltnTag), ZDM_SLOT(IZRelation, GetReltnTag),
           ZDM_SLOT(IZRelation, AssertValid), ZDM_SLOT(IZRelation, Accept),
           ZDM_SLOT(IZRelation, JudgeSame)});
}

TEST(Slots, RelationBasesAddTheirsBehindTheInterface) {
  ExpectInOrder(61, {{"Clone", SlotOfOverload<void(IZRelation**)>(&Shape::Clone)},
                     ZDM_SLOT(Shape, IsDumpRef)});
  ExpectInOrder(66, {{"Clone", SlotOfOverload<void(IZRelation**)>(&PlainReltn::Clone)},
                     ZDM_SLOT(PlainReltn, IsDumpRef),
                     ZDM_SLOT(PlainReltn, ReservedQuery),
                     {"Clone", SlotOfOverload<void(IZSingleReltn**)>(&PlainReltn::Clone)}});
}

TEST(Slots, IZSingleReltn) {
  ExpectInOrder(61, {ZDM_SLOT(IZSingleReltn, SetReltnObj), ZDM_SLOT(IZSingleReltn, GetReltnObject),
                     ZDM_SLOT(IZSingleReltn, GetValidReltnObject),
                     ZDM_SLOT(IZSingleReltn, SetReltnOID), ZDM_SLOT(IZSingleReltn, GetReltnOID)});
}

TEST(Slots, IZReltnColl) {
  EXPECT_EQ(SlotOf(&IZReltnColl::GetHead), 61);
  EXPECT_EQ(SlotOf(&IZReltnColl::AddTailColl), 91);
  ExpectInOrder(92, {ZDM_SLOT(IZReltnColl, GetHeadStatusPosition),
                     ZDM_SLOT(IZReltnColl, GetTailStatusPosition),
                     ZDM_SLOT(IZReltnColl, GetStatusNext),
                     ZDM_SLOT(IZReltnColl, GetStatusPrev),
                     {"Clone", SlotOfOverload<void(IZReltnColl**, bool)>(&IZReltnColl::Clone)},
                     ZDM_SLOT(IZReltnColl, GetValidHeadPosition),
                     ZDM_SLOT(IZReltnColl, GetValidTailPosition),
                     ZDM_SLOT(IZReltnColl, GetValidNext),
                     ZDM_SLOT(IZReltnColl, GetValidPrev)});
}

TEST(Slots, CZReltnCollAddsVersionDumpAndClone) {
  ExpectInOrder(SlotOf(&CZReltnColl::getVersion),
                {ZDM_SLOT(CZReltnColl, getVersion),
                 ZDM_SLOT(CZReltnColl, IsDumpRef),
                 {"Clone", SlotOfOverload<void(IZRelation**)>(&CZReltnColl::Clone)}});
}

TEST(Slots, IZReltnVisitor) {
  using I = IZReltnVisitor;
  ExpectInOrder(
      3, {{"Visit(coll)", SlotOfOverload<bool(IZDMObject*, IZDMObject*, IZReltnColl*)>(&I::Visit)},
          {"Visit(reltn)", SlotOfOverload<bool(IZDMObject*, IZDMObject*, IZRelation*)>(&I::Visit)},
          {"Visit(owner)", SlotOfOverload<bool(IZDMObject*, IZDMObject*, OID*)>(&I::Visit)},
          {"Visit(two)", SlotOfOverload<bool(IZDMObject*, IZDMObject*)>(&I::Visit)},
          {"Visit(one)", SlotOfOverload<bool(IZDMObject*)>(&I::Visit)},
          ZDM_SLOT(IZReltnVisitor, MapUID),
          ZDM_SLOT(IZReltnVisitor, MapCID),
          ZDM_SLOT(IZReltnVisitor, MapOID),
          ZDM_SLOT(IZReltnVisitor, MapPID)});
}

TEST(Slots, VisitorInterfacesContinueAtTwelve) {
  EXPECT_EQ(SlotOf(&IZReltnCollector::SetReltnType), 12);
  EXPECT_EQ(SlotOf(&IZReltnIsDirectTo::Initialize), 12);
  EXPECT_EQ(SlotOf(&IZReltnRecordObjInReltns::Initialize), 12);
  EXPECT_EQ(SlotOf(&IZReltnSelfContained::SelfContained), 12);
  EXPECT_EQ(SlotOf(&IZReltnRecord::GetRecordObjects), 12);
  ExpectInOrder(12, {ZDM_SLOT(IZReltnDiffuse, Initialize), ZDM_SLOT(IZReltnDiffuse, get_Status)});
  using S = IZReltnStatus;
  ExpectInOrder(
      12, {ZDM_SLOT(S, Initialize),
           {"Isolate(object)", SlotOfOverload<void(IZDMObject*, eZRelation, bool)>(&S::Isolate)},
           {"Isolate(coll)", SlotOfOverload<void(IZDMObjColl*, eZRelation, bool)>(&S::Isolate)}});
}

/// A class's own operations: behind those of its interface and those of its row.
template <class Visitor>
void ExpectVersionThenDump() {
  ExpectInOrder(SlotOf(&Visitor::GetLPVOID) + 1,
                {ZDM_SLOT(Visitor, getVersion), ZDM_SLOT(Visitor, IsDumpRef)});
}

TEST(Slots, VisitorsEndWithVersionAndDump) {
  ExpectVersionThenDump<ZReltnVisitorStatus>();
  ExpectVersionThenDump<ZReltnVisitorSelfContained>();
  ExpectVersionThenDump<ZReltnVisitorRecord>();
  ExpectVersionThenDump<ZReltnVisitorIsDirectTo>();
  ExpectVersionThenDump<ZReltnVisitorDeduce>();
  ExpectVersionThenDump<ZReltnVisitorDiffuse>();
  ExpectVersionThenDump<CZReltnRecordObjInReltns>();
  EXPECT_EQ(SlotOf(&CZReltnRecordObjInReltns::UnionElementBoxes),
            SlotOf(&CZReltnRecordObjInReltns::IsDumpRef) + 1);
}

TEST(Slots, ZDfValue) {
  // Place 0 is the destructor, which takes two entries.
  ExpectInOrder(
      1, {ZDM_SLOT(ZDfValue, Clone), ZDM_SLOT(ZDfValue, GetType), ZDM_SLOT(ZDfValue, Release),
          ZDM_SLOT(ZDfValue, JudgeSame), ZDM_SLOT(ZDfValue, CopyFrom), ZDM_SLOT(ZDfValue, Load),
          ZDM_SLOT(ZDfValue, Save), ZDM_SLOT(ZDfValue, Accept)});
}

}  // namespace
