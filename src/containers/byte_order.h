// Little-endian reads and writes of the byte images, byte by byte.
#pragma once

#include <cstdint>

namespace vex::containers {

inline void PutLE16(unsigned char* out, std::uint16_t value) {
  out[0] = static_cast<unsigned char>(value);
  out[1] = static_cast<unsigned char>(value >> 8);
}

inline void PutLE32(unsigned char* out, std::uint32_t value) {
  for (int i = 0; i < 4; ++i) out[i] = static_cast<unsigned char>(value >> (8 * i));
}

inline std::uint16_t GetLE16(const unsigned char* in) {
  return static_cast<std::uint16_t>(in[0] | (in[1] << 8));
}

inline std::uint32_t GetLE32(const unsigned char* in) {
  return std::uint32_t(in[0]) | std::uint32_t(in[1]) << 8 | std::uint32_t(in[2]) << 16 | std::uint32_t(in[3]) << 24;
}

}  // namespace vex::containers
