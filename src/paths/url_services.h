#pragma once

#include "vextools/types.h"

namespace vex::paths {

// The URL services module (null: URLs cannot be used) and the host module that loads maps.
HMODULE UrlServicesModule();
HMODULE MapLoaderModule();

}  // namespace vex::paths
