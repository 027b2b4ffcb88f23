// The bridge to the host's services: parameters, main window and language module.
// Each accessor falls back to its default when the host module or that entry is missing.
#pragma once

#include <cstdint>

#include "vextools/types.h"

namespace vex {

// Looks the host module and its entries up again (InitVexTools step 4).
void ResolveHostServices();

std::int32_t GetHostStringParam(const char* section, const char* key, char* out, const char* def);
std::int32_t GetHostLongParam(const char* section, const char* key, std::int32_t def);
std::int16_t GetHostBooleanParam(const char* section, const char* key, std::int16_t def);
std::int32_t WriteHostBooleanParam(const char* section, const char* key, std::int16_t value);
HWND GetHostMainWindow();
HMODULE GetLanguageModule();

// Which host entries were found, in the order of the accessors above (for diagnostics).
struct HostServicesFound {
  bool string_param, long_param, boolean_param, write_boolean_param, main_window, language_module;
};
HostServicesFound FoundHostServices();

}  // namespace vex
