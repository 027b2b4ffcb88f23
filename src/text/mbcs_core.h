// The multibyte state of the active code page and the character steps every text walker uses.
#pragma once

#include <cstdint>

namespace vex::text {

struct MultibyteTables {
  std::uint32_t lead_bytes[256];  // nonzero for a lead byte of the active code page
  std::uint32_t dbcs;             // nonzero when any byte is a lead byte
  std::uint32_t code_page;        // the active ANSI code page
};

const MultibyteTables& Multibyte();

// Fills the tables from the platform; later calls do nothing.
void InitMultibyteTables();

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

}  // namespace vex::text
