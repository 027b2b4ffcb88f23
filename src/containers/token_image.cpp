// The byte image of a VEXTOKENLIST: a 40-byte header (length, count, version 1, 30 reserved bytes),
// then each token as type (4), size (2) and its data, little-endian.
#include <algorithm>
#include <cstring>

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

namespace {

// Copies what falls inside the first capacity bytes of the output.
void Emit(unsigned char* out, std::size_t capacity, std::size_t at, const unsigned char* bytes, std::size_t count) {
  if (at + count <= capacity) {
    std::memcpy(out + at, bytes, count);
  } else if (at < capacity) {
    std::memcpy(out + at, bytes, capacity - at);
  }
}

}  // namespace

// Writes the first capacity bytes of the image in one walk: the tokens, then the header with the final
// length. Returns the image size.
std::size_t VEXTOKENLIST::WriteImage(unsigned char* out, std::size_t capacity) {
  std::size_t position = kHeaderSize;
  for (const VEXTOKENLINK* link = first_; link; link = link->next) {
    unsigned char head[6];
    PutLE32(head, static_cast<std::uint32_t>(link->type));
    PutLE16(head + 4, link->size);
    Emit(out, capacity, position, head, 6);
    if (link->size) Emit(out, capacity, position + 6, link->data, link->size);
    position += 6u + link->size;
  }
  unsigned char header[kHeaderSize] = {};
  PutLE32(header, static_cast<std::uint32_t>(position));
  PutLE32(header + 4, static_cast<std::uint32_t>(count_));
  PutLE16(header + 8, kImageVersion);
  Emit(out, capacity, 0, header, kHeaderSize);
  return position;
}

std::int32_t VEXTOKENLIST::Get(std::int32_t size, void* handle) {
  if (!handle || size < kHeaderSize) return GetSize();
  auto* out = static_cast<unsigned char*>(GlobalLock(handle));
  if (!out) return GetSize();
  const std::size_t total = WriteImage(out, GlobalSize(handle));  // the block, not size, bounds the writing
  GlobalUnlock(handle);
  return static_cast<std::int32_t>(total);
}

std::int32_t VEXTOKENLIST::Get(std::int32_t size, char* buffer) {
  if (size < 0 || !buffer) return 0;
  if (size < kHeaderSize) {
    std::memset(buffer, 0, static_cast<std::size_t>(size));  // the untouched scratch block was blank
    return GetSize();
  }
  return static_cast<std::int32_t>(WriteImage(reinterpret_cast<unsigned char*>(buffer), static_cast<std::size_t>(size)));
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
