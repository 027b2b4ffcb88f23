// What the library found of its host, for a host that wants to check its own setup.
#pragma once

#include <cstdint>

#include "export.h"

enum : std::uint32_t {
  VEXHOST_STRING_PARAM = 0x01,         // "VexGetStringParam"
  VEXHOST_LONG_PARAM = 0x02,           // "VexGetLongParam"
  VEXHOST_BOOLEAN_PARAM = 0x04,        // "VexGetBooleanParam"
  VEXHOST_WRITE_BOOLEAN_PARAM = 0x08,  // "VexWriteBooleanParam"
  VEXHOST_MAIN_WINDOW = 0x10,          // "VexGetKartavoWindow"
  VEXHOST_LANGUAGE_MODULE = 0x20,      // "VEXLANG.DLL" is loaded
};

// The host services found by the last InitVexTools, as VEXHOST_ bits.
VEXTOOLS_API std::uint32_t VexHostServicesFound();
