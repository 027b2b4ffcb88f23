#include <cstring>

#include "text/mbcs_core.h"
#include "vextools/strings.h"

char* StringCopy(char* destination, const char* source, std::int32_t size) {
  if (!destination || !source || size < 0) return nullptr;
  const std::size_t length = std::strlen(source);
  if (size == 0 || length <= static_cast<std::size_t>(size)) {  // whole, terminator included
    std::memmove(destination, source, length + 1);
    return destination;
  }
  // The source is longer than size, so no terminator comes before index size - 1.
  std::int32_t i = 0;
  while (i < size - 1) {
    if (vex::text::IsDoubleByteAt(source + i)) {
      if (i == size - 2) break;  // its second byte would not fit
      destination[i] = source[i];
      destination[i + 1] = source[i + 1];
      i += 2;
    } else {
      destination[i] = source[i];
      ++i;
    }
  }
  destination[i] = '\0';
  destination[size - 1] = '\0';
  return destination;
}

int StringConcat(char* destination, const char* source, std::int32_t size, std::int32_t flags) {
  if (!destination || !source) return 2;
  const std::size_t have = std::strlen(destination);
  const std::size_t add = std::strlen(source);
  if (size > 0 && have + add < static_cast<std::size_t>(size)) {
    std::memcpy(destination + have, source, add + 1);
    return 0;
  }
  if ((flags & 1) && size > 0 && static_cast<std::int64_t>(size) - static_cast<std::int64_t>(have) > 1) {
    StringCopy(destination + have, source, static_cast<std::int32_t>(size - static_cast<std::int32_t>(have)));
    return 1;
  }
  return 2;
}
