// The order of operations of the host's interfaces, as a caller compiled elsewhere sees it.
#include "tests/support/SlotOf.h"
#include "zdm/framework/ZInterface.h"
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
#include "zdm/host/IZTreeData.h"
#include "zdm/host/IZUpdater.h"
#include "zdm/host/eZGiDraw.h"

#include <type_traits>

namespace {

using namespace zdm::test;

/// A name the framework knows, no data and no second base.
template <class... T>
constexpr bool kAreInterfaces = ((std::is_base_of_v<IZObject, T> && sizeof(T) == sizeof(IZObject) &&
                                  sizeof(ZInterface<T>::kName) != 0) &&
                                 ...);

static_assert(kAreInterfaces<IZCategoryDispAttrib, IZDMEntity, IZDMModel, IZDMObjExt, IZDatabase,
                             IZGiDevice, IZMergeStrategy, IZOptPath, IZPersistStrategy,
                             IZProgressMeter, IZPropertyIterator, IZTreeData, IZUpdater>);
static_assert(sizeof(eZGiDraw) == 4 && sizeof(eZMergeOption) == 1);

TEST(Slots, HostInterfaces) {
  ZDM_EXPECT_SLOTS(3, IZCategoryDispAttrib, SetCategory, SetEnabled, AttachTo);
  ZDM_EXPECT_SLOTS(3, IZDMEntity, GetGeCurve, GetGePlane, GetGeometry);
  ZDM_EXPECT_SLOTS(3, IZDMModel, GetMaterialMgr, GetDefaultDispAttrib);
  ZDM_EXPECT_SLOTS(3, IZDMObjExt, LoadData, SaveData, Update, AssertValid, CopyFrom, JudgeSame,
                   VisitReferences);
  ZDM_EXPECT_SLOTS(3, IZDatabase, GetOIDManager, GetPIDManager, GetOIDByID, OnStateChanged,
                   CreateByType, GetPersistStrategy, GetMergeStrategy, GetMergeOption, GetOptPath);
  ZDM_EXPECT_SLOTS(3, IZGiDevice, Select, SelectMarked, GetContext, GetState, DrawObject);
  ZDM_EXPECT_SLOTS(3, IZMergeStrategy, Merge);
  ZDM_EXPECT_SLOTS(3, IZOptPath, GetCount, GetHeadPosition, GetNext, Append, GetBottomObject);
  ZDM_EXPECT_SLOTS(3, IZPersistStrategy, Add);
  ZDM_EXPECT_SLOTS(3, IZProgressMeter, SetRange, Step);
  ZDM_EXPECT_SLOTS(3, IZPropertyIterator, SetChosenObject, Rebuild, GetChosenObject);
}

}  // namespace
