#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <set>
#include <utility>
#include <vector>

#include "vextools/lzw.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

// Feeds input through the callbacks; read returns -1 at each stop (one LZW / UNLZW call per piece).
struct Stream {
  Bytes input;
  std::size_t position = 0;
  std::size_t stop = 0;
  Bytes output;

  static std::int16_t Read(std::intptr_t user) {
    auto* s = reinterpret_cast<Stream*>(user);
    if (s->position >= s->stop || s->position >= s->input.size()) return -1;
    return s->input[s->position++];
  }
  static void Write(std::int16_t byte, std::intptr_t user) {
    reinterpret_cast<Stream*>(user)->output.push_back(static_cast<std::uint8_t>(byte));
  }
};

Bytes CompressStream(const Bytes& input, const std::vector<std::size_t>& cuts = {}) {
  Stream s;
  s.input = input;
  HGLOBAL state = LZWInit(&Stream::Read, &Stream::Write, LZW_MODE_COMPRESS, reinterpret_cast<std::intptr_t>(&s));
  EXPECT_NE(state, nullptr);
  for (std::size_t cut : cuts) {
    s.stop = cut;
    EXPECT_EQ(LZW(state), 1);
  }
  s.stop = input.size();
  EXPECT_EQ(LZW(state), 1);
  EXPECT_EQ(LZWTerm(state), nullptr);
  return s.output;
}

// Returns the output and the first UNLZW result that was not 1 (1 when all were).
std::pair<Bytes, int> ExpandStream(const Bytes& input, const std::vector<std::size_t>& cuts = {}) {
  Stream s;
  s.input = input;
  HGLOBAL state = LZWInit(&Stream::Read, &Stream::Write, LZW_MODE_DECOMPRESS, reinterpret_cast<std::intptr_t>(&s));
  EXPECT_NE(state, nullptr);
  int result = 1;
  for (std::size_t cut : cuts) {
    s.stop = cut;
    if ((result = UNLZW(state)) != 1) break;
  }
  if (result == 1) {
    s.stop = input.size();
    result = UNLZW(state);
  }
  EXPECT_EQ(UNLZWTerm(state), nullptr);
  return {s.output, result};
}

Bytes FromBlock(const LZWMEMBLOCK& block) {
  Bytes out;
  auto handle = reinterpret_cast<HGLOBAL>(block.hOut);
  if (!handle) return out;
  EXPECT_EQ(GlobalFlags(handle) & GMEM_LOCKCOUNT, 1u);  // handed over locked once
  EXPECT_GE(GlobalSize(handle), block.dwOutLength);
  auto* data = static_cast<const std::uint8_t*>(GlobalLock(handle));
  out.assign(data, data + block.dwOutLength);
  GlobalUnlock(handle);
  GlobalUnlock(handle);
  GlobalFree(handle);
  return out;
}

Bytes CompressMemory(const Bytes& input) {
  LZWMEMBLOCK block{static_cast<std::uint32_t>(input.size()), reinterpret_cast<std::intptr_t>(input.data()), 0, 0};
  EXPECT_EQ(LZWCompressMemory(&block), 1);
  return FromBlock(block);
}

Bytes ExpandMemory(const Bytes& input) {
  LZWMEMBLOCK block{static_cast<std::uint32_t>(input.size()), reinterpret_cast<std::intptr_t>(input.data()), 0, 0};
  EXPECT_EQ(LZWDecompressMemory(&block), 1);
  return FromBlock(block);
}

// Bits most-significant first, as the coder packs them.
struct BitWriter {
  Bytes bytes;
  int used = 8;
  void Put(std::uint32_t value, int width) {
    for (int bit = width - 1; bit >= 0; --bit) {
      if (used == 8) {
        bytes.push_back(0);
        used = 0;
      }
      if ((value >> bit) & 1) bytes.back() |= static_cast<std::uint8_t>(0x80 >> used);
      ++used;
    }
  }
};

// n bytes in which no two neighbours repeat an earlier pair: every step adds an entry, none is found.
Bytes DistinctPairs(std::size_t n) {
  Bytes out{0};
  std::set<std::pair<int, int>> used;
  while (out.size() < n) {
    int next = (out.back() * 31 + 7) % 256;
    while (used.count({out.back(), next})) next = (next + 1) % 256;
    used.insert({out.back(), next});
    out.push_back(static_cast<std::uint8_t>(next));
  }
  return out;
}

Bytes Mixed(std::size_t n, std::uint32_t seed) {
  std::mt19937 random(seed);
  Bytes out;
  const char* words[] = {"map ", "layer ", "road ", "river ", "1234 ", "\r\n", "Kartavo "};
  while (out.size() < n) {
    switch (random() % 3) {
      case 0:
        for (const char* w = words[random() % 7]; *w; ++w) out.push_back(static_cast<std::uint8_t>(*w));
        break;
      case 1:
        out.insert(out.end(), random() % 40, static_cast<std::uint8_t>(random()));
        break;
      default:
        for (int i = random() % 30; i > 0; --i) out.push_back(static_cast<std::uint8_t>(random()));
    }
  }
  out.resize(n);
  return out;
}

TEST(Lzw, EmptyInputCompressesToNineOneBits) {
  EXPECT_EQ(CompressMemory({}), (Bytes{0xFF, 0x80}));
  EXPECT_EQ(CompressStream({}), (Bytes{0xFF, 0x80}));
}

TEST(Lzw, KnownStreams) {
  // 'a', then the reference 256 as the two bits 11, then 'a' again; the mask has grown to 4 by then.
  EXPECT_EQ(CompressMemory({'a', 'a', 'a', 'a'}), (Bytes{0x30, 0xE6, 0x10}));
  EXPECT_EQ(ExpandMemory({0x30, 0xE6, 0x10}), (Bytes{'a', 'a', 'a', 'a'}));
  EXPECT_EQ(CompressMemory({0x41}), (Bytes{0x20, 0x80}));  // zero-sized first output block grows
}

TEST(Lzw, TermWithoutAnyCallWritesLiteralZero) {
  Stream s;
  HGLOBAL state = LZWInit(&Stream::Read, &Stream::Write, LZW_MODE_COMPRESS, reinterpret_cast<std::intptr_t>(&s));
  EXPECT_EQ(LZWTerm(state), nullptr);
  EXPECT_EQ(s.output, (Bytes{0x00, 0x00}));
}

TEST(Lzw, ImageOfEmptyInputExpandsToOneZeroByteAndStops) {
  // 11 11 is the reference 256 twice: the second one makes entry 256 its own prefix.
  auto [streamed, result] = ExpandStream({0xFF, 0x80});
  EXPECT_EQ(result, 0);
  EXPECT_EQ(streamed, Bytes{0x00});
  EXPECT_EQ(ExpandMemory({0xFF, 0x80}), Bytes{0x00});
}

TEST(Lzw, ReferenceBeyondNextFreeCodeIsCorrupt) {
  // 'A', then "10": code 257 while the next free code is 256.
  const Bytes stream{0x20, 0xC0};
  auto [streamed, result] = ExpandStream(stream);
  EXPECT_EQ(result, 0);
  EXPECT_EQ(streamed, Bytes{'A'});
  EXPECT_EQ(ExpandMemory(stream), Bytes{'A'});  // the memory call still succeeds
}

TEST(Lzw, SixHundredEqualBytes) {
  const Bytes input(600, 'x');
  const Bytes packed = CompressMemory(input);
  EXPECT_LT(packed.size(), 60u);  // about 34 codes, each one byte longer than the last
  EXPECT_EQ(ExpandMemory(packed), input);
  EXPECT_EQ(ExpandStream(packed).first, input);
  // The longest strings of a dictionary, 512 bytes, and the reset after them.
  const Bytes longer(200000, 'x');
  EXPECT_EQ(ExpandMemory(CompressMemory(longer)), longer);
}

TEST(Lzw, DictionaryResetsAfter512Entries) {
  // 513 bytes add 512 entries; the pair (S0, S1) is entry 256 before the reset and unknown after it,
  // so everything, those two bytes included, goes out as 9-bit literals.
  Bytes input = DistinctPairs(513);
  input.push_back(input[0]);
  input.push_back(input[1]);
  BitWriter expected;
  for (std::uint8_t b : input) expected.Put(b, 9);
  EXPECT_EQ(CompressMemory(input), expected.bytes);
  EXPECT_EQ(ExpandMemory(expected.bytes), input);

  // One entry short of the reset: the pair is found and written as the 10-bit reference 256.
  Bytes before = DistinctPairs(511);
  before.push_back(before[0]);
  before.push_back(before[1]);
  BitWriter shorter;
  for (std::size_t i = 0; i + 2 < before.size(); ++i) shorter.Put(before[i], 9);
  shorter.Put(0x3FF, 10);
  EXPECT_EQ(CompressMemory(before), shorter.bytes);
  EXPECT_EQ(ExpandMemory(shorter.bytes), before);
}

TEST(Lzw, RoundTripsOfManySizes) {
  std::mt19937 random(7);
  for (std::size_t size : {1, 2, 3, 7, 8, 9, 255, 256, 257, 511, 512, 513, 767, 768, 1000, 4096, 65537}) {
    for (std::uint32_t seed = 0; seed < 3; ++seed) {
      Bytes input(size);
      for (auto& b : input) b = static_cast<std::uint8_t>(random() % (seed == 0 ? 256 : seed == 1 ? 4 : 40));
      const Bytes packed = CompressMemory(input);
      ASSERT_EQ(CompressStream(input), packed) << size;
      ASSERT_EQ(ExpandMemory(packed), input) << size;
      ASSERT_EQ(ExpandStream(packed).first, input) << size;
    }
  }
  const Bytes mixed = Mixed(3 << 20, 11);
  const Bytes packed = CompressMemory(mixed);
  EXPECT_LT(packed.size(), mixed.size());
  EXPECT_EQ(ExpandMemory(packed), mixed);
}

TEST(Lzw, SplitCallsGiveTheSameStream) {
  const Bytes input = Mixed(20000, 3);
  const Bytes whole = CompressStream(input);
  EXPECT_EQ(CompressStream(input, {0}), whole);  // first call without input
  EXPECT_EQ(CompressStream(input, {0, 0, 1, 1, 2, 500, 500, 7001, 19999}), whole);
  std::mt19937 random(5);
  for (int round = 0; round < 20; ++round) {
    std::vector<std::size_t> cuts;
    for (std::size_t at = random() % 300; at < input.size(); at += random() % 3000) cuts.push_back(at);
    ASSERT_EQ(CompressStream(input, cuts), whole);
    ASSERT_EQ(ExpandStream(whole, cuts).first, input);  // codes straddle the cuts
  }
}

TEST(Lzw, StreamingDecoderAgreesWithMemoryDecoderOnNoise) {
  std::mt19937 random(9);
  for (int round = 0; round < 300; ++round) {
    Bytes noise(random() % 400);
    for (auto& b : noise) b = static_cast<std::uint8_t>(random());
    const Bytes expected = ExpandMemory(noise);
    std::vector<std::size_t> cuts;
    for (std::size_t at = random() % 5; at < noise.size(); at += 1 + random() % 7) cuts.push_back(at);
    ASSERT_EQ(ExpandStream(noise).first, expected);
    ASSERT_EQ(ExpandStream(noise, cuts).first, expected);
  }
}

TEST(Lzw, NullArgumentsAndHandles) {
  EXPECT_EQ(LZWInit(nullptr, &Stream::Write, 0, 0), nullptr);
  EXPECT_EQ(LZWInit(&Stream::Read, nullptr, 0, 0), nullptr);
  EXPECT_EQ(LZW(nullptr), 0);
  EXPECT_EQ(UNLZW(nullptr), 0);
  EXPECT_EQ(LZWTerm(nullptr), nullptr);
  EXPECT_EQ(UNLZWTerm(nullptr), nullptr);
  EXPECT_EQ(LZWCompressMemory(nullptr), 0);
  EXPECT_EQ(LZWDecompressMemory(nullptr), 0);
  LZWMEMBLOCK empty{0, 0, 0, 0};
  EXPECT_EQ(LZWDecompressMemory(&empty), 1);  // nothing written: no block
  EXPECT_EQ(empty.dwOutLength, 0u);
  EXPECT_EQ(empty.hOut, 0);
}

TEST(Lzw, CrossedDirectionsStayInBounds) {
  // Encoder and decoder calls on one state are meaningless but must not go astray.
  const Bytes input = Mixed(5000, 1);
  Stream s;
  s.input = CompressMemory(input);
  HGLOBAL state = LZWInit(&Stream::Read, &Stream::Write, LZW_MODE_DECOMPRESS, reinterpret_cast<std::intptr_t>(&s));
  s.stop = s.input.size() / 2;
  UNLZW(state);
  s.input.insert(s.input.end(), input.begin(), input.end());
  s.stop = s.input.size();
  EXPECT_EQ(LZW(state), 1);
  EXPECT_EQ(LZWTerm(state), nullptr);
}

}  // namespace
