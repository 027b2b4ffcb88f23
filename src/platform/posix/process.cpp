#include <signal.h>
#include <unistd.h>

#include "platform/process.h"

namespace vex::platform {
namespace {
DebugBreakHook g_hook = nullptr;
}

void SetDebugBreakHook(DebugBreakHook hook) { g_hook = hook; }

void DebugBreakNow() {
  if (g_hook) return g_hook();
  ::raise(SIGTRAP);
}

void ExitNow(int code) { ::_exit(code); }

void Beep(unsigned) {}

}  // namespace vex::platform
