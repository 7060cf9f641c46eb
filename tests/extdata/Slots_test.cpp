// The order of operations as a caller compiled elsewhere sees it: what the interfaces of extended
// data do not say already (tests/model/Slots_test.cpp).
#include "tests/extdata/ExtDataSupport.h"
#include "tests/support/SlotOf.h"

namespace {

using namespace zdm::test;
using Custom = IZExtDataObjImpl<IZExtData>;

TEST(Slots, ProxyAndCustomItems) {
  const GUID* (IZProxyExtDataObj::*getClassId)() = &IZProxyExtDataObj::GetClassID;
  ExpectInOrder(3, {{"GetClassID", SlotOf(getClassId)},
                    ZDM_SLOT(IZProxyExtDataObj, SetClassID),
                    ZDM_SLOT(IZProxyExtDataObj, GetData),
                    ZDM_SLOT(IZProxyExtDataObj, SetData)});
  ExpectInOrder(
      9, {ZDM_SLOT(Custom, LoadData), ZDM_SLOT(Custom, SaveData), ZDM_SLOT(Custom, CopyData)});
}

TEST(Slots, VersionAndDumpFollowEachOther) {
  EXPECT_EQ(SlotOf(&CZExtDataObj::IsDumpRef), SlotOf(&CZExtDataObj::getVersion) + 1);
  EXPECT_EQ(SlotOf(&CZExtDataCollection::IsDumpRef), SlotOf(&CZExtDataCollection::getVersion) + 1);
  EXPECT_EQ(SlotOf(&CZExtDataMgr::IsDumpRef), SlotOf(&CZExtDataMgr::getVersion) + 1);
}

}  // namespace
