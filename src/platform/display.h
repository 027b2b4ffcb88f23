// The display step: message boxes and the library's dialogs, through the host's callback when one is
// installed, else through the platform (see vextools/display.h).
#pragma once

#include <cstdint>

#include "vextools/display.h"

namespace vex::platform {

// Shows a message box; returns the button code.
int ShowMessageBox(HWND owner, const char* text, const char* title, unsigned style);

// Shows the assertion comment dialog (resource 217); IDOK, IDCANCEL, or -1 when it could not be shown.
int ShowCommentDialog(HWND owner, char* text, int size, std::int32_t* checked);

// The window that should own a box of the library: the active window, or null.
HWND ActiveWindow();

// The answer of a box that was not shown: that of its default button.
int DefaultButtonAnswer(unsigned style);

// The installed host callback, or null; and its context.
VEXDISPLAYPROC DisplayCallback(void** context);

// The platform's own steps, used when no callback is installed.
int NativeMessageBox(HWND owner, const char* text, const char* title, unsigned style);
int NativeCommentDialog(HWND owner, char* text, int size, std::int32_t* checked);

}  // namespace vex::platform
