// Environment variables as 16-bit text.
#include "platform/system/Environment.h"

#include "tests/support/Variable.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace {

using zdm::GetEnvironment;

constexpr char kName[] = "zdm_test_variable";

TEST(Environment, UndefinedVariableLeavesTheTargetAlone) {
  CStringW value(OLESTR("before"));
  EXPECT_FALSE(GetEnvironment(kName, value));
  EXPECT_EQ(value, OLESTR("before"));
  std::size_t required = 9;
  EXPECT_EQ(GetEnvironment(&required, nullptr, 0, kName), 0);
  EXPECT_EQ(required, 0u);
  EXPECT_EQ(GetEnvironment(nullptr, nullptr, 0, kName), EINVAL);
  EXPECT_EQ(GetEnvironment(&required, nullptr, 1, kName), EINVAL);
  EXPECT_EQ(GetEnvironment(&required, nullptr, 0, nullptr), EINVAL);
}

TEST(Environment, ValueIsConvertedToWideText) {
  const zdm::test::Variable variable(kName);
  CStringW value(OLESTR("before"));
  for (const OLECHAR* text : {OLESTR("caf\u00E9"), OLESTR("")}) {
#if defined(_WIN32)  // there a variable cannot be empty
    if (*text == 0) continue;
#endif
    variable.Set(text);
    EXPECT_TRUE(GetEnvironment(kName, value));
    EXPECT_EQ(value, text);
  }
}

TEST(Environment, BufferFormTellsTheSizeAndWritesNothingPastTheCapacity) {
  const zdm::test::Variable variable(kName);
  variable.Set(OLESTR("abc"));
  std::size_t required = 0;
  EXPECT_EQ(GetEnvironment(&required, nullptr, 0, kName), 0);
  EXPECT_EQ(required, 4u);
  OLECHAR buffer[5] = {OLESTR('#'), OLESTR('#'), OLESTR('#'), OLESTR('#'), OLESTR('#')};
  EXPECT_EQ(GetEnvironment(&required, buffer, 3, kName), ERANGE);
  EXPECT_EQ(zdm::WideString(buffer, 5), zdm::WideString(OLESTR("\0####"), 5));
  EXPECT_EQ(required, 4u);
  EXPECT_EQ(GetEnvironment(&required, buffer, 4, kName), 0);
  EXPECT_EQ(zdm::WideString(buffer, 5), zdm::WideString(OLESTR("abc\0#"), 5));
}

}  // namespace
