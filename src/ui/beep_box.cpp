#include "ui/beep_box.h"

#include "platform/display.h"
#include "platform/process.h"

namespace vex::ui {

int BeepBox(HWND owner, const char* text, const char* title, unsigned style) {
  platform::Beep(style & MB_ICONMASK);
  return platform::ShowMessageBox(owner, text, title, style);
}

}  // namespace vex::ui
