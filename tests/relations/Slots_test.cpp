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

TEST(Slots, IZDisplay) {
  ZDM_EXPECT_SLOTS(
      3, IZDisplay, Draw, DrawVariant1, DrawVariant2, DrawVariant3, DrawVariant4, DrawVariant5,
      Select, Reserved10, GetBox, GetGeBox, Reserved13, GetSizeX, GetSizeY, GetSizeZ, UnionBox,
      Reserved18, IsVisible, SetVisibility, GetDisplayValue, SetDisplayValue, Reserved23,
      Reserved24, Reserved25, GetDispAttrib, AttachDispAttrib, Reserved28, Reserved29, JudgeStatus,
      SetElementStatus, Reserved32, ClearElementStatus, Reserved34, Reserved35, Reserved36);
  EXPECT_EQ(SlotOfOverload<void(const double[][3])>(&IZDisplay::Transform), 37);
  EXPECT_EQ(SlotOfOverload<void(const double[][4])>(&IZDisplay::Transform), 38);
  EXPECT_EQ(SlotOfOverload<void(const GeMatrix&)>(&IZDisplay::Transform), 39);
  ZDM_EXPECT_SLOTS(40, IZDisplay, GetTransform, Reserved41, Reserved42, GetName, SetName);
}

TEST(Slots, IZRelation) {
  ZDM_EXPECT_SLOTS(45, IZRelation, CopyFrom, Update, SetReltnStatus, GetReltnStatus,
                   ClearReltnStatus, JudgeReltnStatus, IsReltnDiffusible, SetReltnDiffusible, Load,
                   Save, IsValid, SetReltnTag, GetReltnTag, AssertValid, Accept, JudgeSame);
}

TEST(Slots, RelationBasesAddTheirsBehindTheInterface) {
  EXPECT_EQ(SlotOfOverload<void(IZRelation**)>(&Shape::Clone), 61);
  ZDM_EXPECT_SLOTS(62, Shape, IsDumpRef);
  EXPECT_EQ(SlotOfOverload<void(IZRelation**)>(&PlainReltn::Clone), 66);
  ZDM_EXPECT_SLOTS(67, PlainReltn, IsDumpRef, ReservedQuery);
  EXPECT_EQ(SlotOfOverload<void(IZSingleReltn**)>(&PlainReltn::Clone), 69);
}

TEST(Slots, IZSingleReltn) {
  ZDM_EXPECT_SLOTS(61, IZSingleReltn, SetReltnObj, GetReltnObject, GetValidReltnObject, SetReltnOID,
                   GetReltnOID);
}

TEST(Slots, IZReltnColl) {
  EXPECT_EQ(SlotOf(&IZReltnColl::GetHead), 61);
  EXPECT_EQ(SlotOf(&IZReltnColl::AddTailColl), 91);
  ZDM_EXPECT_SLOTS(92, IZReltnColl, GetHeadStatusPosition, GetTailStatusPosition, GetStatusNext,
                   GetStatusPrev);
  EXPECT_EQ(SlotOfOverload<void(IZReltnColl**, bool)>(&IZReltnColl::Clone), 96);
  ZDM_EXPECT_SLOTS(97, IZReltnColl, GetValidHeadPosition, GetValidTailPosition, GetValidNext,
                   GetValidPrev);
}

TEST(Slots, CZReltnCollAddsVersionDumpAndClone) {
  ZDM_EXPECT_SLOTS(SlotOf(&CZReltnColl::getVersion), CZReltnColl, getVersion, IsDumpRef);
  EXPECT_EQ(SlotOfOverload<void(IZRelation**)>(&CZReltnColl::Clone),
            SlotOf(&CZReltnColl::getVersion) + 2);
}

TEST(Slots, IZReltnVisitor) {
  using I = IZReltnVisitor;
  EXPECT_EQ(SlotOfOverload<bool(IZDMObject*, IZDMObject*, IZReltnColl*)>(&I::Visit), 3);
  EXPECT_EQ(SlotOfOverload<bool(IZDMObject*, IZDMObject*, IZRelation*)>(&I::Visit), 4);
  EXPECT_EQ(SlotOfOverload<bool(IZDMObject*, IZDMObject*, OID*)>(&I::Visit), 5);
  EXPECT_EQ(SlotOfOverload<bool(IZDMObject*, IZDMObject*)>(&I::Visit), 6);
  EXPECT_EQ(SlotOfOverload<bool(IZDMObject*)>(&I::Visit), 7);
  ZDM_EXPECT_SLOTS(8, IZReltnVisitor, MapUID, MapCID, MapOID, MapPID);
}

TEST(Slots, VisitorInterfacesContinueAtTwelve) {
  EXPECT_EQ(SlotOf(&IZReltnCollector::SetReltnType), 12);
  EXPECT_EQ(SlotOf(&IZReltnIsDirectTo::Initialize), 12);
  EXPECT_EQ(SlotOf(&IZReltnRecordObjInReltns::Initialize), 12);
  EXPECT_EQ(SlotOf(&IZReltnSelfContained::SelfContained), 12);
  EXPECT_EQ(SlotOf(&IZReltnRecord::GetRecordObjects), 12);
  ZDM_EXPECT_SLOTS(12, IZReltnDiffuse, Initialize, get_Status);
  using S = IZReltnStatus;
  ZDM_EXPECT_SLOTS(12, S, Initialize);
  EXPECT_EQ(SlotOfOverload<void(IZDMObject*, eZRelation, bool)>(&S::Isolate), 13);
  EXPECT_EQ(SlotOfOverload<void(IZDMObjColl*, eZRelation, bool)>(&S::Isolate), 14);
}

/// A class's own operations: behind those of its interface and those of its row.
template <class Visitor>
void ExpectVersionThenDump() {
  ZDM_EXPECT_SLOTS(SlotOf(&Visitor::GetLPVOID) + 1, Visitor, getVersion, IsDumpRef);
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
  ZDM_EXPECT_SLOTS(1, ZDfValue, Clone, GetType, Release, JudgeSame, CopyFrom, Load, Save, Accept);
}

}  // namespace
