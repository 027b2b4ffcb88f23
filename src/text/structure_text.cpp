#include "text/structure_text.h"

#include <charconv>
#include <limits>
#include <system_error>

namespace vex::text {
namespace {

bool IsCSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

}  // namespace

std::string RealText(double value) {
  char buffer[400];  // the longest fixed form of a double with six decimals is about 317 characters
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 6);
  std::string text(buffer, result.ec == std::errc() ? result.ptr : buffer);
  TrimRealText(text);
  return text;
}

void TrimRealText(std::string& text) {
  const std::size_t point = text.find('.');
  if (point == std::string::npos) return;
  std::size_t cut = text.size();
  for (std::size_t i = text.size() - 1; i > point; --i) {
    if (text[i] == '0') cut = i;  // deliberately not stopping at other digits
  }
  text.resize(cut);
  if (!text.empty() && text.back() == '.') text.pop_back();
}

std::int32_t TextToLong(const std::string& text) {
  std::size_t i = 0;
  while (i < text.size() && IsCSpace(text[i])) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';
  std::int64_t value = 0;
  const std::int64_t limit = negative ? -std::int64_t(std::numeric_limits<std::int32_t>::min())
                                      : std::numeric_limits<std::int32_t>::max();
  for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
    value = value * 10 + (text[i] - '0');
    if (value > limit) value = limit;  // saturates, and stays small enough never to overflow
  }
  return static_cast<std::int32_t>(negative ? -value : value);
}

double TextToReal(const std::string& text) {
  const char* first = text.c_str();
  const char* last = first + text.size();
  while (first < last && IsCSpace(*first)) ++first;
  bool negative = false;
  if (first < last && (*first == '+' || *first == '-')) negative = *first++ == '-';
  if (first < last && (*first == '+' || *first == '-')) return 0.0;  // one sign only
  double value = 0.0;
  const auto result = std::from_chars(first, last, value, std::chars_format::general);
  if (result.ec == std::errc::result_out_of_range) {
    // Too large gives infinity, too small zero, as in the C runtime.
    const std::string matched(first, result.ptr);
    const std::size_t e = matched.find_first_of("eE");
    const bool tiny = e != std::string::npos && e + 1 < matched.size() && matched[e + 1] == '-';
    value = tiny ? 0.0 : std::numeric_limits<double>::infinity();
  } else if (result.ec != std::errc()) {
    value = 0.0;
  }
  return negative ? -value : value;
}

std::string EscapeLineBreaks(const std::string& text) {
  std::string out;
  out.reserve(text.size());
  for (char c : text) {
    switch (c) {
      case '\t': out += "\\t"; break;
      case '\n': out += "\\n"; break;
      case '\r': out += "\\r"; break;
      default: out += c;
    }
  }
  return out;
}

}  // namespace vex::text
