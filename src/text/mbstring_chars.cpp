// Character tests, stepping and counting in the active code page.
#include <cctype>
#include <cstddef>

#include "platform/codepage.h"
#include "text/mbcs_core.h"
#include "vextools/mbstring.h"

using vex::text::CharNextMB;
using vex::text::IsDoubleByteAt;
using vex::text::IsLeadByte;
using vex::text::Multibyte;

std::uint32_t VexIsDBCSEnabled() { return Multibyte().dbcs; }

const std::uint32_t* VexGetTabBLeadByte() { return Multibyte().lead_bytes; }

int VexIsValidChar(std::uint16_t c) {
  if (c < 256) return IsLeadByte(static_cast<unsigned char>(c)) ? 0 : 1;
  return IsLeadByte(static_cast<unsigned char>(c >> 8)) ? 1 : 0;
}

int VexIsSpaceChar(std::uint16_t c) {
  if (c < 256) return std::isspace(c) ? 1 : 0;
  // The wide-character space test, spelled out so that it does not depend on the C library's locale.
  const bool space = c == 0x1680 || (c >= 0x2000 && c <= 0x200A) || c == 0x2028 || c == 0x2029 || c == 0x205F ||
                     c == 0x3000;
  return space ? 1 : 0;
}

int VexSetCharValue(char* destination, std::uint16_t c) {
  if (!destination || !VexIsValidChar(c)) return 0;
  if (c < 256) {
    destination[0] = static_cast<char>(c);
    return 1;
  }
  destination[0] = static_cast<char>(c >> 8);
  if (c & 0xFF) destination[1] = static_cast<char>(c & 0xFF);
  return 1;
}

char* VexCharPrev(const char* start, const char* current) {
  if (!start || !current) return nullptr;
  if (!Multibyte().dbcs) return const_cast<char*>(current == start ? current : current - 1);
  const std::ptrdiff_t offset = current - start;  // positions are handled as offsets from start
  if (offset <= 1) return const_cast<char*>(start);
  const unsigned char last = static_cast<unsigned char>(current[-1]);
  if (IsLeadByte(last)) return const_cast<char*>(current - 2);  // kept: not checked against start
  if (last < 0x40 || last > 0xFC || last == 0x7F) return const_cast<char*>(current - 1);
  std::ptrdiff_t stop = offset - 2;
  while (stop >= 0 && IsLeadByte(static_cast<unsigned char>(start[stop]))) --stop;
  // An odd run of lead bytes before the last byte makes it the second half of a pair.
  return const_cast<char*>(current - 1 - (offset - stop) % 2);
}

std::int32_t VexNbChar(const char* text) {
  if (!text) return 0;
  std::int32_t count = 0;
  for (const char* p = text; *p; p = CharNextMB(p)) ++count;
  return count;
}

std::int32_t VexNbChar2NbBytes(const char* text, std::int32_t characters) {
  if (!Multibyte().dbcs) return characters;
  if (!text || characters < 1) return 0;
  std::int32_t bytes = 0;
  const char* p = text;
  for (std::int32_t step = 0; step < characters; ++step) {
    if (!*p) return bytes + (characters - step);  // kept: steps on the terminator count 1 each
    bytes += IsDoubleByteAt(p) ? 2 : 1;
    p = CharNextMB(p);
  }
  return bytes;
}

std::int32_t VexNbBytes2NbChar(const char* text, std::int32_t bytes) {
  if (!text || bytes < 1) return 0;
  std::int32_t count = 0;
  for (std::int32_t offset = 0; offset < bytes; ++count) offset += IsDoubleByteAt(text + offset) ? 2 : 1;
  return count;
}

int VexIsImeRunning(HWND window) { return vex::platform::ImeCompositionLength(window) > 0 ? 1 : 0; }
