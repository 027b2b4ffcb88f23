// Dates and times.
#pragma once

#include <cstdint>

#include "export.h"

// The current local date and time as "dd:mm:yyyy,hh:mm:ss" for any mode with bit 0 or 1 set, else an
// empty text; copied into destination with the bounded copy. Returns destination (null stays null).
VEXTOOLS_API char* StringDateTime(char* destination, std::int32_t mode, std::int32_t size);
