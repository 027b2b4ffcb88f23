#include "containers/text_order.h"

#include "vextools/strings.h"

namespace vex::containers {

int CompareListTexts(const char* a, const char* b) {
  return StringCompare(a, b, 1);
}

}  // namespace vex::containers
