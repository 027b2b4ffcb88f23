#include "host_commands.h"

#include <cstdio>
#include <vector>

#include "host_settings.h"
#include "import_command.h"
#include "library_api.h"
#include "vextools/diagnostics.h"

namespace vexhost {

bool LibraryApi::Bind(const Library& library, const char** missing) {
  struct Slot {
    void** target;
    const char* name;
  } slots[] = {
      {reinterpret_cast<void**>(&InitVexTools), "_Z12InitVexToolsv"},
      {reinterpret_cast<void**>(&CloseVexTools), "_Z13CloseVexToolsv"},
      {reinterpret_cast<void**>(&GetKartavoPath), "_Z14GetKartavoPathPci"},
      {reinterpret_cast<void**>(&VexHostServicesFound), "_Z20VexHostServicesFoundv"},
      {reinterpret_cast<void**>(&VexSetDisplayCallback), "VexSetDisplayCallback"},
  };
  for (const Slot& slot : slots) {
    *slot.target = library.Find(slot.name);
    if (!*slot.target) {
      *missing = slot.name;
      return false;
    }
  }
  return true;
}

namespace {

// This host has no window: boxes are written out and get their default answer.
std::int32_t ShowOnConsole(const VEXDISPLAYREQUEST* request, void*) {
  if (request->kind != VEXDISPLAY_MESSAGEBOX) return -1;
  std::printf("[%s] %s\n", request->title, request->text);
  static const int kFirst[] = {IDOK, IDOK, IDABORT, IDYES, IDYES, IDRETRY};
  const unsigned buttons = request->style & MB_TYPEMASK;
  return buttons < 6 ? kFirst[buttons] : IDOK;
}

void PrintHostServices(std::uint32_t found) {
  static const struct {
    std::uint32_t bit;
    const char* name;
  } kServices[] = {
      {VEXHOST_STRING_PARAM, "VexGetStringParam"},     {VEXHOST_LONG_PARAM, "VexGetLongParam"},
      {VEXHOST_BOOLEAN_PARAM, "VexGetBooleanParam"},   {VEXHOST_WRITE_BOOLEAN_PARAM, "VexWriteBooleanParam"},
      {VEXHOST_MAIN_WINDOW, "VexGetKartavoWindow"},    {VEXHOST_LANGUAGE_MODULE, "VEXLANG.DLL"},
  };
  std::printf("host services found by the library:\n");
  for (const auto& service : kServices)
    std::printf("  %-22s %s\n", service.name, (found & service.bit) ? "found" : "missing (default used)");
}

int Info(const LibraryApi& api) {
  PrintHostServices(api.VexHostServicesFound());
  char folder[1024];
  if (api.GetKartavoPath(folder, sizeof folder)) std::printf("library folder: %s\n", folder);
  else std::printf("library folder: unknown\n");
  if (!HostSettings().path().empty()) std::printf("settings: %s\n", HostSettings().path().c_str());
  return 0;
}

}  // namespace

int RunCommand(const std::string& command, const std::vector<std::string>& arguments) {
  if (command != "info" && !(command == "import" && !arguments.empty())) {
    std::fprintf(stderr, "vexhost: unknown command %s\n", command.c_str());
    return 2;
  }
  Library library;
  std::string error;
  if (!library.Load(error)) {
    std::fprintf(stderr, "vexhost: %s\n", error.c_str());
    return 1;
  }
  LibraryApi api{};
  const char* missing = nullptr;
  if (!api.Bind(library, &missing)) {
    std::fprintf(stderr, "vexhost: the library has no entry %s\n", missing);
    return 1;
  }
  std::printf("library: %s\n", library.path().c_str());
  api.VexSetDisplayCallback(ShowOnConsole, nullptr);
  api.InitVexTools();
  const int status = command == "info"
                         ? Info(api)
                         : ImportFile(library, arguments[0].c_str(), arguments.size() > 1 ? arguments[1].c_str() : "\t");
  api.CloseVexTools();
  return status;
}

}  // namespace vexhost
