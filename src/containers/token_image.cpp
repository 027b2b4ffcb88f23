// The byte image of a VEXTOKENLIST: a 40-byte header (length, count, version 1, 30 reserved bytes),
// then each token as type (4), size (2) and its data, little-endian.
#include <algorithm>
#include <cstring>
#include <vector>

#include "containers/byte_order.h"
#include "containers/token_link.h"
#include "vextools/tokenlist.h"
#include "vextools/types.h"

using vex::containers::GetLE16;
using vex::containers::GetLE32;
using vex::containers::PutLE16;
using vex::containers::PutLE32;

namespace {
constexpr std::uint16_t kImageVersion = 1;
}

std::int32_t VEXTOKENLIST::GetSize() {
  std::uint32_t size = kHeaderSize;
  for (const VEXTOKENLINK* link = first_; link; link = link->next) size += 6u + link->size;
  return static_cast<std::int32_t>(size);
}

// Writes the first capacity bytes of the image.
void VEXTOKENLIST::WriteImage(unsigned char* out, std::size_t capacity) {
  const std::size_t total = static_cast<std::uint32_t>(GetSize());
  std::vector<unsigned char> partial;
  unsigned char* image = out;
  if (capacity < total) {
    partial.resize(total);
    image = partial.data();
  }
  std::memset(image, 0, kHeaderSize);
  PutLE32(image, static_cast<std::uint32_t>(total));
  PutLE32(image + 4, static_cast<std::uint32_t>(count_));
  PutLE16(image + 8, kImageVersion);
  unsigned char* p = image + kHeaderSize;
  for (const VEXTOKENLINK* link = first_; link; link = link->next) {
    PutLE32(p, static_cast<std::uint32_t>(link->type));
    PutLE16(p + 4, link->size);
    if (link->size) std::memcpy(p + 6, link->data, link->size);
    p += 6 + link->size;
  }
  if (image != out) std::memcpy(out, image, capacity);
}

std::int32_t VEXTOKENLIST::Get(std::int32_t size, void* handle) {
  const std::int32_t total = GetSize();
  if (!handle || size < kHeaderSize) return total;
  auto* out = static_cast<unsigned char*>(GlobalLock(handle));
  if (!out) return total;
  WriteImage(out, GlobalSize(handle));  // the block, not the size argument, bounds the writing
  GlobalUnlock(handle);
  return total;
}

std::int32_t VEXTOKENLIST::Get(std::int32_t size, char* buffer) {
  if (size < 0 || !buffer) return 0;
  if (size < kHeaderSize) {
    std::memset(buffer, 0, static_cast<std::size_t>(size));  // the untouched scratch block was blank
    return GetSize();
  }
  WriteImage(reinterpret_cast<unsigned char*>(buffer), static_cast<std::size_t>(size));
  return GetSize();
}

// Reads tokens from an image of extent bytes (at least the header) into the emptied list.
std::int32_t VEXTOKENLIST::ReadImage(const unsigned char* image, std::uint32_t extent) {
  if (GetLE16(image + 8) != kImageVersion) return 0;
  const std::uint32_t count = GetLE32(image + 4);
  std::uint32_t position = kHeaderSize;
  for (std::uint32_t i = 0; i < count; ++i) {
    if (extent - position < 6) break;
    const std::uint16_t size = GetLE16(image + position + 4);
    if (extent - position - 6 < size) break;
    const auto type = static_cast<std::int32_t>(GetLE32(image + position));
    if (!AddToken(0, type, size, const_cast<unsigned char*>(image + position + 6))) break;
    position += 6u + size;
  }
  return static_cast<std::int32_t>(position);
}

std::int32_t VEXTOKENLIST::Set(std::int32_t size, void* handle) {
  if (!handle || (size >= 0 && size < kHeaderSize)) return 0;
  Reset();  // before the version is checked: an image of another version leaves the list empty
  const auto* image = static_cast<const unsigned char*>(GlobalLock(handle));
  if (!image) return 0;
  const std::size_t block = GlobalSize(handle);
  std::size_t extent = size < 0 ? block : std::min<std::size_t>(block, static_cast<std::size_t>(size));
  extent = std::min<std::size_t>(extent, 0xFFFFFFFFu);
  const std::int32_t result =
      extent < static_cast<std::size_t>(kHeaderSize) ? 0 : ReadImage(image, static_cast<std::uint32_t>(extent));
  GlobalUnlock(handle);
  return result;
}

std::int32_t VEXTOKENLIST::Set(std::int32_t size, char* buffer) {
  if (size < 1 || !buffer) return 0;
  if (size < kHeaderSize) return 0;
  Reset();
  return ReadImage(reinterpret_cast<const unsigned char*>(buffer), static_cast<std::uint32_t>(size));
}
