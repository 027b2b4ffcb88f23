// The growth rule of XPQUEUE's cell array.
#pragma once

#include <cstdint>

namespace vex::containers {

// Cells of the array after growing by n: n + 1 for the first array; later the larger of
// ((capacity + 1) * 3) / 2 and capacity + n + 1 (the half only when strictly larger).
inline std::int64_t PQueueCellsAfterGrowth(bool hasArray, std::int32_t capacity, std::int32_t n) {
  if (!hasArray) return std::int64_t(n) + 1;
  const std::int64_t half = ((std::int64_t(capacity) + 1) * 3) / 2;
  const std::int64_t step = std::int64_t(capacity) + n + 1;
  return half > step ? half : step;
}

}  // namespace vex::containers
