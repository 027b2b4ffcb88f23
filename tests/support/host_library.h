#pragma once

namespace vex::test {

// Loads the test host library that stands for the host module; true when it is loaded.
bool LoadPartialHost();

}  // namespace vex::test
