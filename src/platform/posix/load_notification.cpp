// The load notification: what Windows does in DllMain happens here when the shared object is loaded.
#include "frame/load_notification.h"

namespace {
__attribute__((constructor)) void OnLoad() { vex::OnLoadNotification(nullptr); }
}  // namespace
