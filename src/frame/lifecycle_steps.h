// The steps of start and stop that belong to other subsystems, in one place so their order is fixed here.
#pragma once

namespace vex {

namespace ui {
void InstallAutoCenterHook();  // start, step 1
void RemoveAutoCenterHook();   // stop, step 5
void ReleaseKeyTraps();        // stop, step 6
}  // namespace ui

namespace paths {
int LoadUrlServices();  // start, step 3; always 1
int FreeUrlServices();  // stop, step 3; always 1
}  // namespace paths

namespace logs {
void InitLogManager();     // start, step 5
void ReleaseAllLogs();     // stop, step 4
}  // namespace logs

namespace frame {
void DestroyAssertionLog();  // stop, step 7
}  // namespace frame

}  // namespace vex
