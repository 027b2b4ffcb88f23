// The multibyte walkers and searches on arbitrary bytes in code page 932.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "text/mbcs_core.h"
#include "vextools/mbstring.h"
#include "vextools/strings.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  setenv("VEXTOOLS_ACP", "932", 1);
  vex::text::ReinitMultibyteTables();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 4) return 0;
  const std::uint16_t c = static_cast<std::uint16_t>(data[0] | data[1] << 8);
  const std::uint32_t flags = data[2];
  const std::size_t split = size > 4 ? data[3] % (size - 4 + 1) : 0;
  data += 4;
  size -= 4;
  std::vector<char> text(data, data + size);
  text.push_back('\0');
  std::vector<char> pattern(data, data + split);
  pattern.push_back('\0');
  const char* s = text.data();
  const std::int32_t length = static_cast<std::int32_t>(std::strlen(s));

  VexNbChar(s);
  VexNbChar2NbBytes(s, length + 3);
  VexNbBytes2NbChar(s, length);
  for (const char* p = s; p <= s + length; ++p) {
    const char* previous = VexCharPrev(s, p);
    if (p > s + 1 && (previous < p - 2 || previous >= p)) __builtin_trap();
  }
  VexStrChr(s, c);
  VexStrRChr(s, c);
  VexStrChr(s, c, static_cast<std::int32_t>(size));
  VexStrStr(s, pattern.data());
  VexFindString(s, pattern.data());
  VexIsValidChar(c);
  VexIsSpaceChar(c);

  std::vector<char> out(2 * size + 8, '\0');
  VexExtractString(s, out.data(), static_cast<std::int32_t>(out.size()), 0, c & 0xFF, c >> 8);
  VexExtractString(s, out.data(), static_cast<std::int32_t>(out.size()), 1, 0, c & 0xFF);
  StringCopy(out.data(), s, static_cast<std::int32_t>(c % (out.size() + 1)));

  std::vector<char> mapped(4 * size + 16);
  VexTransformString(s, mapped.data(), static_cast<std::int32_t>(mapped.size()), flags);
  VexStringCompare(s, pattern.data(), -1, flags & 0x3F);
  std::vector<char> upper(text);
  VexCharUpper(upper.data(), static_cast<std::uint32_t>(size));
  StringUpper(upper.data());
  return 0;
}
