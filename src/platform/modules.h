// Modules and their entries. Never loads a module the host did not load, except the URL services.
#pragma once

#include <cstddef>

#include "vextools/types.h"

namespace vex::platform {

// An already loaded module by its Windows name ("VEX.DLL"), or null. See docs/platforms.md for the
// names on other platforms.
HMODULE FindLoadedModule(const char* name);

// The entry of that name in the module, or null.
void* FindEntry(HMODULE module, const char* name);

// The URL services module: loaded (one more reference) and released.
HMODULE LoadUrlServices();
void FreeUrlServices(HMODULE module);

// This library's own module: the instance handle given at load, else the module holding this code.
void SetSelfModule(HINSTANCE instance);
HMODULE SelfModule();

// Full file name of a module (null: this library) into buffer; its length, or 0 on failure or when
// it does not fit.
std::size_t ModuleFileName(HMODULE module, char* buffer, std::size_t size);

}  // namespace vex::platform
