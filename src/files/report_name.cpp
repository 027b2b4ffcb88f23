#include "files/report_name.h"

#include "text/mbcs_core.h"

namespace vex::files {

std::string ReplaceExtension(const char* input, const char* extension) {
  const char* component = input;
  for (const char* p = input; *p; p = vex::text::CharNextMB(p)) {
    if (*p == kReportPathSeparator) component = p;
  }
  const char* cut = component;
  while (*cut && *cut != '.') cut = vex::text::CharNextMB(cut);
  return std::string(input, cut) + extension;
}

}  // namespace vex::files
