// The LZW encoder and decoder over any byte source and sink: the callback interface and the memory
// calls instantiate them with their own sources and sinks.
//
//   Source:     int Next()                      next byte 0-255, or -1 at the end
//   Sink:       void Put(std::uint8_t)          one output byte
//               void PutRun(const std::uint8_t*, int)
//   CodeReader: int Read(const State&)          next code with the current mask, or -1 at the end
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

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
  EncoderDictionary dictionary(s);
  for (;;) {
    const int c = in.Next();
    if (c < 0) break;
    if (w < 0) {  // no prefix yet: this byte starts one
      w = c;
      continue;
    }
    const int code = dictionary.Lookup(w, c);
    if (code >= 0) {
      w = code;
      continue;
    }
    packer.Emit(w, dictionary.mask(), out);
    dictionary.Add(w, c);
    w = c;
    if (dictionary.count() >= kEncoderReset) dictionary.Reset();
  }
  dictionary.Store();
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
// the first byte, or -1 when the string would not fit (only corrupt streams reach such chains). Clears
// clean when the chain passed an entry at or above limit, whose string the next add may change.
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

// One code c after the prefix w: writes c's string, adds (w, first byte of it)
// and makes c the prefix. False for a corrupt code; the dictionary may then have changed already.
template <class Sink>
bool DecodeCode(State& s, int& w, int c, Sink& out) {
  const int count = s.count;
  if (c > count || w >= kEntries) return false;
  bool clean = true;
  int at = Expand(s, c < count ? c : w, count, clean);
  if (at < 0) return false;
  const std::uint8_t first = s.decodeBuffer[at];
  AddDecoderEntry(s, w, first);
  w = c;
  if (clean) {  // the add cannot have changed the string: c's is the one just expanded (plus first)
    if (c == count && at == 0) return false;  // one byte longer than the decode buffer
    out.PutRun(s.decodeBuffer + at, kDecodeBuffer - at);
    if (c == count) out.Put(first);
  } else {  // expand again through the changed dictionary
    at = Expand(s, w, kEntries, clean);
    if (at < 0) return false;
    out.PutRun(s.decodeBuffer + at, kDecodeBuffer - at);
  }
  return true;
}

// One UNLZW call: 1 at the end of the input, 0 at a corrupt code (the pending code then stays as it was).
template <class Reader, class Sink>
std::int16_t Decode(State& s, Reader& in, Sink& out) {
  int w;
  if (s.firstCall) {
    s.firstCall = 0;
    in.Restart();
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
    if (!DecodeCode(s, w, c, out)) {
      in.Save(s);
      return 0;
    }
    if (s.count >= kDecoderReset) {
      ResetDictionary(s);
      w = in.Read(s);
      if (w >= 0) out.Put(static_cast<std::uint8_t>(w));
    }
  }
  in.Save(s);
  s.pending = static_cast<std::int16_t>(w);
  return 1;
}

// Reads codes from a byte source. Between calls a code may be under way: its registers (code bit to
// fill, accumulator, literal flag) and the unread bits of the last byte (input bit, byte register) live
// in the state; within a call, in locals.
template <class Source>
class StreamCodeReader {
 public:
  StreamCodeReader(Source& source, const State& s)
      : source_(source),
        codeMask_(s.bitMask),
        accumulator_(s.accumulator),
        byte_(s.byteRegister),
        literal_(s.literal != 0) {
    nbits_ = std::bit_width(s.inputMask & 0xFFu);
    bits_ = static_cast<std::uint32_t>(byte_) & ((1u << nbits_) - 1);
  }

  void Restart() { codeMask_ = nbits_ = 0; }

  void Save(State& s) const {
    s.bitMask = codeMask_;
    s.inputMask = nbits_ ? 1u << (nbits_ - 1) : 0;
    s.accumulator = accumulator_;
    s.byteRegister = byte_;
    s.literal = literal_ ? 1 : 0;
  }

  int Read(const State& s) {
    if (codeMask_) return Resume();
    if (nbits_ == 0 && !Fetch()) return -1;
    const bool reference = (bits_ >> (nbits_ - 1)) & 1;
    const int mask = s.mask;
    const int width = reference ? ReferenceWidth(mask) : 9;
    while (nbits_ < width) {
      if (!Fetch()) {
        Suspend(reference, mask, width);
        return -1;
      }
    }
    nbits_ -= width;
    const std::uint32_t value = (bits_ >> nbits_) & ((1u << width) - 1);
    bits_ &= (1u << nbits_) - 1;
    if (!reference) return static_cast<int>(value);
    return 255 + 2 * mask - static_cast<int>(value);
  }

 private:
  // Every buffered bit is part of the code: the source has no more, so keep the code as under way.
  void Suspend(bool reference, int mask, int width) {
    literal_ = !reference;
    if (reference) {  // the field's bits from the top, the rest still ones
      codeMask_ = static_cast<std::uint32_t>(mask) >> nbits_;
      const int shift = width - nbits_;
      accumulator_ = (0xFFFFu & ~(((1u << nbits_) - 1) << shift)) | (bits_ << shift);
    } else {  // the 0 flag bit consumed, then the byte's bits from the top
      const int got = nbits_ - 1;
      codeMask_ = 0x80u >> got;
      accumulator_ = (bits_ & ((1u << got) - 1)) << (8 - got);
    }
    nbits_ = 0;
    bits_ = 0;
  }

  // Finishes a code begun in an earlier call.
  int Resume() {
    while (codeMask_) {
      if (nbits_ == 0 && !Fetch()) return -1;
      const int need = std::bit_width(codeMask_);
      const int take = nbits_ < need ? nbits_ : need;
      nbits_ -= take;
      const std::uint32_t chunk = (bits_ >> nbits_) & ((1u << take) - 1);
      bits_ &= (1u << nbits_) - 1;
      const int shift = need - take;
      if (literal_) {
        accumulator_ |= chunk << shift;
      } else {  // a reference also clears its 0 bits, the accumulator having started as all ones
        accumulator_ = (accumulator_ & ~(((1u << take) - 1) << shift)) | (chunk << shift);
      }
      codeMask_ >>= take;
    }
    if (literal_) return static_cast<int>(accumulator_ & 0xFFFF);
    return static_cast<std::uint16_t>(0xFFu - accumulator_);
  }

  bool Fetch() {
    byte_ = source_.Next();
    if (byte_ < 0) return false;
    bits_ = (bits_ << 8) | static_cast<std::uint32_t>(byte_);
    nbits_ += 8;
    return true;
  }

  Source& source_;
  std::uint32_t codeMask_;
  std::uint32_t accumulator_;
  std::int32_t byte_;
  bool literal_;
  std::uint32_t bits_ = 0;  // unread input bits, right-aligned
  int nbits_ = 0;
};

// Reads codes straight from a whole input block, for one decoder run over all of it from a fresh state.
// Keeps up to 64 bits of input ahead, most significant first; a code wider than what is left ends it.
class BlockCodeReader {
 public:
  BlockCodeReader(const std::uint8_t* data, std::uint64_t size)
      : next_(data), end_(data ? data + size : nullptr) {}

  void Restart() {}
  void Save(State&) const {}

  int Read(const State& s) { return Read(s.mask); }

  int Read(int mask) {
    if (count_ < kWidest) Refill();
    const bool reference = bits_ >> 63;
    const int width = reference ? ReferenceWidth(mask) : 9;
    if (count_ < width) {
      count_ = 0;
      return -1;
    }
    const auto value = static_cast<std::uint32_t>(bits_ >> (64 - width));
    bits_ <<= width;
    count_ -= width;
    if (!reference) return static_cast<int>(value);
    return 255 + 2 * mask - static_cast<int>(value);
  }

 private:
  static constexpr int kWidest = 11;  // a reference with the mask at 1024

  void Refill() {
    if (end_ - next_ >= 8) {  // whole bytes up to 56 bits; the bits read past them are re-read later
      std::uint64_t word = 0;
      for (int i = 0; i < 8; ++i) word = (word << 8) | next_[i];
      bits_ |= word >> count_;
      next_ += (63 - count_) >> 3;
      count_ |= 56;
    } else {
      while (count_ <= 56 && next_ < end_) {
        bits_ |= static_cast<std::uint64_t>(*next_++) << (56 - count_);
        count_ += 8;
      }
    }
  }

  const std::uint8_t* next_;
  const std::uint8_t* end_;
  std::uint64_t bits_ = 0;  // unread bits from the top
  int count_ = 0;
};

}  // namespace vex::lzw
