// LZWCompressMemory / LZWDecompressMemory: a whole memory block in, a movable global memory block out.
#include <algorithm>
#include <cstring>
#include <limits>

#include "text/lzw_coder.h"
#include "text/lzw_state.h"
#include "vextools/lzw.h"

namespace vex::lzw {
namespace {

// The output block: allocated on the first byte, grown geometrically, kept locked once. After a failed
// allocation every further byte is dropped and the input is no longer read.
class BlockSink {
 public:
  explicit BlockSink(std::size_t initialSize) : initialSize_(initialSize) {}
  BlockSink(const BlockSink&) = delete;
  BlockSink& operator=(const BlockSink&) = delete;

  void Put(std::uint8_t byte) {
    if (position_ == capacity_ && !Grow(1)) return;
    data_[position_++] = byte;
  }

  void PutRun(const std::uint8_t* bytes, int count) {
    const auto n = static_cast<std::size_t>(count);
    if (capacity_ - position_ < n && !Grow(n)) return;
    std::memcpy(data_ + position_, bytes, n);
    position_ += n;
  }

  // Direct access for the decoder: write at data() up to capacity(), then SetSize.
  std::uint8_t* data() const { return data_; }
  std::size_t capacity() const { return capacity_; }
  void SetSize(std::size_t size) { position_ = size; }
  bool Reserve(std::size_t n) { return capacity_ - position_ >= n || Grow(n); }

  bool ok() const { return ok_; }
  std::size_t size() const { return position_; }
  HGLOBAL handle() const { return handle_; }

  void Release() {
    if (handle_) GlobalFree(handle_);
    handle_ = nullptr;
    data_ = nullptr;
    capacity_ = position_ = 0;
  }

 private:
  static constexpr std::size_t kLimit = std::numeric_limits<std::uint32_t>::max();

  bool Grow(std::size_t needed) {
    if (!ok_) return false;
    if (!handle_) {
      handle_ = GlobalAlloc(GHND, initialSize_);
      if (!handle_) return Fail();
      Relock();
      if (capacity_ - position_ >= needed) return true;
    }
    if (needed > kLimit - position_) return Fail();
    const std::size_t want = position_ + needed;
    std::size_t size = std::max(want, capacity_ + std::max<std::size_t>(1024, capacity_ / 2));
    size = std::min(size, kLimit);
    if (data_) GlobalUnlock(handle_);
    data_ = nullptr;
    HGLOBAL grown = GlobalReAlloc(handle_, size, GMEM_MOVEABLE | GMEM_ZEROINIT);
    if (!grown && size > want) grown = GlobalReAlloc(handle_, want, GMEM_MOVEABLE | GMEM_ZEROINIT);
    if (!grown) return Fail();
    handle_ = grown;
    Relock();
    return capacity_ - position_ >= needed || Fail();
  }

  void Relock() {
    data_ = static_cast<std::uint8_t*>(GlobalLock(handle_));
    capacity_ = data_ ? GlobalSize(handle_) : 0;  // a movable block of 0 bytes has no memory yet
  }

  bool Fail() {
    ok_ = false;
    return false;
  }

  std::size_t initialSize_;
  HGLOBAL handle_ = nullptr;
  std::uint8_t* data_ = nullptr;
  std::size_t capacity_ = 0;
  std::size_t position_ = 0;
  bool ok_ = true;
};

class BlockSource {
 public:
  BlockSource(const LZWMEMBLOCK& block, const BlockSink& sink)
      : data_(reinterpret_cast<const std::uint8_t*>(block.lpIn)),
        end_(data_ ? data_ + block.dwInLength : nullptr),
        sink_(sink) {}

  int Next() {
    if (data_ == end_ || !sink_.ok()) return -1;
    return *data_++;
  }

 private:
  const std::uint8_t* data_;
  const std::uint8_t* end_;
  const BlockSink& sink_;
};

// The decoder over a whole block. While a dictionary generation starts with a literal (always, in a
// stream an encoder wrote), every entry's string is a stretch of the output already written: the
// prefix's string followed by the next byte. Entries are then copied from the output, without walking
// their chains; the dictionary still gets every entry (without the encoder's links, never used here) in
// case a later generation does not start with a literal and is decoded entry by entry as in UNLZW.
void DecodeBlock(State& s, const std::uint8_t* input, std::uint64_t inputSize, BlockSink& out) {
  constexpr std::size_t kSlack = 16;  // short strings are copied as one 16-byte block
  BlockCodeReader in(input, inputSize);
  std::size_t offset[kEntries];  // where an entry's string was written
  std::uint16_t length[kEntries];
  ResetDictionary(s);
  s.firstCall = 0;
  int w = in.Read(s);
  while (w >= 0) {
    // A generation starts: its first code is written as a byte.
    out.Put(static_cast<std::uint8_t>(w));
    if (!out.ok()) return;
    if (w >= kLiterals) {  // only a corrupt stream: entry by entry until the next reset
      while (s.count < kDecoderReset) {
        const int c = in.Read(s);
        if (c < 0 || !DecodeCode(s, w, c, out) || !out.ok()) return;
      }
      ResetDictionary(s);
      w = in.Read(s);
      continue;
    }
    std::uint8_t* data = out.data();
    std::size_t position = out.size();
    std::size_t capacity = out.capacity();
    std::size_t wStart = position - 1;  // the prefix's string: the last thing written
    std::size_t wLength = 1;
    int count = s.count;
    int mask = s.mask;
    for (;;) {
      const int c = in.Read(mask);
      if (c < 0 || c > count || (c == count && wLength >= kDecodeBuffer)) {
        out.SetSize(position);
        return;
      }
      const std::size_t n = c < kLiterals ? 1 : c < count ? length[c] : wLength + 1;
      if (capacity - position < n + kSlack) {
        out.SetSize(position);
        if (!out.Reserve(n + kSlack)) return;
        data = out.data();
        capacity = out.capacity();
      }
      if (c < kLiterals) {
        data[position] = static_cast<std::uint8_t>(c);
      } else {
        const std::size_t from = c < count ? offset[c] : wStart;
        if (n <= kSlack) {  // the bytes past n are rewritten later
          std::uint8_t chunk[kSlack];
          std::memcpy(chunk, data + from, kSlack);
          std::memcpy(data + position, chunk, kSlack);
        } else {
          std::memcpy(data + position, data + from, c < count ? n : n - 1);
        }
        if (c == count) data[position + n - 1] = data[wStart];  // its own first byte
      }
      Entry& entry = s.dictionary[count];
      entry.prefix = static_cast<std::int16_t>(w);
      entry.character = data[position];
      offset[count] = wStart;
      length[count] = static_cast<std::uint16_t>(wLength + 1);
      ++count;
      if (count - 255 > mask - 1) mask *= 2;
      w = c;
      wStart = position;
      wLength = n;
      position += n;
      if (count >= kDecoderReset) break;
    }
    out.SetSize(position);
    ResetDictionary(s);
    w = in.Read(s);
  }
}

std::int32_t Finish(LZWMEMBLOCK& block, BlockSink& sink) {
  if (sink.ok()) {
    block.dwOutLength = static_cast<std::uint32_t>(sink.size());
    block.hOut = reinterpret_cast<std::intptr_t>(sink.handle());
    return 1;
  }
  // Kept: the caller's own output field is what gets freed here.
  if (block.hOut) GlobalFree(reinterpret_cast<HGLOBAL>(block.hOut));
  sink.Release();
  return 0;
}

}  // namespace
}  // namespace vex::lzw

using namespace vex::lzw;

std::int32_t LZWCompressMemory(LZWMEMBLOCK* block) {
  if (!block) return 0;
  HGLOBAL handle = CreateState(nullptr, nullptr, LZW_MODE_COMPRESS, 0);
  if (!handle) return 0;
  State* s = LockState(handle);
  if (!s) {
    GlobalFree(handle);
    return 0;
  }
  BlockSink out(block->dwInLength / 2);
  BlockSource in(*block, out);
  Encode(*s, in, out);
  FinishEncode(*s, out);
  GlobalUnlock(handle);
  GlobalFree(handle);
  return Finish(*block, out);
}

std::int32_t LZWDecompressMemory(LZWMEMBLOCK* block) {
  if (!block) return 0;
  HGLOBAL handle = CreateState(nullptr, nullptr, LZW_MODE_DECOMPRESS, 0);
  if (!handle) return 0;
  State* s = LockState(handle);
  if (!s) {
    GlobalFree(handle);
    return 0;
  }
  const std::uint64_t initial = std::uint64_t(block->dwInLength) * 2;
  BlockSink out(static_cast<std::size_t>(std::min<std::uint64_t>(initial, std::numeric_limits<std::size_t>::max())));
  DecodeBlock(*s, reinterpret_cast<const std::uint8_t*>(block->lpIn), block->dwInLength, out);  // deliberately unchecked: a corrupt stream gives what was decoded before it
  GlobalUnlock(handle);
  GlobalFree(handle);
  return Finish(*block, out);
}
