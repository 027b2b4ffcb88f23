// GTFILE: block reads and writes, seeking and formatted output.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

#include "vextools/streamfile.h"

// Kept: the count copied is not reported; callers use ftell.
std::int32_t GTFILE::Read(void* buffer, std::int32_t size) {
  if (feof() || !buffer || size < 0) return 0;
  if (GetUnreadCacheSize() == 0) UpdateCache(ftell());
  auto* out = static_cast<char*>(buffer);
  while (GetUnreadCacheSize() > 0 && size != 0) {
    const std::int32_t count = std::min(GetUnreadCacheSize(), size);
    std::memcpy(out, GetUnreadCachePointer(), static_cast<std::size_t>(count));
    out += count;
    readPosition_ += count;
    size -= count;
    if (size != 0) UpdateCache(ftell());
  }
  return 0;
}

// The test for keeping the cache cannot hold (the offset cannot be both at or after the position and a
// whole cache before it), so a write always empties the cache after what it wrote. Callers rely on it.
std::int32_t GTFILE::Write(const void* buffer, std::int32_t size) {
  const std::int32_t position = ftell();
  if (file_.SeekFromBegin(position) < 0) return 0;  // never write at an unknown place
  const std::int32_t written = file_.Write(buffer, size);
  fileLength_ = static_cast<std::int32_t>(file_.GetLength());
  if (!IsCacheEmpty() && cacheOffset_ >= position && cacheOffset_ + cacheSize_ < position)
    CopyToCache(position, buffer, written);
  else
    SetCacheOffset(position + written);
  return written;
}

// Kept: origin 2 subtracts the offset from the length, so a positive offset moves back from the end.
// The binary file is only moved by the next refill.
int GTFILE::fseek(std::int32_t offset, int origin) {
  std::int32_t target;
  switch (origin) {
    case 0: target = offset; break;
    case 1: target = ftell() + offset; break;
    case 2: target = FileLength() - offset; break;
    default: target = -1; break;
  }
  if (!IsCacheEmpty() && cacheOffset_ >= target && cacheOffset_ + cacheSize_ < target)
    SeekInCache(target - cacheOffset_, 0);
  else
    SetCacheOffset(target);
  return GetLastError();
}

int GTFILE::fputs(const char* text, std::int32_t length) {
  if (!IsOpen()) {
    SetLastError(GTFILE_ERR_NOT_OPEN);
    return 0;
  }
  if (length == 0 && text) length = static_cast<std::int32_t>(std::strlen(text));
  if (length == 0) {
    SetLastError(GTFILE_ERR_EMPTY_TEXT);
    return 0;
  }
  if (Write(text, length) == 0) {
    SetLastError(GTFILE_ERR_WRITE);
    return 0;
  }
  return 1;
}

std::int32_t GTFILE::fprintf(const char* format, ...) {
  va_list args;
  va_start(args, format);
  const std::int32_t result = vfprintf(format, args);
  va_end(args);
  return result;
}

// Formats into the cache, whose read data is lost (Write empties it anyway). A text that does not fit
// the cache is formatted into a block of its own rather than past the cache's end.
std::int32_t GTFILE::vfprintf(const char* format, va_list args) {
  char* buffer = GetCachePointer();
  if (!IsOpen() || !buffer) return 0;
  if (!format) {
    SetLastError(GTFILE_ERR_FORMAT);
    return 0;
  }
  va_list again;
  va_copy(again, args);
  const int count = std::vsnprintf(buffer, static_cast<std::size_t>(cacheSize_), format, args);
  std::vector<char> large;
  if (count >= cacheSize_) {
    large.resize(static_cast<std::size_t>(count) + 1);
    std::vsnprintf(large.data(), large.size(), format, again);
    buffer = large.data();
  }
  va_end(again);
  if (count <= 0) {
    SetLastError(GTFILE_ERR_FORMAT);
    return 0;
  }
  if (Write(buffer, count) == 0) {
    SetLastError(GTFILE_ERR_WRITE);
    return 0;
  }
  return count;
}
