// BuildFromString on arbitrary text; what it accepts must write out and, once normalised, read back to
// the same text.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "vextools/structures.h"

namespace {

void Touch(CStructure& structure) {
  for (std::uint32_t i = 0; i < structure.GetMembersCount(); ++i) {
    CMember* member = structure.ItemMember(i);
    std::string text;
    (void)member->Integer();
    (void)member->Real();
    (void)member->Boolean();
    (void)member->GetString(text);
    if (member->IsStructure()) Touch(member->Structure());
  }
  (void)structure.SearchStructure("A");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  CLstStructures list;
  if (!list.BuildFromString(text)) {
    if (list.GetCount() != 0) std::abort();
    return 0;
  }
  for (std::uint32_t i = 0; i < list.GetCount(); ++i) Touch(*list.Item(i));
  std::string once;
  list.MakeString(once);
  CLstStructures again;
  if (again.BuildFromString(once)) {
    std::string twice;
    again.MakeString(twice);
    if (twice != once) std::abort();
  }
  return 0;
}
