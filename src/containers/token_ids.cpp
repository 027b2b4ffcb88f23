// Token identifiers. An address does not fit in 32 bits on every build, so a token's identifier is a
// slot of one process-wide table: slot number + 1, resolved without a search. Freed slots are reused.
#include <mutex>
#include <new>
#include <vector>

#include "containers/token_link.h"

namespace vex::containers {
namespace {

struct TokenTable {
  std::mutex lock;
  std::vector<VEXTOKENLINK*> slots;
  std::vector<std::int32_t> free_ids;
};

TokenTable& Table() {
  static TokenTable* table = new TokenTable;  // never destroyed: lists may die during process exit
  return *table;
}

}  // namespace

std::int32_t AcquireTokenId(VEXTOKENLINK* link) {
  TokenTable& table = Table();
  std::lock_guard<std::mutex> guard(table.lock);
  if (!table.free_ids.empty()) {
    const std::int32_t id = table.free_ids.back();
    table.free_ids.pop_back();
    table.slots[static_cast<std::size_t>(id) - 1] = link;
    return id;
  }
  if (table.slots.size() >= 0x7FFFFFFFu) return 0;
  try {
    table.slots.push_back(link);
    table.free_ids.reserve(table.slots.capacity());  // so that a release never needs memory
  } catch (const std::bad_alloc&) {
    if (!table.slots.empty() && table.slots.back() == link) table.slots.pop_back();
    return 0;
  }
  return static_cast<std::int32_t>(table.slots.size());
}

void ReleaseTokenId(std::int32_t id) {
  TokenTable& table = Table();
  std::lock_guard<std::mutex> guard(table.lock);
  if (id < 1 || static_cast<std::size_t>(id) > table.slots.size()) return;
  table.slots[static_cast<std::size_t>(id) - 1] = nullptr;
  table.free_ids.push_back(id);
}

VEXTOKENLINK* FindTokenLink(std::int32_t id) {
  TokenTable& table = Table();
  std::lock_guard<std::mutex> guard(table.lock);
  if (id < 1 || static_cast<std::size_t>(id) > table.slots.size()) return nullptr;
  return table.slots[static_cast<std::size_t>(id) - 1];
}

}  // namespace vex::containers
