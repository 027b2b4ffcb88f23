// The state block of one LZW stream and its dictionary, shared by the encoder and the decoder.
#pragma once

#include <bit>
#include <cstdint>

#include "vextools/lzw.h"

namespace vex::lzw {

constexpr int kEntries = 768;       // dictionary size; entries 0-255 are the literals
constexpr int kLiterals = 256;
constexpr int kEncoderReset = 768;  // the encoder rebuilds when its count reaches this, after an add
constexpr int kDecoderReset = 767;  // the decoder lags one entry behind
constexpr int kDecodeBuffer = 512;  // the longest string an encoder can make
constexpr int kIndexBits = 11;      // encoder's hash index: 2048 slots for at most 512 entries
constexpr int kIndexSlots = 1 << kIndexBits;

struct Entry {
  std::int16_t prefix;     // -1 for a literal
  std::int16_t character;  // last byte of the string
  std::int16_t link;       // next entry of the search chain, -1 = end
};

// Lives in a zero-filled movable global memory block from LZWInit to LZWTerm / UNLZWTerm.
struct State {
  std::uint8_t firstCall;
  std::uint8_t mode;          // 0 compress, 1 decompress: the decoder grows one entry earlier
  std::int16_t mask;          // reference mask m: value of a reference's top bit
  std::int16_t count;         // next free code
  std::int16_t pending;       // prefix carried between calls, -1 = none
  std::int16_t literal;       // decoder: the code being read is a literal
  std::uint32_t accumulator;  // decoder: code being read
  std::uint32_t bitMask;      // encoder: output bit to set next; decoder: code bit to fill next
  std::uint32_t inputMask;    // decoder: input bit to read next, 0 = fetch a byte
  std::int32_t byteRegister;  // encoder: byte being assembled; decoder: last input byte, -1 = end
  LZWREADPROC read;
  LZWWRITEPROC write;
  std::intptr_t user;
  std::uint8_t decodeBuffer[kDecodeBuffer];
  Entry dictionary[kEntries];

  // Encoder's index of (prefix, character) -> code, valid while every entry since the last rebuild was
  // added by the encoder. A slot holds (generation << 20 | key); slots of older generations are free.
  std::uint8_t indexValid;
  std::uint32_t generation;
  std::uint64_t slotKey[kIndexSlots];
  std::int16_t slotCode[kIndexSlots];
};

inline void ResetDictionary(State& s) {
  for (int i = 0; i < kLiterals; ++i) s.dictionary[i] = Entry{-1, static_cast<std::int16_t>(i), -1};
  s.mask = 2;
  s.count = kLiterals;
  if (++s.generation == 0) {  // after 2^32 rebuilds: clear once rather than mistake old slots
    for (auto& key : s.slotKey) key = 0;
    s.generation = 1;
  }
  s.indexValid = 1;
}

inline std::uint32_t IndexHash(std::uint32_t key) { return (key * 0x9E3779B1u) >> (32 - kIndexBits); }


// Links the new entry right behind its prefix: the prefix's link is both its chain head and its own
// onward link, so a chain walked from p meets every entry added behind p.
inline void AddEntry(State& s, int prefix, int character) {
  const int code = s.count;
  Entry& entry = s.dictionary[code];
  entry.prefix = static_cast<std::int16_t>(prefix);
  entry.character = static_cast<std::int16_t>(character);
  entry.link = s.dictionary[prefix].link;
  s.dictionary[prefix].link = static_cast<std::int16_t>(code);
  s.count = static_cast<std::int16_t>(code + 1);
  if (s.count - 255 > s.mask - s.mode) s.mask = static_cast<std::int16_t>(s.mask * 2);
}

inline void AddDecoderEntry(State& s, int prefix, int character) {
  AddEntry(s, prefix, character);
  s.indexValid = 0;  // the encoder must walk the chains if it ever continues this dictionary
}

// The encoder's view of the dictionary during one call: count, mask and index state in locals (the
// output stores would otherwise force them to be reloaded from the block for every byte), written back
// by Store.
class EncoderDictionary {
 public:
  explicit EncoderDictionary(State& s) : s_(s), mode_(s.mode) { Load(); }

  int count() const { return count_; }
  int mask() const { return mask_; }

  void Store() {
    s_.count = static_cast<std::int16_t>(count_);
    s_.mask = static_cast<std::int16_t>(mask_);
  }

  void Reset() {
    ResetDictionary(s_);
    Load();
  }

  // The code of the string prefix + character, -1 if none. Without the index, the chain walk is
  // bounded: chains left by a corrupt stream decoded into this state may loop.
  int Lookup(int prefix, int character) const {
    if (indexed_) {
      const std::uint32_t key = Key(prefix, character);
      for (std::uint32_t slot = IndexHash(key);; slot = (slot + 1) & (kIndexSlots - 1)) {
        const std::uint64_t tag = s_.slotKey[slot];
        if (tag == (live_ | key)) return s_.slotCode[slot];
        if ((tag & ~kKeyBits) != live_) return -1;
      }
    }
    int code = prefix;
    for (int steps = 0; code >= 0 && code < kEntries && steps <= kEntries; ++steps) {
      const Entry& entry = s_.dictionary[code];
      if (entry.prefix == prefix && entry.character == character) return code;
      code = entry.link;
    }
    return -1;
  }

  // Links the new entry right behind its prefix: the prefix's link is both its chain head and its own
  // onward link, so a chain walked from p meets every entry added behind p.
  void Add(int prefix, int character) {
    Entry& entry = s_.dictionary[count_];
    entry.prefix = static_cast<std::int16_t>(prefix);
    entry.character = static_cast<std::int16_t>(character);
    entry.link = s_.dictionary[prefix].link;
    s_.dictionary[prefix].link = static_cast<std::int16_t>(count_);
    if (indexed_) {
      const std::uint32_t key = Key(prefix, character);
      std::uint32_t slot = IndexHash(key);
      while ((s_.slotKey[slot] & ~kKeyBits) == live_) slot = (slot + 1) & (kIndexSlots - 1);
      s_.slotKey[slot] = live_ | key;
      s_.slotCode[slot] = static_cast<std::int16_t>(count_);
    }
    ++count_;
    if (count_ - 255 > mask_ - mode_) mask_ *= 2;
  }

 private:
  static constexpr std::uint64_t kKeyBits = 0xFFFFF;

  static std::uint32_t Key(int prefix, int character) {
    return (static_cast<std::uint32_t>(prefix) << 8) | static_cast<std::uint32_t>(character);
  }

  void Load() {
    count_ = s_.count;
    mask_ = s_.mask;
    indexed_ = s_.indexValid != 0;
    live_ = static_cast<std::uint64_t>(s_.generation) << 20;
  }

  State& s_;
  const int mode_;
  int count_ = 0;
  int mask_ = 0;
  bool indexed_ = false;
  std::uint64_t live_ = 0;
};

// Width of a reference field: the mask's bit and every bit below it.
inline int ReferenceWidth(int mask) { return mask > 0 ? std::bit_width(static_cast<unsigned>(mask)) : 0; }

State* LockState(HGLOBAL handle);
HGLOBAL CreateState(LZWREADPROC read, LZWWRITEPROC write, int mode, std::intptr_t user);

}  // namespace vex::lzw
