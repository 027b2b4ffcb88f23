// Modules on POSIX. A Windows module name maps to a shared object: "NAME.DLL" is libname.so, and the
// host module "VEX.DLL" is libvex.so when loaded, else the main program.
#include <dlfcn.h>
#include <unistd.h>

#include <cctype>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <string>

#include "platform/modules.h"

namespace vex::platform {
namespace {

HINSTANCE g_self = nullptr;

// Marks the URL services, which are built in here.
char g_url_services_tag;

std::string SharedObjectName(const char* name) {
  std::string base(name);
  if (auto slash = base.find_last_of("/\\"); slash != std::string::npos) base.erase(0, slash + 1);
  for (char& c : base) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  if (base.size() > 4 && base.compare(base.size() - 4, 4, ".dll") == 0) base.resize(base.size() - 4);
  return "lib" + base + ".so";
}

HMODULE NoLoad(const char* file) {
  void* handle = ::dlopen(file, RTLD_LAZY | RTLD_NOLOAD);
  if (handle) ::dlclose(handle);  // the module stays loaded; like GetModuleHandle, keep no reference
  return static_cast<HMODULE>(handle);
}

}  // namespace

HMODULE FindLoadedModule(const char* name) {
  if (!name || !*name) return nullptr;
  if (HMODULE found = NoLoad(SharedObjectName(name).c_str())) return found;
  if (::strcasecmp(name, "VEX.DLL") == 0) return NoLoad(nullptr);
  return nullptr;
}

void* FindEntry(HMODULE module, const char* name) {
  if (!module || !name || module == reinterpret_cast<HMODULE>(&g_url_services_tag)) return nullptr;
  return ::dlsym(module, name);
}

HMODULE LoadUrlServices() { return reinterpret_cast<HMODULE>(&g_url_services_tag); }

void FreeUrlServices(HMODULE) {}

void SetSelfModule(HINSTANCE instance) { g_self = instance; }

HMODULE SelfModule() { return g_self; }

std::size_t ModuleFileName(HMODULE module, char* buffer, std::size_t size) {
  if (!buffer || size == 0) return 0;
  std::string path;
  if (module && module != g_self) {
    return 0;  // only this library's own name is ever asked for
  }
  Dl_info info{};
  if (::dladdr(reinterpret_cast<void*>(&ModuleFileName), &info) && info.dli_fname && *info.dli_fname) {
    char resolved[PATH_MAX];
    if (::realpath(info.dli_fname, resolved)) path = resolved;
  }
  if (path.empty()) {  // the main program names itself only through /proc
    char exe[PATH_MAX];
    const ssize_t n = ::readlink("/proc/self/exe", exe, sizeof exe - 1);
    if (n <= 0) return 0;
    path.assign(exe, static_cast<std::size_t>(n));
  }
  if (path.size() + 1 > size) return 0;
  std::memcpy(buffer, path.c_str(), path.size() + 1);
  return path.size();
}

}  // namespace vex::platform
