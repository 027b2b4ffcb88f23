// TEXTLIST::Decod of both formats on arbitrary bytes, through the buffer and the handle forms.
#include <cstdint>
#include <cstring>
#include <vector>

#include "vextools/textlist.h"
#include "vextools/types.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 1 << 20) return 0;
  TEXTLIST list;
  list.SetFlags(size && (data[0] & 1) ? VEXTLIST_UNIQUE : 0);

  // Format 1 reads exactly size bytes.
  std::vector<char> plain(data, data + size);
  list.Decod(plain.data(), static_cast<std::int32_t>(size), 1);
  std::vector<char> encoded(static_cast<std::size_t>(list.Encod(static_cast<char*>(nullptr), 1)) + 1);
  list.Encod(encoded.data(), 1);

  // Format 2 reads a 0-terminated text and gives it back unchanged.
  std::vector<char> quoted(data, data + size);
  quoted.push_back('\0');
  const std::vector<char> original = quoted;
  list.Decod(quoted.data(), 0, 2);
  if (quoted != original) __builtin_trap();
  std::vector<char> requoted(static_cast<std::size_t>(list.Encod(static_cast<char*>(nullptr), 2)) + 1);
  list.Encod(requoted.data(), 2);

  // The handle forms, on a block without a final 0 byte and a size that claims more.
  HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, size);
  if (!block) return 0;
  if (size) {
    std::memcpy(GlobalLock(block), data, size);
    GlobalUnlock(block);
  }
  list.Decod(block, static_cast<std::int32_t>(size) + 100, 1);
  list.Decod(block, 0, 2);
  GlobalFree(block);
  return 0;
}
