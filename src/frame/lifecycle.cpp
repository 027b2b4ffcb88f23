#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>

#include "frame/host_services.h"
#include "frame/lifecycle_steps.h"
#include "platform/modules.h"
#include "vextools/frame.h"
#include "vextools/diagnostics.h"

void InitVexTools() {
  vex::ui::InstallAutoCenterHook();
  VexInitAlloc();
  vex::paths::LoadUrlServices();
  vex::ResolveHostServices();
  vex::logs::InitLogManager();
  std::srand(static_cast<unsigned>(static_cast<std::uint32_t>(std::time(nullptr))));
}

void CloseVexTools() {
  VexDeleteStockBkBrush();
  VexCloseAlloc();
  vex::paths::FreeUrlServices();
  vex::logs::ReleaseAllLogs();
  vex::ui::RemoveAutoCenterHook();
  vex::ui::ReleaseKeyTraps();
  vex::frame::DestroyAssertionLog();
}

bool GetKartavoPath(char* dst, int size) {
  char full[MAX_PATH];
  if (!vex::platform::ModuleFileName(vex::platform::SelfModule(), full, sizeof full)) return false;
  // Drive and directory only: everything up to and including the last separator.
  const char* end = full;
  for (const char* p = full; *p; ++p)
    if (*p == '/' || *p == '\\' || (*p == ':' && p == full + 1)) end = p + 1;
  const std::string path(static_cast<const char*>(full), end);
  if (!dst || size < 0 || static_cast<std::size_t>(size) < path.size() + 1) return false;
  std::memcpy(dst, path.c_str(), path.size() + 1);
  return true;
}

std::uint32_t VexHostServicesFound() {
  const vex::HostServicesFound found = vex::FoundHostServices();
  return (found.string_param ? VEXHOST_STRING_PARAM : 0u) | (found.long_param ? VEXHOST_LONG_PARAM : 0u) |
         (found.boolean_param ? VEXHOST_BOOLEAN_PARAM : 0u) |
         (found.write_boolean_param ? VEXHOST_WRITE_BOOLEAN_PARAM : 0u) |
         (found.main_window ? VEXHOST_MAIN_WINDOW : 0u) | (found.language_module ? VEXHOST_LANGUAGE_MODULE : 0u);
}
