// The multibyte state of the active code page and the character steps every text walker uses.
#pragma once

#include <cstdint>

namespace vex::text {

struct MultibyteTables {
  std::uint32_t lead_bytes[256];  // nonzero for a lead byte of the active code page
  std::uint32_t dbcs;             // nonzero when any byte is a lead byte
  std::uint32_t code_page;        // the active ANSI code page
  // Search folding of VexFindString: single bytes, then the katakana and hiragana of code page 932.
  std::uint16_t fold[256];
  std::uint16_t fold_katakana[0x8396 - 0x8340 + 1];
  std::uint16_t fold_hiragana[0x82F2 - 0x829F + 1];
};

const MultibyteTables& Multibyte();

// Fills the tables from the platform; later calls do nothing.
void InitMultibyteTables();

// Reads the platform's code page again and rebuilds the tables (test and fuzz hooks; on POSIX after
// VEXTOOLS_ACP was changed). Not for use while other threads read the tables.
void ReinitMultibyteTables();

inline bool IsLeadByte(unsigned char byte) { return Multibyte().lead_bytes[byte] != 0; }

// A lead byte followed by a valid second byte (0x31..0xFE, not 0x7F).
inline bool IsDoubleByteAt(const char* p) {
  if (!p || !*p || !IsLeadByte(static_cast<unsigned char>(*p))) return false;
  const unsigned char second = static_cast<unsigned char>(p[1]);
  return second >= 0x31 && second <= 0xFE && second != 0x7F;
}

// The next character; never steps past the terminator.
inline const char* CharNextMB(const char* p) {
  if (!p || !*p) return p;
  return p + (IsDoubleByteAt(p) ? 2 : 1);
}

// The character code at p: lead byte * 256 + the next byte (not range-checked), else the byte; 0 at
// the end or for null.
inline std::uint16_t CharValueAt(const char* p) {
  if (!p || !*p) return 0;
  const unsigned char first = static_cast<unsigned char>(*p);
  if (IsLeadByte(first)) return static_cast<std::uint16_t>(first * 256 + static_cast<unsigned char>(p[1]));
  return first;
}

// The first byte of a character code (the code itself below 256, else its high byte).
inline unsigned FirstByteOf(std::uint16_t c) { return c < 256 ? c : static_cast<unsigned>(c >> 8); }

// True when c's first byte could also be a second byte, so that a search must walk by characters.
inline bool MayBeSecondByte(std::uint16_t c) {
  if (!Multibyte().dbcs) return false;
  const unsigned first = FirstByteOf(c);
  return first >= 0x40 && first <= 0xFC && first != 0x7F;
}

}  // namespace vex::text
