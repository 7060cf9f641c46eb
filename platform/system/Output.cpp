#include "platform/system/Output.h"

#include <mutex>
#include <utility>

namespace zdm {
namespace {

struct Sinks {
  std::mutex mutex;
  DebugSink debug;
  MessageSink message;
};

Sinks& Current() {
  static Sinks sinks;
  return sinks;
}

template <typename Sink>
Sink Get(Sink Sinks::*which) {
  Sinks& sinks = Current();
  const std::lock_guard lock(sinks.mutex);
  return sinks.*which;
}

template <typename Sink>
Sink Set(Sink Sinks::*which, Sink sink) {
  Sinks& sinks = Current();
  const std::lock_guard lock(sinks.mutex);
  return std::exchange(sinks.*which, sink);
}

}  // namespace

void DebugOutput(const OLECHAR* text) {
  if (text == nullptr) return;
  const DebugSink sink = Get(&Sinks::debug);
  if (sink.write != nullptr) {
    sink.write(sink.context, text);
    return;
  }
#if defined(_WIN32)
  OutputDebugStringW(text);
#endif
}

int ShowMessage(const OLECHAR* text, const OLECHAR* caption, UINT flags) {
  if (text == nullptr) text = OLESTR("");
  if (caption == nullptr) caption = OLESTR("");
  const MessageSink sink = Get(&Sinks::message);
  if (sink.show != nullptr) return sink.show(sink.context, text, caption, flags);
#if defined(_WIN32)
  return MessageBoxW(nullptr, text, caption, flags);
#else
  return IDOK;
#endif
}

DebugSink SetDebugSink(DebugSink sink) { return Set(&Sinks::debug, sink); }

MessageSink SetMessageSink(MessageSink sink) { return Set(&Sinks::message, sink); }

}  // namespace zdm
