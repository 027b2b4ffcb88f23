// 32-bit file-position arithmetic of the file classes. Positions and lengths are signed 32-bit values
// that callers may push past the limits; sums wrap as the 32-bit machine arithmetic they model does
// instead of being undefined.
#pragma once

#include <cstdint>

namespace vex::files {

inline std::int32_t AddWrap(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

inline std::int32_t SubWrap(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

}  // namespace vex::files
