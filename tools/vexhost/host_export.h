#pragma once

#if defined(_WIN32)
#define VEXHOST_EXPORT extern "C" __declspec(dllexport)
#else
#define VEXHOST_EXPORT extern "C" __attribute__((visibility("default")))
#endif
