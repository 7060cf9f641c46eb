// The order of operations as a caller compiled elsewhere sees it: what the interfaces of extended
// data do not say already (tests/model/Slots_test.cpp).
#include "tests/extdata/ExtDataSupport.h"
#include "tests/support/SlotOf.h"

namespace {

using namespace zdm::test;
using Custom = IZExtDataObjImpl<IZExtData>;

TEST(Slots, ProxyAndCustomItems) {
  const GUID* (IZProxyExtDataObj::*getClassId)() = &IZProxyExtDataObj::GetClassID;
  EXPECT_EQ(SlotOf(getClassId), 3);
  ZDM_EXPECT_SLOTS(4, IZProxyExtDataObj, SetClassID, GetData, SetData);
  ZDM_EXPECT_SLOTS(9, Custom, LoadData, SaveData, CopyData);
}

TEST(Slots, VersionAndDumpFollowEachOther) {
  EXPECT_EQ(SlotOf(&CZExtDataObj::IsDumpRef), SlotOf(&CZExtDataObj::getVersion) + 1);
  EXPECT_EQ(SlotOf(&CZExtDataCollection::IsDumpRef), SlotOf(&CZExtDataCollection::getVersion) + 1);
  EXPECT_EQ(SlotOf(&CZExtDataMgr::IsDumpRef), SlotOf(&CZExtDataMgr::getVersion) + 1);
}

}  // namespace
