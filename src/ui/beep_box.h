// The beeping message box used inside the library: the beep of the box's icon, then the display step.
#pragma once

#include "vextools/types.h"

namespace vex::ui {

int BeepBox(HWND owner, const char* text, const char* title, unsigned style);

}  // namespace vex::ui
