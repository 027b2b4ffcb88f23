#include "platform/modules.h"

namespace vex::platform {
namespace {
HINSTANCE g_self = nullptr;
}

HMODULE FindLoadedModule(const char* name) { return name && *name ? ::GetModuleHandleA(name) : nullptr; }

void* FindEntry(HMODULE module, const char* name) {
  if (!module || !name) return nullptr;
  return reinterpret_cast<void*>(::GetProcAddress(module, name));
}

HMODULE LoadUrlServices() { return ::LoadLibraryA("UrlMon.dll"); }

void FreeUrlServices(HMODULE module) {
  if (module) ::FreeLibrary(module);
}

void SetSelfModule(HINSTANCE instance) { g_self = instance; }

HMODULE SelfModule() {
  if (g_self) return g_self;
  HMODULE module = nullptr;  // linked into a program: the module that holds this code
  ::GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCSTR>(&SelfModule), &module);
  return module;
}

std::size_t ModuleFileName(HMODULE module, char* buffer, std::size_t size) {
  if (!buffer || size == 0) return 0;
  const DWORD n = ::GetModuleFileNameA(module ? module : SelfModule(), buffer, static_cast<DWORD>(size));
  if (n == 0 || n >= size) return 0;
  return n;
}

}  // namespace vex::platform
