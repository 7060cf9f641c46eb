// Debugger output and message boxes through their sinks.
#include "platform/system/Output.h"

#include "tests/support/CapturedOutput.h"

#include <gtest/gtest.h>

namespace {

using zdm::CapturedOutput;
using zdm::DebugOutput;
using zdm::ShowMessage;

TEST(Output, SinksReceiveEverythingInOrder) {
  CapturedOutput captured;
  {
    const CapturedOutput inner;
    DebugOutput(OLESTR("inner"));
    EXPECT_EQ(inner.DebugText(), "inner");
  }
  DebugOutput(OLESTR("one\n"));
  DebugOutput(nullptr);
  DebugOutput(OLESTR("\u5899\n"));
  EXPECT_EQ(captured.DebugText(), "one\n\u5899\n");

  captured.AnswerWith(7);
  EXPECT_EQ(ShowMessage(OLESTR("text"), OLESTR("Read Error"), MB_OK | MB_ICONINFORMATION), 7);
  EXPECT_EQ(ShowMessage(nullptr, nullptr, 0), 7);
  ASSERT_EQ(captured.Messages().size(), 2u);
  EXPECT_EQ(captured.Messages()[0].text, "text");
  EXPECT_EQ(captured.Messages()[0].caption, "Read Error");
  EXPECT_EQ(captured.Messages()[0].flags, 0x40u);
  EXPECT_EQ(captured.Messages()[1].text, "");
}

#if !defined(_WIN32)  // there the default shows a box and waits
TEST(Output, DefaultShowsNothingAndAnswersOk) {
  const zdm::MessageSink former = zdm::SetMessageSink({});
  EXPECT_EQ(ShowMessage(OLESTR("text"), OLESTR("caption"), MB_OK), IDOK);
  zdm::SetMessageSink(former);
  const zdm::DebugSink formerDebug = zdm::SetDebugSink({});
  DebugOutput(OLESTR("nobody reads this"));
  zdm::SetDebugSink(formerDebug);
}
#endif

}  // namespace
