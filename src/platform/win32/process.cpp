#include <stdlib.h>

#include "vextools/types.h"
#include "platform/process.h"

namespace vex::platform {
namespace {
DebugBreakHook g_hook = nullptr;
}

void SetDebugBreakHook(DebugBreakHook hook) { g_hook = hook; }

void DebugBreakNow() {
  if (g_hook) return g_hook();
  ::DebugBreak();
}

void ExitNow(int code) { ::_exit(code); }

void Beep(unsigned type) { ::MessageBeep(type); }

}  // namespace vex::platform
