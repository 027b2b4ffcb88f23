// The LZW encoder and decoder over any byte source and sink: the callback interface and the memory
// calls instantiate them with their own sources and sinks.
//
//   Source:     int Next()                      next byte 0-255, or -1 at the end
//   Sink:       void Put(std::uint8_t)          one output byte
//               void PutRun(const std::uint8_t*, int)
//   CodeReader: int Read(State&)                next code with the current mask, or -1 at the end
#pragma once

#include <cstdint>

#include "text/lzw_state.h"

namespace vex::lzw {

// Packs code fields most-significant bit first. Between calls the unfinished byte lives in the state
// as (output bit to set next, byte register).
class BitPacker {
 public:
  explicit BitPacker(const State& s) {
    std::uint32_t bit = s.bitMask;
    if (bit == 0 || bit > 0x80 || (bit & (bit - 1))) bit = 0x80;  // not an encoder's state: start clean
    while (bit < 0x80) {
      bit <<= 1;
      ++bits_;
    }
    acc_ = bits_ ? (static_cast<std::uint32_t>(s.byteRegister) & 0xFFu) >> (8 - bits_) : 0;
  }

  template <class Sink>
  void Emit(int code, int mask, Sink& out) {
    int width;
    std::uint32_t value;
    if (code > 255) {  // a reference: low bits of 255 - code
      width = ReferenceWidth(mask);
      value = static_cast<std::uint32_t>(255 - code) & ((1u << width) - 1);
    } else {  // a literal, and deliberately also the "no code" -1, which becomes nine 1-bits
      width = 9;
      value = static_cast<std::uint32_t>(code) & 0x1FFu;
    }
    acc_ = (acc_ << width) | value;
    bits_ += width;
    while (bits_ >= 8) {
      bits_ -= 8;
      out.Put(static_cast<std::uint8_t>(acc_ >> bits_));
    }
    acc_ &= (1u << bits_) - 1;
  }

  template <class Sink>
  void Flush(Sink& out) {
    if (bits_) out.Put(static_cast<std::uint8_t>(acc_ << (8 - bits_)));
    acc_ = 0;
    bits_ = 0;
  }

  void Store(State& s) const {
    s.bitMask = 0x80u >> bits_;
    s.byteRegister = static_cast<std::int32_t>((acc_ << (8 - bits_)) & 0xFFu);
  }

 private:
  std::uint32_t acc_ = 0;
  int bits_ = 0;  // bits waiting in acc_, always below 8 between fields
};

// One LZW call: compresses everything the source delivers, keeps the unfinished prefix pending.
template <class Source, class Sink>
void Encode(State& s, Source& in, Sink& out) {
  BitPacker packer(s);
  int w;
  if (s.firstCall) {
    s.firstCall = 0;
    w = in.Next();
    ResetDictionary(s);
  } else {
    w = s.pending;
    if (w < -1 || w >= kEntries) w = -1;
  }
  for (;;) {
    const int c = in.Next();
    if (c < 0) break;
    if (w < 0) {  // no prefix yet: this byte starts one
      w = c;
      continue;
    }
    const int code = Lookup(s, w, c);
    if (code >= 0) {
      w = code;
      continue;
    }
    packer.Emit(w, s.mask, out);
    AddEncoderEntry(s, w, c);
    w = c;
    if (s.count >= kEncoderReset) ResetDictionary(s);
  }
  s.pending = static_cast<std::int16_t>(w);
  packer.Store(s);
}

// LZWTerm's output: the pending code, then the partial byte.
template <class Sink>
void FinishEncode(State& s, Sink& out) {
  BitPacker packer(s);
  packer.Emit(s.pending, s.mask, out);
  packer.Flush(out);
  packer.Store(s);
}

// Writes the string of a code backwards into the decode buffer, ending at its end. Returns the offset of
// the first byte, or -1 when the string would not fit (only corrupt streams reach such chains). Sets
// clean when the chain used only entries below limit, whose strings the next add cannot change.
inline int Expand(State& s, int code, int limit, bool& clean) {
  int at = kDecodeBuffer;
  for (;;) {
    if (at == 0 || code < 0 || code >= kEntries) return -1;
    const Entry& entry = s.dictionary[code];
    s.decodeBuffer[--at] = static_cast<std::uint8_t>(entry.character);
    if (entry.prefix < 0) return at;
    if (code >= limit) clean = false;
    code = entry.prefix;
  }
}

// One UNLZW call: 1 at the end of the input, 0 at a corrupt code (the pending code then stays as it was).
template <class Reader, class Sink>
std::int16_t Decode(State& s, Reader& in, Sink& out) {
  int w;
  if (s.firstCall) {
    s.firstCall = 0;
    s.bitMask = 0;
    s.inputMask = 0;
    ResetDictionary(s);
    w = in.Read(s);
    if (w >= 0) out.Put(static_cast<std::uint8_t>(w));
  } else {
    w = s.pending;
    if (w == -1) {
      w = in.Read(s);
      if (w >= 0) out.Put(static_cast<std::uint8_t>(w));
    }
  }
  while (w >= 0) {
    const int c = in.Read(s);
    if (c < 0) break;
    const int count = s.count;
    if (c > count || w >= kEntries) return 0;
    bool clean = true;
    int at = Expand(s, c < count ? c : w, count, clean);
    if (at < 0) return 0;
    const std::uint8_t first = s.decodeBuffer[at];
    AddDecoderEntry(s, w, first);
    w = c;
    if (clean) {  // the add cannot have changed the string: c's is the one just expanded (plus first)
      if (c == count && at == 0) return 0;  // one byte longer than the decode buffer
      out.PutRun(s.decodeBuffer + at, kDecodeBuffer - at);
      if (c == count) out.Put(first);
    } else {  // expand again through the changed dictionary
      at = Expand(s, w, kEntries, clean);
      if (at < 0) return 0;
      out.PutRun(s.decodeBuffer + at, kDecodeBuffer - at);
    }
    if (s.count >= kDecoderReset) {
      ResetDictionary(s);
      w = in.Read(s);
      if (w >= 0) out.Put(static_cast<std::uint8_t>(w));
    }
  }
  s.pending = static_cast<std::int16_t>(w);
  return 1;
}

// Reads codes bit by bit through the state's registers, so that a code may straddle two UNLZW calls.
template <class Source>
class StreamCodeReader {
 public:
  explicit StreamCodeReader(Source& source) : source_(source) {}

  int Read(State& s) {
    if (s.bitMask == 0) {  // start a new code: its first bit tells literal from reference
      if (s.inputMask == 0 && !Fetch(s)) return -1;
      if (static_cast<std::uint32_t>(s.byteRegister) & s.inputMask) {
        s.literal = 0;
        s.bitMask = static_cast<std::uint32_t>(s.mask);  // the top bit is read again as the field's own
        s.accumulator = 0xFFFF;
      } else {
        s.literal = 1;
        s.bitMask = 0x80;
        s.accumulator = 0;
        s.inputMask >>= 1;
      }
    }
    while (s.bitMask) {
      if (s.inputMask == 0 && !Fetch(s)) return -1;
      if (static_cast<std::uint32_t>(s.byteRegister) & s.inputMask) {
        s.accumulator |= s.bitMask;
      } else if (!s.literal) {
        s.accumulator &= ~s.bitMask;
      }
      s.bitMask >>= 1;
      s.inputMask >>= 1;
    }
    if (s.literal) return static_cast<int>(s.accumulator & 0xFFFF);
    return static_cast<std::uint16_t>(0xFFu - s.accumulator);
  }

 private:
  bool Fetch(State& s) {
    const int byte = source_.Next();
    s.byteRegister = byte;
    if (byte < 0) return false;
    s.inputMask = 0x80;
    return true;
  }

  Source& source_;
};

// Reads codes straight from a whole input block. Equivalent to StreamCodeReader from a fresh state when
// the decoder runs once over the whole input.
class BlockCodeReader {
 public:
  BlockCodeReader(const std::uint8_t* data, std::uint64_t size) : data_(data), size_(data ? size : 0) {}

  int Read(State& s) {
    const std::uint64_t total = size_ * 8;
    if (bit_ >= total) return -1;
    const std::uint64_t byte = bit_ >> 3;
    std::uint32_t window = static_cast<std::uint32_t>(data_[byte]) << 16;
    if (byte + 1 < size_) window |= static_cast<std::uint32_t>(data_[byte + 1]) << 8;
    if (byte + 2 < size_) window |= data_[byte + 2];
    window <<= (bit_ & 7);  // the code's first bit is now bit 23
    const bool reference = window & 0x800000u;
    const int mask = s.mask;
    const int width = reference ? ReferenceWidth(mask) : 9;
    if (bit_ + static_cast<std::uint64_t>(width) > total) {
      bit_ = total;
      return -1;
    }
    bit_ += width;
    const std::uint32_t value = (window >> (24 - width)) & ((1u << width) - 1);
    if (!reference) return static_cast<int>(value);
    return 255 + 2 * mask - static_cast<int>(value);
  }

 private:
  const std::uint8_t* data_;
  std::uint64_t size_;
  std::uint64_t bit_ = 0;
};

}  // namespace vex::lzw
