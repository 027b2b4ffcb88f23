#include "vextools/types.h"
#include "platform/clock.h"

namespace vex::platform {

LocalTime LocalNow() {
  SYSTEMTIME now;
  ::GetLocalTime(&now);
  return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds};
}

}  // namespace vex::platform
