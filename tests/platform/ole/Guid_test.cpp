// The text form of a GUID, both ways, and program names.
#include "platform/ole/ole.h"
#include "platform/system/Text.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr GUID kGuid = {
    0x64BEE525, 0x7124, 0x450E, {0xB4, 0x08, 0x7A, 0x7D, 0x31, 0x97, 0x2C, 0xDC}};

TEST(Guid, TextFormIsUpperCaseInBracesAndReadInEitherCase) {
  OLECHAR text[39];
  EXPECT_EQ(StringFromGUID2(kGuid, text, 39), 39);
  EXPECT_EQ(std::basic_string<OLECHAR>(text), OLESTR("{64BEE525-7124-450E-B408-7A7D31972CDC}"));
  EXPECT_EQ(StringFromGUID2(kGuid, text, 38), 0);
  for (const OLECHAR* form :
       {OLESTR("{64BEE525-7124-450E-B408-7A7D31972CDC}"),
        OLESTR("{64bee525-7124-450e-b408-7a7d31972cdc}"), static_cast<const OLECHAR*>(nullptr)}) {
    CLSID read = {1, 2, 3, {}};
    EXPECT_EQ(CLSIDFromString(form, &read), S_OK);
    EXPECT_TRUE(IsEqualGUID(read, form != nullptr ? kGuid : CLSID_NULL));
  }
}

TEST(Guid, RefusesEveryOtherText) {
  for (const OLECHAR* text : {
           OLESTR(""),
           OLESTR("nonsense"),
           OLESTR("64BEE525-7124-450E-B408-7A7D31972CDC"),
           OLESTR("{64BEE525-7124-450E-B408-7A7D31972CDC"),
           OLESTR("{64BEE525-7124-450E-B408-7A7D31972CDC} "),
           OLESTR("{64BEE525-7124-450E-B408-7A7D31972CDG}"),
           OLESTR("{64BEE525-7124-450E-B4087-A7D31972CDC}"),
           OLESTR("{64BEE525/7124-450E-B408-7A7D31972CDC}"),
       }) {
    CLSID read = kGuid;
    EXPECT_EQ(CLSIDFromString(text, &read), CO_E_CLASSSTRING) << zdm::ToUtf8(text);
  }
  EXPECT_EQ(CLSIDFromString(OLESTR("{64BEE525-7124-450E-B408-7A7D31972CDC}"), nullptr),
            E_INVALIDARG);
}

TEST(ProgID, UnknownClassHasNone) {
  LPOLESTR name = nullptr;
  EXPECT_EQ(ProgIDFromCLSID(kGuid, &name), REGDB_E_CLASSNOTREG);
  EXPECT_EQ(name, nullptr);
  EXPECT_EQ(ProgIDFromCLSID(kGuid, nullptr), E_INVALIDARG);
}

#if !defined(_WIN32)
TEST(ProgID, RegisteredNameIsCopiedUntilItIsTakenOut) {
  zdm::RegisterProgID(kGuid, OLESTR("Old.Name"));
  zdm::RegisterProgID(kGuid, OLESTR("Some.Class.1"));
  LPOLESTR name = nullptr;
  ASSERT_EQ(ProgIDFromCLSID(kGuid, &name), S_OK);
  zdm::RegisterProgID(kGuid, nullptr);
  EXPECT_EQ(std::basic_string<OLECHAR>(name), OLESTR("Some.Class.1"));
  CoTaskMemFree(name);
  EXPECT_EQ(ProgIDFromCLSID(kGuid, &name), REGDB_E_CLASSNOTREG);
}
#endif

}  // namespace
