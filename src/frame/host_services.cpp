#include "frame/host_services.h"

#include <cstring>

#include "platform/modules.h"
#include "vextools/host.h"

namespace vex {
namespace {

struct HostEntries {
  VexGetStringParamProc get_string = nullptr;
  VexGetLongParamProc get_long = nullptr;
  VexGetBooleanParamProc get_boolean = nullptr;
  VexWriteBooleanParamProc write_boolean = nullptr;
  VexGetKartavoWindowProc main_window = nullptr;
  HMODULE language_module = nullptr;
} g_host;

template <class Proc>
Proc Entry(HMODULE module, const char* name) {
  return reinterpret_cast<Proc>(platform::FindEntry(module, name));
}

}  // namespace

void ResolveHostServices() {
  if (HMODULE host = platform::FindLoadedModule("VEX.DLL")) {
    g_host.get_string = Entry<VexGetStringParamProc>(host, "VexGetStringParam");
    g_host.get_boolean = Entry<VexGetBooleanParamProc>(host, "VexGetBooleanParam");
    g_host.get_long = Entry<VexGetLongParamProc>(host, "VexGetLongParam");
    g_host.write_boolean = Entry<VexWriteBooleanParamProc>(host, "VexWriteBooleanParam");
    g_host.main_window = Entry<VexGetKartavoWindowProc>(host, "VexGetKartavoWindow");
  }
  g_host.language_module = platform::FindLoadedModule("VEXLANG.DLL");
}

std::int32_t GetHostStringParam(const char* section, const char* key, char* out, const char* def) {
  if (g_host.get_string) return g_host.get_string(section, key, out, def);
  if (out) std::strcpy(out, def ? def : "");  // unbounded, as callers have always relied on
  return 1;
}

std::int32_t GetHostLongParam(const char* section, const char* key, std::int32_t def) {
  return g_host.get_long ? g_host.get_long(section, key, def) : def;
}

std::int16_t GetHostBooleanParam(const char* section, const char* key, std::int16_t def) {
  return g_host.get_boolean ? g_host.get_boolean(section, key, def) : def;
}

std::int32_t WriteHostBooleanParam(const char* section, const char* key, std::int16_t value) {
  return g_host.write_boolean ? g_host.write_boolean(section, key, value) : 0;
}

HWND GetHostMainWindow() { return g_host.main_window ? g_host.main_window() : nullptr; }

HMODULE GetLanguageModule() { return g_host.language_module; }

HostServicesFound FoundHostServices() {
  return {g_host.get_string != nullptr,    g_host.get_long != nullptr,    g_host.get_boolean != nullptr,
          g_host.write_boolean != nullptr, g_host.main_window != nullptr, g_host.language_module != nullptr};
}

}  // namespace vex
