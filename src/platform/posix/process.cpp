#include <signal.h>
#include <unistd.h>

#include "platform/process.h"

namespace vex::platform {
void NativeDebugBreak() { ::raise(SIGTRAP); }

void ExitNow(int code) { ::_exit(code); }

void Beep(unsigned) {}

}  // namespace vex::platform
