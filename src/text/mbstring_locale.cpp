// Locale mapping, comparison and case conversion of code-page text through the platform.
#include <cstring>
#include <memory>
#include <new>

#include "platform/codepage.h"
#include "text/mbcs_core.h"
#include "vextools/mbstring.h"

namespace {

constexpr std::uint32_t kNoAccentsFlag = 64;
constexpr std::uint32_t kIgnoreAccentsFlag = 4;

bool IsJapanese() { return vex::text::Multibyte().code_page == 932; }

}  // namespace

std::int32_t VexTransformString(const char* source, std::int32_t source_length, char* destination,
                                std::int32_t destination_size, std::uint32_t flags) {
  if (source_length == 0) source_length = -1;
  std::uint32_t effective = flags & 0xFF;
  if (IsJapanese()) effective &= ~kNoAccentsFlag;
  if (effective == 0) {
    if (!source || !destination) return -1;
    if (source_length >= 0) {
      // Kept: the destination size, not the source length, is the byte count of the copy.
      if (destination_size < 0) return -1;
      std::memmove(destination, source, static_cast<std::size_t>(destination_size));
      return static_cast<std::int32_t>(strnlen(destination, static_cast<std::size_t>(destination_size)));
    }
    std::memmove(destination, source, std::strlen(source) + 1);
    return static_cast<std::int32_t>(std::strlen(destination));
  }
  return vex::platform::MapString(effective, source, source_length, destination, destination_size) - 1;
}

std::int32_t VexTransformString(const char* source, char* destination, std::int32_t destination_size,
                                std::uint32_t flags) {
  return VexTransformString(source, -1, destination, destination_size, flags);
}

std::int32_t VexTransformString(char* text, std::int32_t length, std::uint32_t flags) {
  if (!text) return -1;
  const std::int32_t size = length < 1 ? static_cast<std::int32_t>(std::strlen(text)) + 1 : length;
  std::unique_ptr<char[]> buffer(new (std::nothrow) char[static_cast<std::size_t>(size) + 1]());
  if (!buffer) return -1;
  const std::int32_t result = VexTransformString(text, length, buffer.get(), size, flags);
  if (result >= 0) std::memcpy(text, buffer.get(), static_cast<std::size_t>(size));
  return result;
}

std::int32_t VexSimplifyString(char* text, std::int32_t length) { return VexTransformString(text, length, 2); }

int VexStringCompare(const char* s1, const char* s2, std::int32_t length, std::uint32_t flags) {
  if (!s1 || !s2) return !s1 && !s2 ? 0 : !s1 ? -1 : 1;
  std::uint32_t options = flags & 0x3F;
  if (IsJapanese()) options &= ~kIgnoreAccentsFlag;
  // Kept: one length for both strings; a string shorter than it is read only up to its terminator.
  int length1 = -1, length2 = -1;
  if (length >= 0) {
    length1 = static_cast<int>(strnlen(s1, static_cast<std::size_t>(length)));
    length2 = static_cast<int>(strnlen(s2, static_cast<std::size_t>(length)));
  }
  return vex::platform::CompareStrings(options, s1, length1, s2, length2) - 2;
}

char* VexCharUpper(char* text, std::uint32_t length) {
  if (text) vex::platform::UpperCaseBuffer(text, length ? length : static_cast<std::uint32_t>(std::strlen(text)));
  return text;
}

char* VexCharLower(char* text, std::uint32_t length) {
  if (text) vex::platform::LowerCaseBuffer(text, length ? length : static_cast<std::uint32_t>(std::strlen(text)));
  return text;
}
