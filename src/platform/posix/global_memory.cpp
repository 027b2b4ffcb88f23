// Movable global memory. A movable block's handle is an address inside a reserved, inaccessible
// region, so it never equals a heap pointer and using it as one faults, as on Windows. A fixed block's
// handle is its pointer.
#include <sys/mman.h>

#include <cstdlib>
#include <cstring>
#include <mutex>
#include <unordered_map>
#include <vector>

#include "vextools/types.h"

namespace {

struct Block {
  void* data = nullptr;
  SIZE_T size = 0;
  UINT locks = 0;
  bool movable = false;
  bool discardable = false;
};

constexpr std::size_t kHandleSpace = std::size_t(1) << 26;  // 8 Mi handles of 8 bytes

class Table {
 public:
  std::mutex lock;

  Block* Find(HGLOBAL handle) {
    auto it = blocks_.find(handle);
    return it == blocks_.end() ? nullptr : &it->second;
  }

  HGLOBAL NewMovableHandle() {
    if (!free_.empty()) {
      HGLOBAL h = free_.back();
      free_.pop_back();
      return h;
    }
    if (!base_) {
      void* space = ::mmap(nullptr, kHandleSpace, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
      if (space == MAP_FAILED) return nullptr;
      base_ = static_cast<char*>(space);
    }
    if (next_ + 8 > kHandleSpace) return nullptr;
    HGLOBAL h = base_ + next_ + 4;  // never 8-aligned, like Windows handles of movable blocks
    next_ += 8;
    return h;
  }

  void Insert(HGLOBAL handle, const Block& block) { blocks_[handle] = block; }

  void Erase(HGLOBAL handle) {
    const bool movable = blocks_[handle].movable;
    blocks_.erase(handle);
    if (movable) free_.push_back(handle);
  }

  void Rekey(HGLOBAL from, HGLOBAL to) {
    Block block = blocks_[from];
    blocks_.erase(from);
    blocks_[to] = block;
  }

 private:
  std::unordered_map<HGLOBAL, Block> blocks_;
  std::vector<HGLOBAL> free_;
  char* base_ = nullptr;
  std::size_t next_ = 0;
};

Table& Blocks() {
  static Table* table = new Table;  // never destroyed: blocks may be freed during process exit
  return *table;
}

void* AllocateBytes(SIZE_T bytes, bool zero) {
  const SIZE_T n = bytes ? bytes : 1;
  return zero ? std::calloc(1, n) : std::malloc(n);
}

}  // namespace

HGLOBAL GlobalAlloc(UINT flags, SIZE_T bytes) {
  Table& table = Blocks();
  std::lock_guard<std::mutex> guard(table.lock);
  Block block;
  block.movable = flags & GMEM_MOVEABLE;
  block.discardable = flags & GMEM_DISCARDABLE;
  block.size = bytes;
  if (!(block.movable && bytes == 0)) {  // a movable block of 0 bytes starts discarded
    block.data = AllocateBytes(bytes, flags & GMEM_ZEROINIT);
    if (!block.data) return nullptr;
  }
  HGLOBAL handle = block.movable ? table.NewMovableHandle() : block.data;
  if (!handle) {
    std::free(block.data);
    return nullptr;
  }
  table.Insert(handle, block);
  return handle;
}

LPVOID GlobalLock(HGLOBAL mem) {
  Table& table = Blocks();
  std::lock_guard<std::mutex> guard(table.lock);
  Block* block = table.Find(mem);
  if (!block || !block->data) return nullptr;
  if (block->movable && block->locks < GMEM_LOCKCOUNT) ++block->locks;
  return block->data;
}

BOOL GlobalUnlock(HGLOBAL mem) {
  Table& table = Blocks();
  std::lock_guard<std::mutex> guard(table.lock);
  Block* block = table.Find(mem);
  if (!block || !block->movable || block->locks == 0) return FALSE;
  return --block->locks != 0;
}

SIZE_T GlobalSize(HGLOBAL mem) {
  Table& table = Blocks();
  std::lock_guard<std::mutex> guard(table.lock);
  Block* block = table.Find(mem);
  return block && block->data ? block->size : 0;
}

UINT GlobalFlags(HGLOBAL mem) {
  Table& table = Blocks();
  std::lock_guard<std::mutex> guard(table.lock);
  Block* block = table.Find(mem);
  if (!block) return GMEM_INVALID_HANDLE;
  return block->locks | (block->data ? 0u : GMEM_DISCARDED) | (block->discardable ? GMEM_DISCARDABLE : 0u);
}

HGLOBAL GlobalFree(HGLOBAL mem) {
  if (!mem) return nullptr;
  Table& table = Blocks();
  std::lock_guard<std::mutex> guard(table.lock);
  Block* block = table.Find(mem);
  if (!block) return mem;
  std::free(block->data);
  table.Erase(mem);
  return nullptr;
}

HGLOBAL GlobalReAlloc(HGLOBAL mem, SIZE_T bytes, UINT flags) {
  Table& table = Blocks();
  std::lock_guard<std::mutex> guard(table.lock);
  Block* block = table.Find(mem);
  if (!block) return nullptr;
  if (flags & GMEM_MODIFY) {
    block->discardable = flags & GMEM_DISCARDABLE;
    return mem;
  }
  if (block->movable && bytes == 0) {  // discards the contents, keeps the handle
    if (block->locks) return nullptr;
    std::free(block->data);
    block->data = nullptr;
    block->size = 0;
    return mem;
  }
  const SIZE_T old_size = block->data ? block->size : 0;
  if (!block->movable && !(flags & GMEM_MOVEABLE)) {  // a fixed block may not move: shrink in place only
    if (bytes > old_size) return nullptr;
    block->size = bytes;
    return mem;
  }
  void* data = std::realloc(block->data, bytes ? bytes : 1);
  if (!data) return nullptr;
  if ((flags & GMEM_ZEROINIT) && bytes > old_size) std::memset(static_cast<char*>(data) + old_size, 0, bytes - old_size);
  block->data = data;
  block->size = bytes;
  if (block->movable) return mem;
  if (data != mem) table.Rekey(mem, data);
  return data;
}
