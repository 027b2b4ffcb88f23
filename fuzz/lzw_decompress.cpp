// LZWDecompressMemory on arbitrary bytes, and the streaming decoder over the same bytes in chunks that
// the input chooses: both must agree, stay in bounds and terminate. Valid streams (the input compressed
// in chunks) must round trip.
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "vextools/lzw.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

struct Stream {
  const std::uint8_t* data;
  std::size_t size;
  std::size_t position = 0;
  std::size_t stop = 0;
  Bytes output;

  static std::int16_t Read(std::intptr_t user) {
    auto* s = reinterpret_cast<Stream*>(user);
    if (s->position >= s->stop || s->position >= s->size) return -1;
    return s->data[s->position++];
  }
  static void Write(std::int16_t byte, std::intptr_t user) {
    reinterpret_cast<Stream*>(user)->output.push_back(static_cast<std::uint8_t>(byte));
  }
};

Bytes Memory(std::int32_t (*call)(LZWMEMBLOCK*), const std::uint8_t* data, std::size_t size) {
  LZWMEMBLOCK block{static_cast<std::uint32_t>(size), reinterpret_cast<std::intptr_t>(data), 0, 0};
  if (call(&block) != 1) std::abort();
  Bytes out;
  auto handle = reinterpret_cast<HGLOBAL>(block.hOut);
  if (handle) {
    auto* p = static_cast<const std::uint8_t*>(GlobalLock(handle));
    out.assign(p, p + block.dwOutLength);
    GlobalFree(handle);
  }
  return out;
}

// Runs the coder over data, ending a call at every step taken from steps (cycled).
Bytes Streamed(bool expand, const std::uint8_t* data, std::size_t size, const Bytes& steps) {
  Stream s{data, size, 0, 0, {}};
  HGLOBAL state = LZWInit(&Stream::Read, &Stream::Write, expand ? 1 : 0, reinterpret_cast<std::intptr_t>(&s));
  if (!state) std::abort();
  std::size_t k = 0;
  for (;;) {
    s.stop = s.position + (steps.empty() ? size : steps[k++ % steps.size()]);
    if (expand ? UNLZW(state) != 1 : LZW(state) != 1) break;
    if (s.position >= size) break;
  }
  if (expand) UNLZWTerm(state);
  else LZWTerm(state);
  return s.output;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // The first byte says how many chunk sizes follow; the rest is the stream.
  Bytes steps;
  std::size_t at = 0;
  if (size > 0) {
    const std::size_t n = data[0] % 8;
    at = 1;
    bool progress = false;
    for (; at <= n && at < size; ++at) {
      steps.push_back(data[at] % 16);
      progress = progress || steps.back() != 0;
    }
    if (!progress) steps.clear();  // empty calls only would never reach the end
  }
  const std::uint8_t* stream = data + at;
  const std::size_t length = size - at;

  const Bytes whole = Memory(LZWDecompressMemory, stream, length);
  if (Streamed(true, stream, length, steps) != whole) std::abort();

  const Bytes packed = Memory(LZWCompressMemory, stream, length);
  if (Streamed(false, stream, length, steps) != packed) std::abort();
  if (length > 0 && Memory(LZWDecompressMemory, packed.data(), packed.size()) != Bytes(stream, stream + length)) {
    std::abort();
  }
  return 0;
}
