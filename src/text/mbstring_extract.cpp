// Extraction of characters from a code-page string.
#include "text/mbcs_core.h"
#include "vextools/mbstring.h"
#include "vextools/strings.h"

using vex::text::CharNextMB;
using vex::text::CharValueAt;

namespace {

// Mode 0: count characters from character number first; written without a terminator into a buffer
// the caller has zeroed (the destination size is not consulted).
void ExtractFrom(const char* source, char* destination, std::int32_t first, std::int32_t count) {
  const char* p = source;
  for (std::int32_t number = 1; number < first && *p; ++number) p = CharNextMB(p);
  char* out = destination;
  for (std::int32_t written = 0; written < count && *p; ++written, p = CharNextMB(p)) {
    const std::uint16_t c = CharValueAt(p);
    if (VexSetCharValue(out, c)) out += c >= 256 && (c & 0xFF) ? 2 : 1;
  }
}

// Mode 1: the count rightmost characters.
bool ExtractRight(const char* source, char* destination, std::int32_t size, std::int32_t count) {
  if (size <= count) return false;
  const std::int32_t total = VexNbChar(source);
  const char* p = source;
  for (std::int32_t skip = total - count; skip > 0 && *p; --skip) p = CharNextMB(p);
  StringCopy(destination, p, size);
  return true;
}

}  // namespace

int VexExtractString(const char* source, char* destination, std::int32_t destination_size, int mode,
                     std::int32_t first, std::int32_t count) {
  if (!source || !destination || destination_size == 0) return 0;
  destination[0] = '\0';
  if (count == 0) return 1;
  if (!*source) return 0;
  switch (mode) {
    case 0:
      ExtractFrom(source, destination, first, count);
      return 1;
    case 1:
      return ExtractRight(source, destination, destination_size, count) ? 1 : 0;
    default:
      return 0;
  }
}
