#include <stdlib.h>

#include "vextools/types.h"
#include "platform/process.h"

namespace vex::platform {
void NativeDebugBreak() { ::DebugBreak(); }

void ExitNow(int code) { ::_exit(code); }

void Beep(unsigned type) { ::MessageBeep(type); }

}  // namespace vex::platform
