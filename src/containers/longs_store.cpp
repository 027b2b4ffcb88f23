// LongsStore_: a growable array of 32-bit values behind an opaque handle.
#include <cstdlib>
#include <cstring>

#include "vextools/bitfield.h"

namespace {

struct LongsStore {
  std::uint32_t count;
  std::int32_t* values;
  std::int32_t step;
};

LongsStore* AsStore(void* store) {
  return static_cast<LongsStore*>(store);
}

}  // namespace

void* LongsStore_Create(std::int32_t step) {
  auto* store = static_cast<LongsStore*>(std::calloc(1, sizeof(LongsStore)));
  if (store) store->step = step < 1 ? 100 : step;
  return store;
}

int LongsStore_Destroy(void* handle) {
  LongsStore* store = AsStore(handle);
  if (!store) return 0;
  std::free(store->values);
  std::free(store);
  return 1;
}

std::uint32_t LongsStore_Count(void* handle) {
  const LongsStore* store = AsStore(handle);
  return store ? store->count : 0;
}

int LongsStore_Add(void* handle, std::int32_t value) {
  LongsStore* store = AsStore(handle);
  if (!store) return 0;
  if (store->count % static_cast<std::uint32_t>(store->step) == 0) {
    const std::uint64_t bytes = (std::uint64_t(store->count) + std::uint64_t(store->step)) * 4;
    if (bytes > 0xFFFFFFFFu) return 0;
    void* grown = std::realloc(store->values, static_cast<std::size_t>(bytes));
    if (!grown) return 0;
    store->values = static_cast<std::int32_t*>(grown);
  }
  store->values[store->count++] = value;
  return 1;
}

int LongsStore_Remove(void* handle, std::uint32_t position) {
  LongsStore* store = AsStore(handle);
  if (!store || position == 0 || position > store->count) return 0;
  std::memmove(store->values + position - 1, store->values + position,
               (store->count - position) * sizeof(std::int32_t));
  --store->count;  // the block never shrinks
  return 1;
}

int LongsStore_Get(void* handle, std::uint32_t position, std::int32_t* value) {
  const LongsStore* store = AsStore(handle);
  if (!store || !value || position == 0 || position > store->count) return 0;
  *value = store->values[position - 1];
  return 1;
}

int LongsStore_Set(void* handle, std::uint32_t position, std::int32_t value) {
  LongsStore* store = AsStore(handle);
  if (!store || position == 0 || position > store->count) return 0;
  store->values[position - 1] = value;
  return 1;
}
