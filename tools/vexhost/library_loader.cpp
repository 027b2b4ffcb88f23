#include "library_loader.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#include <limits.h>
#include <unistd.h>
#endif

namespace vexhost {
namespace {

std::string OwnFolder() {
#if defined(_WIN32)
  char path[MAX_PATH];
  const DWORD n = ::GetModuleFileNameA(nullptr, path, MAX_PATH);
  std::string full(path, n < MAX_PATH ? n : 0);
#else
  char path[PATH_MAX];
  const ssize_t n = ::readlink("/proc/self/exe", path, sizeof path - 1);
  std::string full(path, n > 0 ? static_cast<std::size_t>(n) : 0);
#endif
  const auto slash = full.find_last_of("/\\");
  return slash == std::string::npos ? std::string() : full.substr(0, slash + 1);
}

}  // namespace

bool Library::Load(std::string& error) {
#if defined(_WIN32)
  path_ = OwnFolder() + "vextools.dll";
  handle_ = ::LoadLibraryA(path_.c_str());
  if (!handle_) error = "cannot load " + path_ + " (error " + std::to_string(::GetLastError()) + ")";
#else
  path_ = OwnFolder() + "libvextools.so";
  handle_ = ::dlopen(path_.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!handle_) error = ::dlerror();
#endif
  return handle_ != nullptr;
}

void* Library::Find(const char* name) const {
  if (!handle_) return nullptr;
#if defined(_WIN32)
  return reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(handle_), name));
#else
  return ::dlsym(handle_, name);
#endif
}

}  // namespace vexhost
