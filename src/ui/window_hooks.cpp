// The dialog auto-centring hook, the key traps and the shared background brush. Their window work is
// not part of this library yet, so start and stop run their steps as no-ops, in their places.
#include "frame/lifecycle_steps.h"
#include "vextools/frame.h"

namespace vex::ui {

void InstallAutoCenterHook() {}
void RemoveAutoCenterHook() {}
void ReleaseKeyTraps() {}

}  // namespace vex::ui

LRESULT AutoCenterHookProc(int, WPARAM, LPARAM) { return 0; }

void VexDeleteStockBkBrush() {}
