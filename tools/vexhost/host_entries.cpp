// The host entries the library looks up by name in the host module.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "host_export.h"
#include "host_settings.h"

using vexhost::HostSettings;

namespace {

bool ParseBoolean(const std::string& value, bool fallback) {
  if (value == "1" || value == "true" || value == "yes" || value == "on") return true;
  if (value == "0" || value == "false" || value == "no" || value == "off") return false;
  return fallback;
}

}  // namespace

// Fills out (the library's buffer, unbounded as the library expects) with the value or the default.
VEXHOST_EXPORT std::int32_t VexGetStringParam(const char* section, const char* key, char* out, const char* def) {
  if (!out) return 0;
  const auto value = HostSettings().Get(section ? section : "", key ? key : "");
  std::strcpy(out, value ? value->c_str() : (def ? def : ""));
  return 1;
}

VEXHOST_EXPORT std::int32_t VexGetLongParam(const char* section, const char* key, std::int32_t def) {
  const auto value = HostSettings().Get(section ? section : "", key ? key : "");
  if (!value || value->empty()) return def;
  char* end = nullptr;
  const long parsed = std::strtol(value->c_str(), &end, 10);
  return *end ? def : static_cast<std::int32_t>(parsed);
}

VEXHOST_EXPORT std::int16_t VexGetBooleanParam(const char* section, const char* key, std::int16_t def) {
  const auto value = HostSettings().Get(section ? section : "", key ? key : "");
  return value ? ParseBoolean(*value, def != 0) : def;
}

VEXHOST_EXPORT std::int32_t VexWriteBooleanParam(const char* section, const char* key, std::int16_t value) {
  if (!section || !key) return 0;
  HostSettings().Set(section, key, value ? "1" : "0");
  return HostSettings().Save() ? 1 : 0;
}

// This host has no window: the library's boxes have no owner.
VEXHOST_EXPORT void* VexGetKartavoWindow() { return nullptr; }

// Opening a map document is reported; this host has no map view.
VEXHOST_EXPORT std::int32_t VexLoadMap(const char* path) {
  std::printf("map requested: %s\n", path ? path : "(none)");
  return 1;
}
