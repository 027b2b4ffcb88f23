#pragma once

#include <string>
#include <vector>

namespace vexhost {

// Loads the library, starts it, runs the command, stops it. The process exit code.
int RunCommand(const std::string& command, const std::vector<std::string>& arguments);

}  // namespace vexhost
