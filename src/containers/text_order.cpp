#include "containers/text_order.h"

#include <cstring>

namespace vex::containers {

int CompareListTexts(const char* a, const char* b) {
  if (!a || !b) return 0;
  return std::strcmp(a, b);
}

}  // namespace vex::containers
