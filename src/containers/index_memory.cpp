// VEXINDEXMEM: the allocator of the records a general index allocates itself.
#include <cstdlib>

#include "vextools/generalindex.h"

VEXINDEXMEM::VEXINDEXMEM() = default;

VEXINDEXMEM::~VEXINDEXMEM() = default;

char* VEXINDEXMEM::AllocPtr(std::int32_t size) {
  if (size < 1) return nullptr;
  return static_cast<char*>(std::malloc(static_cast<std::size_t>(size)));
}

void VEXINDEXMEM::FreePtr(char* pointer) {
  std::free(pointer);
}
