// The debugger break goes through a hook that tests replace; the native break is per platform.
#include "platform/process.h"

namespace vex::platform {
namespace {
DebugBreakHook g_hook = nullptr;
}

void SetDebugBreakHook(DebugBreakHook hook) { g_hook = hook; }

void DebugBreakNow() {
  if (g_hook) return g_hook();
  NativeDebugBreak();
}

}  // namespace vex::platform
