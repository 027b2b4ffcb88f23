// Report names made from arbitrary input names, in the active code page.
#include <cstddef>
#include <cstdint>
#include <string>

#include "files/report_name.h"
#include "vextools/errorfile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string input(reinterpret_cast<const char*>(data), size);
  input = input.c_str();  // up to the first NUL, as a caller's text
  const std::string name = vex::files::ReplaceExtension(input.c_str(), ".ERR");
  if (name.size() < 4 || name.compare(name.size() - 4, 4, ".ERR") != 0) __builtin_trap();
  KARERRORFILE report;  // naming only: the name is cleared again so the destructor never looks at the disk
  report.MakeFileName(input.data());
  report.MakeFileName(const_cast<char*>(""));
  return 0;
}
