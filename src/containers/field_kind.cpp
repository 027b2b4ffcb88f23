// KVFieldKindInfo: the built-in kinds of field value of the general index.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "containers/byte_order.h"
#include "vextools/generalindex.h"

namespace {

int Sign(int value) {
  return (value > 0) - (value < 0);
}

// Missing values (shorter than the kind's size) come first; two missing values are equal.
bool CompareMissing(bool hasA, bool hasB, int* result) {
  if (hasA && hasB) return false;
  *result = int(hasA) - int(hasB);
  return true;
}

int CompareLongs(const char* a, std::int32_t lengthA, const char* b, std::int32_t lengthB) {
  int result;
  if (CompareMissing(a && lengthA >= 4, b && lengthB >= 4, &result)) return result;
  const auto x = static_cast<std::int32_t>(vex::containers::GetLE32(reinterpret_cast<const unsigned char*>(a)));
  const auto y = static_cast<std::int32_t>(vex::containers::GetLE32(reinterpret_cast<const unsigned char*>(b)));
  return (x > y) - (x < y);
}

double ReadDouble(const char* value) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(value);
  std::uint64_t bits = 0;
  for (int i = 7; i >= 0; --i) bits = bits << 8 | bytes[i];
  double result;
  std::memcpy(&result, &bits, sizeof result);
  return result;
}

// A total order: numbers by value, then every NaN, all NaNs equal.
int CompareDoubles(const char* a, std::int32_t lengthA, const char* b, std::int32_t lengthB) {
  int result;
  if (CompareMissing(a && lengthA >= 8, b && lengthB >= 8, &result)) return result;
  const double x = ReadDouble(a);
  const double y = ReadDouble(b);
  const bool nanX = std::isnan(x);
  const bool nanY = std::isnan(y);
  if (nanX || nanY) return int(nanX) - int(nanY);
  return (x > y) - (x < y);
}

std::size_t Extent(const char* value, std::int32_t length) {
  return value && length > 0 ? static_cast<std::size_t>(length) : 0;
}

int CompareBytes(const char* a, std::size_t lengthA, const char* b, std::size_t lengthB) {
  const std::size_t common = std::min(lengthA, lengthB);
  if (common) {
    if (const int order = std::memcmp(a, b, common)) return Sign(order);
  }
  return (lengthA > lengthB) - (lengthA < lengthB);
}

std::size_t TextLength(const char* value, std::size_t extent) {
  const void* nul = extent ? std::memchr(value, 0, extent) : nullptr;
  return nul ? static_cast<std::size_t>(static_cast<const char*>(nul) - value) : extent;
}

}  // namespace

KVFieldKindInfo::KVFieldKindInfo(std::int32_t kind) : kind_(kind) {}

KVFieldKindInfo::~KVFieldKindInfo() = default;

std::int32_t KVFieldKindInfo::GetKind() const {
  return kind_;
}

bool KVFieldKindInfo::IsCanSort() const {
  return kind_ >= KVFIELDKIND_LONG && kind_ <= KVFIELDKIND_BYTES;
}

std::int16_t KVFieldKindInfo::CompareValues(std::int32_t, const char* valueA, std::int32_t lengthA, std::int32_t,
                                            std::int32_t, const char* valueB, std::int32_t lengthB, std::int32_t,
                                            std::int32_t) const {
  const std::size_t extentA = Extent(valueA, lengthA);
  const std::size_t extentB = Extent(valueB, lengthB);
  switch (kind_) {
    case KVFIELDKIND_LONG:
      return static_cast<std::int16_t>(CompareLongs(valueA, lengthA, valueB, lengthB));
    case KVFIELDKIND_DOUBLE:
      return static_cast<std::int16_t>(CompareDoubles(valueA, lengthA, valueB, lengthB));
    case KVFIELDKIND_TEXT:
      return static_cast<std::int16_t>(
          CompareBytes(valueA, TextLength(valueA, extentA), valueB, TextLength(valueB, extentB)));
    case KVFIELDKIND_BYTES:
      return static_cast<std::int16_t>(CompareBytes(valueA, extentA, valueB, extentB));
    default:
      return 0;
  }
}
