// The order of operations of the host's interfaces, as a caller compiled elsewhere sees it.
#include "tests/support/SlotOf.h"
#include "zdm/host/IZCategoryDispAttrib.h"
#include "zdm/host/IZDMEntity.h"
#include "zdm/host/IZDMModel.h"
#include "zdm/host/IZDMObjExt.h"
#include "zdm/host/IZDatabase.h"
#include "zdm/host/IZGiDevice.h"
#include "zdm/host/IZMergeStrategy.h"
#include "zdm/host/IZOptPath.h"
#include "zdm/host/IZPersistStrategy.h"
#include "zdm/host/IZProgressMeter.h"
#include "zdm/host/IZPropertyIterator.h"

namespace {

using zdm::test::ExpectInOrder;

TEST(Slots, IZCategoryDispAttrib) {
  ExpectInOrder(
      3, {ZDM_SLOT(IZCategoryDispAttrib, SetCategory), ZDM_SLOT(IZCategoryDispAttrib, SetEnabled),
          ZDM_SLOT(IZCategoryDispAttrib, AttachTo)});
}

TEST(Slots, IZDMEntity) {
  ExpectInOrder(3, {ZDM_SLOT(IZDMEntity, GetGeCurve), ZDM_SLOT(IZDMEntity, GetGePlane),
                    ZDM_SLOT(IZDMEntity, GetGeometry)});
}

TEST(Slots, IZDMModel) {
  ExpectInOrder(3,
                {ZDM_SLOT(IZDMModel, GetMaterialMgr), ZDM_SLOT(IZDMModel, GetDefaultDispAttrib)});
}

TEST(Slots, IZDMObjExt) {
  ExpectInOrder(3, {ZDM_SLOT(IZDMObjExt, LoadData), ZDM_SLOT(IZDMObjExt, SaveData),
                    ZDM_SLOT(IZDMObjExt, Update), ZDM_SLOT(IZDMObjExt, AssertValid),
                    ZDM_SLOT(IZDMObjExt, CopyFrom), ZDM_SLOT(IZDMObjExt, JudgeSame),
                    ZDM_SLOT(IZDMObjExt, VisitReferences)});
}

TEST(Slots, IZDatabase) {
  ExpectInOrder(3, {ZDM_SLOT(IZDatabase, GetOIDManager), ZDM_SLOT(IZDatabase, GetPIDManager),
                    ZDM_SLOT(IZDatabase, GetOIDByID), ZDM_SLOT(IZDatabase, OnStateChanged),
                    ZDM_SLOT(IZDatabase, CreateByType), ZDM_SLOT(IZDatabase, GetPersistStrategy),
                    ZDM_SLOT(IZDatabase, GetMergeStrategy), ZDM_SLOT(IZDatabase, GetMergeOption),
                    ZDM_SLOT(IZDatabase, GetOptPath)});
}

TEST(Slots, IZGiDevice) {
  ExpectInOrder(3, {ZDM_SLOT(IZGiDevice, Select), ZDM_SLOT(IZGiDevice, SelectMarked),
                    ZDM_SLOT(IZGiDevice, GetContext), ZDM_SLOT(IZGiDevice, GetState),
                    ZDM_SLOT(IZGiDevice, DrawObject)});
}

TEST(Slots, IZMergeStrategy) { ExpectInOrder(3, {ZDM_SLOT(IZMergeStrategy, Merge)}); }

TEST(Slots, IZOptPath) {
  ExpectInOrder(3, {ZDM_SLOT(IZOptPath, GetCount), ZDM_SLOT(IZOptPath, GetHeadPosition),
                    ZDM_SLOT(IZOptPath, GetNext), ZDM_SLOT(IZOptPath, Append),
                    ZDM_SLOT(IZOptPath, GetBottomObject)});
}

TEST(Slots, IZPersistStrategy) { ExpectInOrder(3, {ZDM_SLOT(IZPersistStrategy, Add)}); }

TEST(Slots, IZProgressMeter) {
  ExpectInOrder(3, {ZDM_SLOT(IZProgressMeter, SetRange), ZDM_SLOT(IZProgressMeter, Step)});
}

TEST(Slots, IZPropertyIterator) {
  ExpectInOrder(
      3, {ZDM_SLOT(IZPropertyIterator, SetChosenObject), ZDM_SLOT(IZPropertyIterator, Rebuild),
          ZDM_SLOT(IZPropertyIterator, GetChosenObject)});
}

}  // namespace
