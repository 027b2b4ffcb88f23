// A host module that exports only some of the host entries.
#include <cstdint>

#if defined(_WIN32)
#define HOST_EXPORT extern "C" __declspec(dllexport)
#else
#define HOST_EXPORT extern "C" __attribute__((visibility("default")))
#endif

namespace {
int g_window;
}

HOST_EXPORT std::int32_t VexGetLongParam(const char*, const char*, std::int32_t def) { return def + 1000; }
HOST_EXPORT void* VexGetKartavoWindow() { return &g_window; }
