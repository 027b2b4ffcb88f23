#pragma once

#include "vextools/types.h"

namespace vex {

// Runs on every load notification, whatever its reason: remembers this library's instance handle and
// initialises the font-type table (once per process).
void OnLoadNotification(HINSTANCE instance);

}  // namespace vex
