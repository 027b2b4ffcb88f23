#include <cstdio>

#include "platform/clock.h"
#include "vextools/dates.h"
#include "vextools/strings.h"

char* StringDateTime(char* destination, std::int32_t mode, std::int32_t size) {
  if (!destination) return nullptr;
  char text[32] = "";
  // Either bit gives the combined form; the date-only and time-only forms are never reached, kept so.
  if (mode & 3) {
    const vex::platform::LocalTime now = vex::platform::LocalNow();
    std::snprintf(text, sizeof text, "%02hu:%02hu:%04hu,%02hu:%02hu:%02hu", static_cast<unsigned short>(now.day),
                  static_cast<unsigned short>(now.month), static_cast<unsigned short>(now.year),
                  static_cast<unsigned short>(now.hour), static_cast<unsigned short>(now.minute),
                  static_cast<unsigned short>(now.second));
  }
  StringCopy(destination, text, size);
  return destination;
}
