// Text forms of structure members: how scalars are written and read back.
#pragma once

#include <cstdint>
#include <string>

namespace vex::text {

// "%lf" of value, trimmed: every '0' after the point goes, the text is cut at the first one that went,
// and a trailing point is dropped (2.5 -> "2.5", 3.0 -> "3", 1.05 -> "1").
std::string RealText(double value);
void TrimRealText(std::string& text);

// atol with a 32-bit long: leading white space, a sign, digits; saturates like the C runtime.
std::int32_t TextToLong(const std::string& text);
// atof: leading white space, a sign, a decimal or exponent form, inf, nan; 0 when nothing matches.
double TextToReal(const std::string& text);

// Each TAB, LF and CR replaced by the two characters \t, \n, \r.
std::string EscapeLineBreaks(const std::string& text);

}  // namespace vex::text
