// Upper-casing without accents, and trimming a character.
#include <cstring>
#include <memory>
#include <new>

#include "text/mbcs_core.h"
#include "vextools/mbstring.h"
#include "vextools/strings.h"

namespace {

// The ANSI accented capitals C0..DC and their plain letters; 0 keeps the byte.
constexpr char kPlainCapitals[] = "AAAAAAACEEEEIIIIDNOOOOO\0\0UUUU";

unsigned char PlainCapital(unsigned char byte) {
  if (byte < 0xC0 || byte > 0xDC) return byte;
  const char plain = kPlainCapitals[byte - 0xC0];
  return plain ? static_cast<unsigned char>(plain) : byte;
}

// Upper case, no accents, half width, each step through the platform's mapping; a step that fails
// passes its input on unchanged.
void UpperDoubleByte(char* text) {
  const std::size_t length = std::strlen(text);
  const std::size_t size = 2 * length + 2;
  std::unique_ptr<char[]> from(new (std::nothrow) char[size]());
  std::unique_ptr<char[]> to(new (std::nothrow) char[size]());
  if (!from || !to) return;
  std::memcpy(from.get(), text, length + 1);
  for (std::uint32_t flags : {32u, 64u, 2u}) {
    if (VexTransformString(from.get(), to.get(), static_cast<std::int32_t>(size), flags) >= 0) from.swap(to);
  }
  if (std::strlen(from.get()) <= length) {
    std::memcpy(text, from.get(), std::strlen(from.get()) + 1);
  } else {
    StringCopy(text, from.get(), static_cast<std::int32_t>(length + 1));
  }
}

}  // namespace

void StringUpper(char* text) {
  if (!text) return;
  if (vex::text::Multibyte().dbcs) {
    UpperDoubleByte(text);
    return;
  }
  VexCharUpper(text, 0);
  for (char* p = text; *p; ++p) *p = static_cast<char>(PlainCapital(static_cast<unsigned char>(*p)));
}

int CharDelete(char* text, char c, int flags) {
  if (!text) return 0;
  if (flags & 1) {
    std::size_t run = 0;
    while (text[run] != '\0' && text[run] == c) ++run;
    if (run) std::memmove(text, text + run, std::strlen(text + run) + 1);
  }
  if (!(flags & 2)) return 0;
  std::size_t length = std::strlen(text);
  while (length > 0 && text[length - 1] == c) text[--length] = '\0';
  return static_cast<int>(length);
}
