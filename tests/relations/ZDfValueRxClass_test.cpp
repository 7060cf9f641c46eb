// The registry of field values, and the module functions that fill and empty it.
#include "zdm/relations/ZDfValueRxClass.h"

#include "zdm/module/DllRegisterZModule.h"
#include "zdm/relations/ZDfValues.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

ZDfValueRxClass* NewRecord(unsigned char type, ZDfValue* (*creator)()) {
  auto* record = new ZDfValueRxClass;
  record->type = type;
  record->creator = creator;
  return record;
}

/// The type of the value made for `code`; 0 for none.
int TypeMadeFor(unsigned char code) {
  ZDfValue* value = ZDfValueRxClass::CreateZDfValue(code);
  if (value == nullptr) return 0;
  const int type = value->GetType();
  value->Release();
  return type;
}

std::vector<int> Chain() {
  std::vector<int> types;
  for (const auto* at = ZDfValueRxClass::g_pDesc; at != nullptr; at = at->next) {
    types.push_back(at->type);
  }
  return types;
}

class DfValueRegistry : public testing::Test {
 protected:
  void SetUp() override { ZDfValueRxClass::ReleaseRxClassChain(); }
  void TearDown() override { ZDfValueRxClass::ReleaseRxClassChain(); }
};

TEST_F(DfValueRegistry, IsEmptyUntilTheModuleIsRegisteredWhichTwiceChangesNothing) {
  EXPECT_EQ(ZDfValueRxClass::g_pDesc, nullptr);
  EXPECT_EQ(TypeMadeFor(1), 0);
  EXPECT_EQ(DllRegisterZModule(), S_OK);
  const ZDfValueRxClass* record = ZDfGUID::gpDesc;
  EXPECT_EQ(DllRegisterZModule(), S_OK);
  EXPECT_EQ(ZDfGUID::gpDesc, record);
  for (unsigned char code = 1; code <= 9; ++code) EXPECT_EQ(TypeMadeFor(code), code);
  EXPECT_EQ(TypeMadeFor(0), 0);
  EXPECT_EQ(TypeMadeFor(10), 0);
  // The most recent stands behind the head.
  EXPECT_EQ(Chain(), (std::vector<int>{0, 9, 8, 7, 6, 5, 4, 3, 2, 1}));
  EXPECT_EQ(ZDfValueRxClass::g_pDesc->creator, nullptr);
  EXPECT_EQ(ZDfReltnColl::gpDesc, ZDfValueRxClass::g_pDesc->next);
  EXPECT_EQ(ZDfDouble::gpDesc->type, 1);
}

TEST_F(DfValueRegistry, FirstRegistrationOfACodeWins) {
  ZDfLong::rxInit();
  ASSERT_TRUE(ZDfValueRxClass::AddRxClass(NewRecord(7, &ZDfLong::Creator)));
  const std::unique_ptr<ZDfValueRxClass> late(NewRecord(6, &ZDfBool::Creator));
  EXPECT_FALSE(ZDfValueRxClass::AddRxClass(late.get()));
  const std::unique_ptr<ZDfValueRxClass> none(NewRecord(0, &ZDfBool::Creator));
  EXPECT_FALSE(ZDfValueRxClass::AddRxClass(none.get()));
  EXPECT_FALSE(ZDfValueRxClass::AddRxClass(nullptr));
  EXPECT_EQ(TypeMadeFor(6), 6);
  EXPECT_EQ(TypeMadeFor(0), 0);
  ZDfBool::rxInit();
  EXPECT_EQ(TypeMadeFor(7), 6) << "the host was first";
  EXPECT_EQ(ZDfBool::gpDesc, nullptr);
  EXPECT_EQ(Chain(), (std::vector<int>{0, 7, 6}));
}

TEST_F(DfValueRegistry, UnregisteringLeavesNothing) {
  DllRegisterZModule();
  EXPECT_EQ(DllUnRegisterZModule(), S_OK);
  EXPECT_EQ(DllUnRegisterZModule(), S_OK);
  EXPECT_EQ(ZDfValueRxClass::g_pDesc, nullptr);
  for (const ZDfValueRxClass* record :
       {ZDfDouble::gpDesc, ZDfGUID::gpDesc, ZDfRelation::gpDesc, ZDfCComBSTR::gpDesc,
        ZDfElement::gpDesc, ZDfLong::gpDesc, ZDfBool::gpDesc, ZDfUlongPtr::gpDesc,
        ZDfReltnColl::gpDesc}) {
    EXPECT_EQ(record, nullptr);
  }
  DllRegisterZModule();
  EXPECT_EQ(TypeMadeFor(4), 4);
}

}  // namespace
