#pragma once

#include <string>

namespace vexhost {

// Loads the library, starts it, runs the command, stops it. The process exit code.
int RunCommand(const std::string& command, int argc, char** argv);

}  // namespace vexhost
