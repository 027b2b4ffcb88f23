// The library entries this host calls, by their exported (mangled) names.
#pragma once

#include <cstdint>

#include "library_loader.h"
#include "vextools/display.h"

namespace vexhost {

struct LibraryApi {
  void (*InitVexTools)();
  void (*CloseVexTools)();
  bool (*GetKartavoPath)(char*, int);
  std::uint32_t (*VexHostServicesFound)();
  VEXDISPLAYPROC (*VexSetDisplayCallback)(VEXDISPLAYPROC, void*);

  // Fills every entry; false (naming the first missing one) when one is not there.
  bool Bind(const Library& library, const char** missing);
};

}  // namespace vexhost
