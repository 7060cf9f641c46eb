// Environment variables as 16-bit text.
#include "platform/system/Environment.h"

#include "platform/system/Text.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>

namespace {

using zdm::GetEnvironment;

constexpr char kName[] = "zdm_test_variable";

class Environment : public testing::Test {
 protected:
  ~Environment() override { Set(nullptr); }

  static void Set(const OLECHAR* value) {
#if defined(_WIN32)
    _wputenv_s(L"zdm_test_variable", value == nullptr ? L"" : value);
#else
    if (value == nullptr) {
      unsetenv(kName);
    } else {
      setenv(kName, zdm::ToUtf8(value).c_str(), 1);
    }
#endif
  }
};

TEST_F(Environment, UndefinedVariableLeavesTheTargetAlone) {
  CStringW value(OLESTR("before"));
  EXPECT_FALSE(GetEnvironment(kName, value));
  EXPECT_EQ(value, OLESTR("before"));
  std::size_t required = 9;
  EXPECT_EQ(GetEnvironment(&required, nullptr, 0, kName), 0);
  EXPECT_EQ(required, 0u);
}

TEST_F(Environment, ValueIsConvertedToWideText) {
  Set(OLESTR("caf\u00E9"));
  CStringW value;
  EXPECT_TRUE(GetEnvironment(kName, value));
  EXPECT_EQ(value, OLESTR("caf\u00E9"));
}

#if !defined(_WIN32)  // there a variable cannot be empty
TEST_F(Environment, EmptyIsDefined) {
  Set(OLESTR(""));
  CStringW value(OLESTR("before"));
  EXPECT_TRUE(GetEnvironment(kName, value));
  EXPECT_TRUE(value.IsEmpty());
}
#endif

TEST_F(Environment, BufferFormTellsTheSizeAndWritesNothingPastTheCapacity) {
  Set(OLESTR("abc"));
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

TEST_F(Environment, NullArgumentsAreRefused) {
  std::size_t required = 0;
  EXPECT_EQ(GetEnvironment(nullptr, nullptr, 0, kName), EINVAL);
  EXPECT_EQ(GetEnvironment(&required, nullptr, 1, kName), EINVAL);
  EXPECT_EQ(GetEnvironment(&required, nullptr, 0, nullptr), EINVAL);
}

}  // namespace
