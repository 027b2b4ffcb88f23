#include "support/host_library.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace vex::test {

bool LoadPartialHost() {
#if defined(_WIN32)
  return ::LoadLibraryA(VEX_PARTIAL_HOST_PATH) != nullptr;
#else
  return ::dlopen(VEX_PARTIAL_HOST_PATH, RTLD_NOW | RTLD_GLOBAL) != nullptr;
#endif
}

}  // namespace vex::test
