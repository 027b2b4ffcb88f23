// Without a host callback there is no window system to show anything on.
#include "platform/display.h"

namespace vex::platform {

int NativeMessageBox(HWND, const char*, const char*, unsigned style) { return DefaultButtonAnswer(style); }

int NativeCommentDialog(HWND, char*, int, std::int32_t*) { return -1; }

}  // namespace vex::platform

namespace vex::platform {
HWND ActiveWindow() { return nullptr; }
}  // namespace vex::platform
