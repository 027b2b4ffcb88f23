// VEXTOKENLIST::Set on arbitrary bytes, through both forms; the image must round-trip through Get.
#include <cstdint>
#include <cstring>
#include <vector>

#include "vextools/tokenlist.h"
#include "vextools/types.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 1 << 20) return 0;
  std::vector<char> bytes(data, data + size);
  VEXTOKENLIST list;
  const std::int32_t used = list.Set(static_cast<std::int32_t>(size), bytes.data());
  if (used > static_cast<std::int32_t>(size)) __builtin_trap();
  if (used > 0) {
    std::vector<char> image(static_cast<std::size_t>(list.GetSize()));
    list.Get(static_cast<std::int32_t>(image.size()), image.data());
    VEXTOKENLIST again;
    if (again.Set(static_cast<std::int32_t>(image.size()), image.data()) != list.GetSize()) __builtin_trap();
  }

  // The handle form with a size that claims more (or, negative, everything): the block bounds it.
  HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, size);
  if (!block) return 0;
  if (size) {
    std::memcpy(GlobalLock(block), data, size);
    GlobalUnlock(block);
  }
  const std::int32_t claimed = size && (data[0] & 1) ? -1 : static_cast<std::int32_t>(size) + 1000;
  list.Set(claimed, block);
  for (std::int32_t id = list.GetFirstToken(0); id; id = list.GetNextToken(id, 0)) {
    std::int32_t type;
    std::uint16_t length;
    void* token;
    list.GetTokenInfo(id, type, length, token);
    list.RetrieveToken(type, token, length);
  }
  GlobalFree(block);
  return 0;
}
