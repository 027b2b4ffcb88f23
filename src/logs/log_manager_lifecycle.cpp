// The log manager's start and stop steps; the registry of open logs is empty until text logs exist.
#include "frame/lifecycle_steps.h"

namespace vex::logs {

void InitLogManager() {}
void ReleaseAllLogs() {}

}  // namespace vex::logs
