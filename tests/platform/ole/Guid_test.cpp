// The text form of a GUID.
#include <gtest/gtest.h>

#include <string>

#include "platform/ole/ole.h"

namespace {

constexpr GUID kGuid = {0x64BEE525, 0x7124, 0x450E, {0xB4, 0x08, 0x7A, 0x7D, 0x31, 0x97, 0x2C, 0xDC}};

TEST(Guid, TextFormIsUpperCaseInBraces) {
  OLECHAR text[39];
  EXPECT_EQ(StringFromGUID2(kGuid, text, 39), 39);
  EXPECT_EQ(std::basic_string<OLECHAR>(text), OLESTR("{64BEE525-7124-450E-B408-7A7D31972CDC}"));
  EXPECT_EQ(StringFromGUID2(kGuid, text, 38), 0);
}

}  // namespace
