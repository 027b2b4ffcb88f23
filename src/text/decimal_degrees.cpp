// An angle in degrees, minutes and seconds, in decimal degrees.
#include <cstdlib>
#include <cstring>

#include "text/mbcs_core.h"
#include "vextools/mbstring.h"
#include "vextools/strings.h"

namespace {

struct Sign {
  char* at;            // null when not found
  std::size_t length;  // bytes of the sign
};

// The plain sign byte; with double-byte support also the alternatives, in this order.
Sign FindSign(char* from, char plain, unsigned char alternative_byte, const char* double_byte) {
  if (char* found = std::strchr(from, plain)) return {found, 1};
  if (!vex::text::Multibyte().dbcs) return {nullptr, 0};
  if (char* found = VexStrChr(from, static_cast<unsigned char>(plain))) return {found, 1};
  if (alternative_byte) {
    if (char* found = VexStrChr(from, alternative_byte)) return {found, 1};
  }
  if (char* found = VexStrStr(from, double_byte)) return {found, 2};
  return {nullptr, 0};
}

bool WithinSixty(double value) { return value > -60.0 && value < 60.0; }

double Add(double value, double part, bool negative) { return negative ? value - part : value + part; }

// The hemisphere letter after the seconds: W and S turn a positive value negative; a letter on a
// negative text is a contradiction.
double ApplyHemisphere(char* rest, double value, bool negative, int longitude, int& ok) {
  while (*rest == ' ' || *rest == '\t') ++rest;
  if (!*rest) return value;
  const char letter = *rest;
  VexCharUpper(rest, 0);  // kept: the caller's text is changed, after the letter was taken
  const bool known = longitude ? (letter == 'E' || letter == 'W') : (letter == 'N' || letter == 'S');
  if (known && negative) ok = 0;
  if ((letter == 'W' && longitude) || (letter == 'S' && !longitude)) {
    if (value > 0) value = -value;
  }
  return value;
}

}  // namespace

double StringToDecimalDegrees(char* text, int longitude, int* ok_out) {
  int ok = text ? 1 : 0;
  double result = 0.0;
  if (text) {
    const double degrees = std::atof(text);
    const bool negative = degrees < 0;  // kept: a negative zero loses its sign
    result = degrees;
    const Sign degree = FindSign(text, '\xB0', 0xDF, "\x81\x8B");
    if (degree.at) {
      char* after = degree.at + degree.length;
      const double minutes = std::atof(after);
      if (!WithinSixty(minutes)) {
        ok = 0;
      } else {
        result = Add(result, minutes / 60.0, negative);
        const Sign minute = FindSign(after, '\'', 0, "\x81\x8C");
        if (minute.at) {
          after = minute.at + minute.length;
          const double seconds = std::atof(after);
          if (!WithinSixty(seconds)) {
            ok = 0;
          } else {
            result = Add(result, seconds / 3600.0, negative);
            const Sign second = FindSign(after, '"', 0, "\x81\x8D");
            if (second.at) result = ApplyHemisphere(second.at + second.length, result, negative, longitude, ok);
          }
        }
      }
    }
  }
  if (ok_out) *ok_out = ok;
  return result;
}
