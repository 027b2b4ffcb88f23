#include <cstdlib>
#include <cstring>
#include <memory>

#include "vextools/frame.h"

namespace {

// A tracking build installs its tracker here; this one never does.
struct AllocationTracker {
  virtual ~AllocationTracker() = default;
};

AllocationTracker* g_tracker = nullptr;
void* g_scratch = nullptr;  // reserved for the tracker
constexpr std::size_t kScratchSize = 1024;

}  // namespace

void* VexAllocPtrInternal(const char*, std::int32_t, std::int32_t size, std::int32_t flags) {
  if (size < 1) return nullptr;
  void* block = std::malloc(static_cast<std::size_t>(size));
  if (block && (flags & VEXALLOC_ZERO)) std::memset(block, 0, static_cast<std::size_t>(size));
  return block;
}

void* VexReallocPtrInternal(const char* file, std::int32_t line, void* block, std::int32_t size, std::int32_t flags) {
  if (!block) return VexAllocPtrInternal(file, line, size, flags);
  if (size < 1) {
    VexFreePtrInternal(file, line, block);
    return nullptr;
  }
  return std::realloc(block, static_cast<std::size_t>(size));  // the zero flag does not reach the new tail
}

void VexFreePtrInternal(const char*, std::int32_t, void* block) { std::free(block); }

void VexInitAlloc() {
  g_tracker = nullptr;
  std::free(g_scratch);  // a second start must not leak the first block
  g_scratch = std::malloc(kScratchSize);
}

void VexCloseAlloc() {
  delete g_tracker;
  g_tracker = nullptr;
  std::free(g_scratch);
  g_scratch = nullptr;
}

void HugeMemCopy(char* destination, char* source, std::int32_t count) {
  if (count > 0 && destination && source) std::memmove(destination, source, static_cast<std::size_t>(count));
}
