#include "vextools/mbstring.h"
#include "vextools/strings.h"

int StringCompare(const char* a, const char* b, std::int32_t flags) {
  if (!a || !b) return 0;
  if (flags & 1) return VexStringCompare(a, b, -1, 0);
  if (flags & 2) return VexStringCompare(a, b, -1, 1);
  return 0;
}
