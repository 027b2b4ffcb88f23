// The growable heap buffers of the text file (line copy, field index): raw storage that grows in steps
// of 100 bytes and keeps its contents.
#pragma once

#include <cstdint>
#include <cstring>
#include <new>

namespace vex::files {

constexpr std::int32_t kGrowStep = 100;

template <class Buffer>
void InitGrowBuffer(Buffer& buffer) {
  buffer.data = nullptr;
  buffer.capacity = 0;
  buffer.length = 0;
  buffer.owns = 1;
}

template <class Buffer>
bool ReserveGrowBuffer(Buffer& buffer, std::int32_t bytes) {
  if (bytes <= buffer.capacity) return true;
  if (bytes < 0 || bytes > INT32_MAX - kGrowStep) return false;
  const std::int32_t capacity = (bytes + kGrowStep - 1) / kGrowStep * kGrowStep;
  auto* data = static_cast<char*>(::operator new(static_cast<std::size_t>(capacity), std::nothrow));
  if (!data) return false;
  if (buffer.data && buffer.capacity > 0) std::memcpy(data, buffer.data, static_cast<std::size_t>(buffer.capacity));
  if (buffer.owns) ::operator delete(buffer.data);
  buffer.data = data;
  buffer.capacity = capacity;
  buffer.owns = 1;
  return true;
}

template <class Buffer>
void FreeGrowBuffer(Buffer& buffer) {
  if (buffer.owns) ::operator delete(buffer.data);
  InitGrowBuffer(buffer);
}

}  // namespace vex::files
