// The host's main: options, then one command against the library loaded at run time.
#include <cstdio>
#include <cstring>
#include <string>

#include "host_commands.h"
#include "host_export.h"
#include "host_settings.h"

namespace {

int Usage() {
  std::fprintf(stderr,
               "usage: vexhost [--settings FILE] [command]\n"
               "commands:\n"
               "  info   start the library, show what it found of this host, stop it (default)\n");
  return 2;
}

}  // namespace

VEXHOST_EXPORT int VexHostMain(int argc, char** argv) {
  std::string settings, command = "info";
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--settings") == 0 && i + 1 < argc) settings = argv[++i];
    else if (argv[i][0] == '-') return Usage();
    else command = argv[i];
  }
  if (!settings.empty() && !vexhost::HostSettings().Load(settings)) {
    std::fprintf(stderr, "vexhost: cannot read settings %s\n", settings.c_str());
    return 1;
  }
  return vexhost::RunCommand(command, argc, argv);
}
