// Character searches that never match the second half of a double-byte character. Where no such
// confusion is possible they use the standard library's byte searches.
#include <bitset>
#include <cstring>
#include <memory>

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

// The character at p: its code as CharValueAt reads it and its length as CharNextMB steps.
struct Character {
  std::uint16_t value;
  unsigned length;
};

template <bool kDoubleByte = true>
inline Character CharacterAt(const unsigned char* p, const std::uint32_t* lead) {
  const unsigned first = p[0];
  if (!kDoubleByte || !lead[first]) return {static_cast<std::uint16_t>(first), 1};
  const unsigned second = p[1];
  const bool pair = second >= 0x31 && second <= 0xFE && second != 0x7F;
  return {static_cast<std::uint16_t>(first << 8 | second), pair ? 2u : 1u};
}

// The first character-aligned position of text where the characters of pattern follow, equal after
// fold; the historical search restarted one character after a partial match, which finds the same
// position. An empty pattern never matches.
template <bool kDoubleByte, typename Fold>
const char* SearchByCharacters(const char* text, const char* pattern, Fold fold) {
  if (!*pattern) return nullptr;
  const std::uint32_t* lead = Multibyte().lead_bytes;
  const auto* needle = reinterpret_cast<const unsigned char*>(pattern);
  const Character head = CharacterAt<kDoubleByte>(needle, lead);
  const std::uint16_t first = fold(head.value);
  for (const auto* start = reinterpret_cast<const unsigned char*>(text); *start;) {
    const Character here = CharacterAt<kDoubleByte>(start, lead);
    if (fold(here.value) == first) {
      const unsigned char* h = start + here.length;
      const unsigned char* n = needle + head.length;
      while (*n && *h) {
        const Character hc = CharacterAt<kDoubleByte>(h, lead), nc = CharacterAt<kDoubleByte>(n, lead);
        if (fold(hc.value) != fold(nc.value)) break;
        h += hc.length;
        n += nc.length;
      }
      if (!*n) return reinterpret_cast<const char*>(start);
      if (!*h) return nullptr;  // the text ran out: no later start can hold the pattern
    }
    start += here.length;
  }
  return nullptr;
}

// Outcome of comparing the pattern at a character boundary.
enum class Match { kFound, kDiffers, kTextEnded };

template <typename Fold>
Match MatchesHere(const unsigned char* p, const unsigned char* pattern, const std::uint32_t* lead, Fold fold) {
  while (*pattern) {
    if (!*p) return Match::kTextEnded;
    const Character hc = CharacterAt(p, lead), nc = CharacterAt(pattern, lead);
    if (fold(hc.value) != fold(nc.value)) return Match::kDiffers;
    p += hc.length;
    pattern += nc.length;
  }
  return Match::kFound;
}

// The character-wise search on a double-byte code page, sped up: next_candidate finds the next byte
// that can begin a matching first character, and a candidate counts only on a character boundary.
// Boundaries are found by walking from the last known one, or from just after the nearest byte in
// 01..30 (never a second byte, so always a whole character). When a partial match runs into the end of
// the text no later start can match either.
template <typename Fold, typename NextCandidate>
const char* SearchDoubleByte(const char* text, const char* pattern, Fold fold, NextCandidate next_candidate) {
  if (!*pattern) return nullptr;
  const std::uint32_t* lead = Multibyte().lead_bytes;
  const auto* base = reinterpret_cast<const unsigned char*>(text);
  const auto* needle = reinterpret_cast<const unsigned char*>(pattern);
  const unsigned char* end = base + std::strlen(text);
  const unsigned char* boundary = base;
  for (const unsigned char* from = base; from < end;) {
    const unsigned char* candidate = next_candidate(from, end);
    if (!candidate) return nullptr;
    const unsigned char* p = candidate;
    while (p > boundary && (p[-1] > 0x30 || lead[p[-1]])) --p;
    while (p < candidate) p += CharacterAt(p, lead).length;
    boundary = p;
    if (p == candidate) {
      const Match match = MatchesHere(candidate, needle, lead, fold);
      if (match == Match::kFound) return reinterpret_cast<const char*>(candidate);
      if (match == Match::kTextEnded) return nullptr;
    }
    from = candidate + 1;
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
  const unsigned char first = static_cast<unsigned char>(needle[0]);
  return const_cast<char*>(SearchDoubleByte(
      haystack, needle, [](std::uint16_t c) { return c; },
      [first, needle](const unsigned char* from, const unsigned char* end) {
        const bool pair = vex::text::IsLeadByte(first);
        while (from < end) {
          const auto* found = static_cast<const unsigned char*>(std::memchr(from, first, static_cast<std::size_t>(end - from)));
          if (!found || !pair || found[1] == static_cast<unsigned char>(needle[1])) return found;
          from = found + 1;
        }
        return static_cast<const unsigned char*>(nullptr);
      }));
}

char* VexStrStrC(const char* haystack, const char* needle) { return VexStrStr(haystack, needle); }

char* VexFindString(const char* text, const char* pattern) {
  if (!text || !pattern || !*text) return nullptr;
  if (!Multibyte().dbcs) return const_cast<char*>(SearchByCharacters<false>(text, pattern, FoldForSearch));
  // Every code whose fold is the pattern's first character, as a bit set: single bytes by the table,
  // the first character itself when it folds to itself, and (932) the codes of the folded ranges.
  const std::uint16_t first = FoldForSearch(CharValueAt(pattern));
  auto folds_to_first = std::make_unique<std::bitset<65536>>();
  bool single_matches[256] = {};  // a single byte that folds to the first character
  bool lead_matches[256] = {};    // a lead byte of some code that does
  const auto mark = [&](std::uint16_t c) {
    if (FoldForSearch(c) != first) return;
    folds_to_first->set(c);
    (c < 256 ? single_matches[c] : lead_matches[c >> 8]) = true;
  };
  for (int byte = 1; byte < 256; ++byte) {
    if (!vex::text::IsLeadByte(static_cast<unsigned char>(byte))) mark(static_cast<std::uint16_t>(byte));
  }
  if (first >= 256) mark(first);
  if (Multibyte().code_page == 932) {
    for (std::uint16_t c = 0x8281; c <= 0x829A; ++c) mark(c);
    for (std::uint16_t c = 0x829F; c <= 0x82F2; ++c) mark(c);
    for (std::uint16_t c = 0x8340; c <= 0x8396; ++c) mark(c);
  }
  return const_cast<char*>(SearchDoubleByte(
      text, pattern, FoldForSearch, [&](const unsigned char* from, const unsigned char* end) {
        for (; from < end; ++from) {
          if (single_matches[*from]) return from;
          if (lead_matches[*from] && folds_to_first->test(static_cast<std::size_t>(from[0] << 8 | from[1]))) return from;
        }
        return static_cast<const unsigned char*>(nullptr);
      }));
}
