// Keeps what the library writes to the debugger's output and shows in message boxes while it lives,
// so that a test can read it and nothing reaches the screen.
#pragma once

#include "platform/system/Output.h"
#include "platform/system/Text.h"

#include <string>
#include <vector>

namespace zdm {

class CapturedOutput {
 public:
  struct Message {
    std::string text;
    std::string caption;
    UINT flags = 0;
  };

  CapturedOutput()
      : formerDebug_(SetDebugSink({&Write, this})), formerMessage_(SetMessageSink({&Show, this})) {}
  ~CapturedOutput() {
    SetDebugSink(formerDebug_);
    SetMessageSink(formerMessage_);
  }
  CapturedOutput(const CapturedOutput&) = delete;
  CapturedOutput& operator=(const CapturedOutput&) = delete;

  /// Everything written so far, in UTF-8.
  const std::string& DebugText() const { return debug_; }
  /// Boxes shown so far.
  const std::vector<Message>& Messages() const { return messages_; }
  /// The button that later boxes are answered with; IDOK at first.
  void AnswerWith(int button) { answer_ = button; }

 private:
  static void Write(void* self, const OLECHAR* text) {
    static_cast<CapturedOutput*>(self)->debug_ += ToUtf8(text);
  }
  static int Show(void* self, const OLECHAR* text, const OLECHAR* caption, UINT flags) {
    auto* output = static_cast<CapturedOutput*>(self);
    output->messages_.push_back({ToUtf8(text), ToUtf8(caption), flags});
    return output->answer_;
  }

  std::string debug_;
  std::vector<Message> messages_;
  int answer_ = IDOK;
  DebugSink formerDebug_;
  MessageSink formerMessage_;
};

}  // namespace zdm
