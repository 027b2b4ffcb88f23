// Angles and hexadecimal text from arbitrary bytes.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "vextools/strings.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<char> text(data, data + size);
  text.push_back('\0');
  for (int longitude : {0, 1}) {
    std::vector<char> copy = text;  // the text after the seconds is changed in place
    int ok = 0;
    StringToDecimalDegrees(copy.data(), longitude, &ok);
  }
  std::vector<unsigned char> bytes(size / 2 + 1);
  int count = 0;
  StringToBin(text.data(), bytes.data());
  StringToBinExt(text.data(), bytes.data(), &count);
  std::vector<char> hex(2 * size + 1);
  BinToString(hex.data(), reinterpret_cast<const unsigned char*>(text.data()));
  BinToStringExt(hex.data(), data, static_cast<std::int32_t>(size));
  return 0;
}
