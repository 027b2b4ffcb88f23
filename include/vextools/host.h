// What a host program exports for the library. The library finds these entries by name in the host
// module ("VEX.DLL" on Windows; on other platforms libvex.so when it is loaded, else the main program)
// and falls back to defaults for each one that is missing.
#pragma once

#include <cstdint>

#include "types.h"

extern "C" {
// Fills out (unbounded) with the value, or with def when there is none; nonzero on success.
typedef std::int32_t (*VexGetStringParamProc)(const char* section, const char* key, char* out, const char* def);
typedef std::int32_t (*VexGetLongParamProc)(const char* section, const char* key, std::int32_t def);
typedef std::int16_t (*VexGetBooleanParamProc)(const char* section, const char* key, std::int16_t def);
// Nonzero on success.
typedef std::int32_t (*VexWriteBooleanParamProc)(const char* section, const char* key, std::int16_t value);
typedef HWND (*VexGetKartavoWindowProc)();
}
