// Character searches that never match the second half of a double-byte character. Where no such
// confusion is possible they use the standard library's byte searches.
#include <cstring>

#include "text/mbcs_core.h"
#include "vextools/mbstring.h"

using vex::text::CharNextMB;
using vex::text::CharValueAt;
using vex::text::IsDoubleByteAt;
using vex::text::MayBeSecondByte;
using vex::text::Multibyte;

namespace {

// A code above 256 is matched as its low byte then its high byte (kept: the reverse of how it is
// read and written elsewhere); a smaller one as its low byte alone.
bool MatchesAt(const char* p, std::uint16_t c) {
  const char low = static_cast<char>(c & 0xFF);
  if (c > 256) return p[0] == low && p[1] == static_cast<char>(c >> 8);
  return p[0] == low;
}

// The first character-aligned position of text where the characters of pattern follow, equal after
// fold. An empty pattern never matches.
template <typename Fold>
const char* SearchByCharacters(const char* text, const char* pattern, Fold fold) {
  if (!*pattern) return nullptr;
  const std::uint16_t first = fold(CharValueAt(pattern));
  for (const char* start = text; *start; start = CharNextMB(start)) {
    if (fold(CharValueAt(start)) != first) continue;
    const char* h = CharNextMB(start);
    const char* n = CharNextMB(pattern);
    while (*n && *h && fold(CharValueAt(h)) == fold(CharValueAt(n))) {
      h = CharNextMB(h);
      n = CharNextMB(n);
    }
    if (!*n) return start;
    if (!*h) return nullptr;  // the text ran out: no later start can hold the pattern
  }
  return nullptr;
}

bool NeedleIsCharacterWise(const char* needle) {
  for (const char* p = needle; *p; p = CharNextMB(p)) {
    const unsigned char first = static_cast<unsigned char>(*p);
    if (first < 0x40 || first > 0xFC || first == 0x7F) return false;
  }
  return true;
}

std::uint16_t FoldForSearch(std::uint16_t c) {
  const auto& tables = Multibyte();
  if (c < 256) return tables.fold[c];
  if (tables.code_page != 932) return c;
  if (c >= 0x8281 && c <= 0x829A) return static_cast<std::uint16_t>(c - 33);  // full-width a..z
  if (c >= 0x8340 && c <= 0x8396) return tables.fold_katakana[c - 0x8340];
  if (c >= 0x829F && c <= 0x82F2) return tables.fold_hiragana[c - 0x829F];
  return c;
}

}  // namespace

char* VexStrChr(const char* text, std::uint16_t c) {
  if (!text) return nullptr;
  if (!MayBeSecondByte(c)) return const_cast<char*>(std::strchr(text, c));
  if (!VexIsValidChar(c)) return nullptr;
  for (const char* p = text; *p; p = CharNextMB(p)) {
    if (MatchesAt(p, c)) return const_cast<char*>(p);
  }
  return nullptr;
}

char* VexStrChr(const char* buffer, std::uint16_t c, std::int32_t count) {
  if (!buffer) return nullptr;
  if (count < 1) return VexStrChr(buffer, c);
  if (!MayBeSecondByte(c)) return static_cast<char*>(const_cast<void*>(std::memchr(buffer, c & 0xFF, count)));
  if (!VexIsValidChar(c)) return nullptr;
  const std::int32_t last = c > 256 ? count - 2 : count - 1;
  for (std::int32_t offset = 0; offset <= last;) {
    if (MatchesAt(buffer + offset, c)) return const_cast<char*>(buffer + offset);
    offset += IsDoubleByteAt(buffer + offset) ? 2 : 1;  // a NUL in the buffer is stepped over too
  }
  return nullptr;
}

char* VexStrRChr(const char* text, std::uint16_t c) {
  if (!text) return nullptr;
  if (!MayBeSecondByte(c)) return const_cast<char*>(std::strrchr(text, c));
  if (!VexIsValidChar(c)) return nullptr;
  // The historical walk did not step past a match and so never ended once the character was found;
  // it now goes on to the end and returns the last match.
  const char* found = nullptr;
  for (const char* p = text; *p; p = CharNextMB(p)) {
    if (MatchesAt(p, c)) found = p;
  }
  return const_cast<char*>(found);
}

char* VexStrStr(const char* haystack, const char* needle) {
  if (!haystack || !needle) return nullptr;
  if (!Multibyte().dbcs || !NeedleIsCharacterWise(needle)) return const_cast<char*>(std::strstr(haystack, needle));
  return const_cast<char*>(SearchByCharacters(haystack, needle, [](std::uint16_t c) { return c; }));
}

char* VexStrStrC(const char* haystack, const char* needle) { return VexStrStr(haystack, needle); }

char* VexFindString(const char* text, const char* pattern) {
  if (!text || !pattern || !*text) return nullptr;
  return const_cast<char*>(SearchByCharacters(text, pattern, FoldForSearch));
}
