// The order of texts in a TEXTLIST: StringCompare with option 1 (case-sensitive, locale-aware).
#pragma once

namespace vex::containers {

// Negative, zero or positive as a sorts before, equal to or after b.
int CompareListTexts(const char* a, const char* b);

}  // namespace vex::containers
