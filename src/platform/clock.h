// The local clock.
#pragma once

namespace vex::platform {

struct LocalTime {
  int year, month, day, hour, minute, second, milliseconds;
};

LocalTime LocalNow();

}  // namespace vex::platform
