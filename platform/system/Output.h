// Where messages for the developer and for the user go: the debugger's output and message boxes.
// Both pass through a sink that hosts and tests may replace. At first it is the system's own on
// Windows; elsewhere nothing is recorded or shown, and a message box answers IDOK.
// Sinks are process-wide. A sink is called on the thread that has the message, without a lock held;
// whoever replaces one makes sure that no other thread is in it before what it refers to goes.
#pragma once

#include "platform/ole/ole.h"

#if !defined(_WIN32)
constexpr UINT MB_OK = 0;
constexpr UINT MB_ICONINFORMATION = 0x40;
constexpr int IDOK = 1;
#endif

namespace zdm {

struct DebugSink {
  void (*write)(void* context, const OLECHAR* text) = nullptr;
  void* context = nullptr;
};

struct MessageSink {
  /// Answers the button chosen, an ID… code.
  int (*show)(void* context, const OLECHAR* text, const OLECHAR* caption, UINT flags) = nullptr;
  void* context = nullptr;
};

/// Writes `text` to the debugger's output; null writes nothing.
ZDM_API void DebugOutput(const OLECHAR* text);

/// Shows a message box without owner window. `flags` are MB_… bits; null texts count as empty.
/// @return the button chosen, an ID… code.
ZDM_API int ShowMessage(const OLECHAR* text, const OLECHAR* caption, UINT flags);

/// Installs a sink and returns the former one. A sink without function stands for the default.
ZDM_API DebugSink SetDebugSink(DebugSink sink);
ZDM_API MessageSink SetMessageSink(MessageSink sink);

}  // namespace zdm
