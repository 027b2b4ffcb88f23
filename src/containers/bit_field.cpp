// BITFIELD: a fixed-range set of bits.
#include <cstdlib>
#include <cstring>

#include "vextools/bitfield.h"

namespace {

std::int64_t WordCount(std::int32_t n) {
  return std::int64_t(n / 32) + 1;
}

// n / 32 * 4 + 4 bytes, truncated to 16 bits (kept).
std::size_t FillBytes(std::int32_t n) {
  return static_cast<std::uint16_t>(n / 32 * 4 + 4);
}

}  // namespace

BITFIELD::BITFIELD(std::int32_t n) : valid_(0), range_(0), words_(nullptr) {
  SetRange(n);
}

BITFIELD::~BITFIELD() {
  std::free(words_);
}

int BITFIELD::SetRange(std::int32_t n) {
  if (n == range_) return 0;
  std::free(words_);
  words_ = nullptr;
  valid_ = 0;
  if (n == 0) {
    range_ = 0;
    return 1;
  }
  const std::int64_t count = WordCount(n);
  if (count < 1) return 0;
  words_ = static_cast<std::uint32_t*>(std::calloc(static_cast<std::size_t>(count), sizeof(std::uint32_t)));
  if (!words_) return 0;
  range_ = n;
  valid_ = 1;
  return 1;
}

int BITFIELD::operator[](std::int32_t i) {
  if (!valid_ || i < 0 || i >= range_) return 0;
  return (words_[i / 32] >> (i % 32)) & 1u;
}

void BITFIELD::SetValue(std::int32_t i, int on) {
  if (!valid_ || i < 0 || i >= range_) return;
  const std::uint32_t bit = 1u << (i % 32);
  if (on) words_[i / 32] |= bit;
  else words_[i / 32] &= ~bit;
}

void BITFIELD::SetValue(int on) {
  if (!valid_) return;
  std::memset(words_, on ? 0xFF : 0, FillBytes(range_));
}

int BITFIELD::IsOneSet() {
  if (!valid_) return 0;
  const std::int64_t count = WordCount(range_);
  for (std::int64_t w = 0; w < count; ++w) {
    if (words_[w]) return 1;
  }
  return 0;
}

std::int32_t BITFIELD::GetSize() {
  return valid_ ? range_ / 32 * 4 + 8 : 0;
}

void BITFIELD::Copy(std::int32_t n, std::int32_t* words) {
  SetRange(n);
  if (!valid_) return;
  std::memset(words_, 0, static_cast<std::size_t>(WordCount(range_)) * sizeof(std::uint32_t));
  if (words) std::memcpy(words_, words, FillBytes(range_));
}
