// Bytes as upper-case hexadecimal text and back.
#include <cstring>

#include "vextools/strings.h"

namespace {

void Encode(char* text, const unsigned char* bytes, std::size_t count) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  for (std::size_t i = 0; i < count; ++i) {
    text[2 * i] = kDigits[bytes[i] >> 4];
    text[2 * i + 1] = kDigits[bytes[i] & 0x0F];
  }
  text[2 * count] = '\0';
}

// Kept: anything but a decimal digit counts as an upper-case letter, so lower case does not decode.
unsigned DigitValue(char c) {
  return c >= '0' && c <= '9' ? static_cast<unsigned>(c - '0') : static_cast<unsigned>(c - 55);
}

std::size_t Decode(const char* text, unsigned char* bytes) {
  const std::size_t count = std::strlen(text) / 2;
  for (std::size_t i = 0; i < count; ++i) {
    bytes[i] = static_cast<unsigned char>(DigitValue(text[2 * i]) * 16 + DigitValue(text[2 * i + 1]));
  }
  bytes[count] = '\0';
  return count;
}

}  // namespace

int BinToString(char* text, const unsigned char* bytes) {
  if (!text || !bytes) return 0;
  Encode(text, bytes, std::strlen(reinterpret_cast<const char*>(bytes)));
  return 1;
}

int BinToStringExt(char* text, const unsigned char* bytes, std::int32_t count) {
  if (!text || !bytes) return 0;
  Encode(text, bytes, count > 0 ? static_cast<std::size_t>(count) : 0);
  return 1;
}

int StringToBin(const char* text, unsigned char* bytes) {
  if (!text || !bytes) return 0;
  Decode(text, bytes);
  return 1;
}

int StringToBinExt(const char* text, unsigned char* bytes, int* count) {
  if (!text || !bytes) return 0;
  const std::size_t decoded = Decode(text, bytes);
  if (count) *count = static_cast<int>(decoded);
  return 1;
}
