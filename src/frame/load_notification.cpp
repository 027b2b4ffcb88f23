#include "frame/load_notification.h"

#include "platform/modules.h"
#include "vextools/fonttypes.h"

namespace vex {

void OnLoadNotification(HINSTANCE instance) {
  platform::SetSelfModule(instance);
  VexInitFontTypes();
}

}  // namespace vex
