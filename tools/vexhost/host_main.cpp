// The host's main: options, then one command against the library loaded at run time.
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "host_commands.h"
#include "host_export.h"
#include "host_settings.h"

namespace {

int Usage() {
  std::fprintf(stderr,
               "usage: vexhost [--settings FILE] [command]\n"
               "commands:\n"
               "  info                       start the library, show what it found of this host (default)\n"
               "  import FILE [SEPARATOR]    read a delimited text file (tab-separated unless given), report\n"
               "                             lines with the wrong number of fields into FILE's .ERR report\n");
  return 2;
}

}  // namespace

VEXHOST_EXPORT int VexHostMain(int argc, char** argv) {
  std::string settings, command;
  std::vector<std::string> arguments;
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--settings") == 0 && i + 1 < argc) settings = argv[++i];
    else if (argv[i][0] == '-' && argv[i][1] != '\0') return Usage();
    else if (command.empty()) command = argv[i];
    else arguments.emplace_back(argv[i]);
  }
  if (command.empty()) command = "info";
  if (!settings.empty() && !vexhost::HostSettings().Load(settings)) {
    std::fprintf(stderr, "vexhost: cannot read settings %s\n", settings.c_str());
    return 1;
  }
  return vexhost::RunCommand(command, arguments);
}
