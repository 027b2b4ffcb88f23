#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "vextools/bitfield.h"

namespace {

struct PeekBits : BITFIELD {
  using BITFIELD::BITFIELD;
  std::uint32_t Word(int w) const { return words_[w]; }
};

}  // namespace

TEST(BitField, WordsAndRange) {
  PeekBits bits(32);
  EXPECT_EQ(bits.GetSize(), 12);  // 2 words: one more than needed, kept
  bits.SetValue(31, 1);
  EXPECT_EQ(bits.Word(0), 0x80000000u);
  EXPECT_EQ(bits.Word(1), 0u);
  EXPECT_EQ(bits[31], 1);
  EXPECT_EQ(bits[32], 0);
  EXPECT_EQ(bits[-1], 0);
  bits.SetValue(32, 1);  // out of range: ignored
  EXPECT_EQ(bits.Word(1), 0u);

  EXPECT_EQ(bits.SetRange(32), 0);
  EXPECT_EQ(bits[31], 1);  // kept
  EXPECT_EQ(bits.SetRange(40), 1);
  EXPECT_EQ(bits[31], 0);
  EXPECT_EQ(bits.IsOneSet(), 0);
  EXPECT_EQ(bits.SetRange(0), 1);
  EXPECT_EQ(bits.GetSize(), 0);
  EXPECT_EQ(bits.IsOneSet(), 0);
  EXPECT_EQ(bits[0], 0);
}

TEST(BitField, FillAndCopyCountBytesInSixteenBits) {
  BITFIELD small(100);
  small.SetValue(1);
  EXPECT_EQ(small[99], 1);
  EXPECT_EQ(small.IsOneSet(), 1);
  small.SetValue(0);
  EXPECT_EQ(small.IsOneSet(), 0);

  const std::int32_t n = 65536 * 8;  // 65,540 bytes to fill: only 4 are
  PeekBits large(n);
  large.SetValue(1);
  EXPECT_EQ(large.Word(0), 0xFFFFFFFFu);
  EXPECT_EQ(large[32], 0);

  std::vector<std::int32_t> source(n / 32 + 1, -1);
  large.Copy(n, source.data());
  EXPECT_EQ(large[31], 1);
  EXPECT_EQ(large[32], 0);
  std::int32_t word = 0x5;
  large.Copy(3, &word);
  EXPECT_EQ(large.GetSize(), 8);
  EXPECT_EQ(large[0] + large[1] * 2 + large[2] * 4, 5);
}

TEST(LongsStore, GrowsRemovesAndAcceptsNull) {
  void* store = LongsStore_Create(0);
  for (std::int32_t v : {5, 6, 7}) EXPECT_EQ(LongsStore_Add(store, v), 1);
  EXPECT_EQ(LongsStore_Remove(store, 1), 1);
  EXPECT_EQ(LongsStore_Count(store), 2u);
  std::int32_t value = 0;
  EXPECT_EQ(LongsStore_Get(store, 1, &value), 1);
  EXPECT_EQ(value, 6);
  EXPECT_EQ(LongsStore_Set(store, 2, 70), 1);
  EXPECT_EQ(LongsStore_Get(store, 2, &value), 1);
  EXPECT_EQ(value, 70);
  EXPECT_EQ(LongsStore_Get(store, 3, &value), 0);
  EXPECT_EQ(LongsStore_Remove(store, 0), 0);
  for (std::int32_t v = 0; v < 250; ++v) ASSERT_EQ(LongsStore_Add(store, v), 1);
  EXPECT_EQ(LongsStore_Get(store, 252, &value), 1);
  EXPECT_EQ(value, 249);
  EXPECT_EQ(LongsStore_Destroy(store), 1);

  EXPECT_EQ(LongsStore_Add(nullptr, 1), 0);
  EXPECT_EQ(LongsStore_Count(nullptr), 0u);
  EXPECT_EQ(LongsStore_Destroy(nullptr), 0);
}

TEST(FlagManager, BlobsAndFixedAnswers) {
  FLAGMANAGER flags;
  const char data[] = "xyz";
  EXPECT_EQ(flags.SetFieldFlag(3, const_cast<char*>(data)), 1);
  EXPECT_EQ(flags.GetFieldFlag(nullptr), 3);
  char buffer[3];
  EXPECT_EQ(flags.GetFieldFlag(buffer), 3);
  EXPECT_EQ(std::memcmp(buffer, "xyz", 3), 0);
  EXPECT_EQ(flags.SetFieldFlag(3, nullptr), 0);
  EXPECT_EQ(flags.GetFieldFlag(nullptr), 0);
  EXPECT_EQ(flags.GetFieldFlag(buffer), 0);
  EXPECT_EQ(flags.SetFlagsInfo(0, nullptr), 1);
  EXPECT_EQ(flags.SetFlagsInfo(3, const_cast<char*>(data)), 1);
  EXPECT_EQ(flags.GetFlagsInfo(buffer), 0);

  char name[] = "flag";
  EXPECT_EQ(flags.AddFlag(name), nullptr);
  const FLAGID id = nullptr;
  EXPECT_EQ(flags.GetFlagValue(&id), 1);
  EXPECT_EQ(flags.SetFlagValue(&id, FLAGVALUE_OFF), 1);
  EXPECT_EQ(flags.GetFlagName(&id, name, 5), 0);
}

TEST(GlobalHandle, WrapsWithoutOwning) {
  CGlobalHandle empty(0, GMEM_ZEROINIT);
  EXPECT_EQ(empty.GetRefHandle(), nullptr);
  EXPECT_EQ(empty.Lock(), nullptr);
  EXPECT_EQ(empty.Unlock(), 1);
  EXPECT_EQ(empty.GetSize(), 0u);

  CGlobalHandle block(16, GMEM_ZEROINIT);
  ASSERT_NE(block.GetRefHandle(), nullptr);
  EXPECT_GE(block.GetSize(), 16u);
  static_cast<char*>(block.Lock())[15] = 'z';
  EXPECT_EQ(block.GetFlags() & GMEM_LOCKCOUNT, 1u);
  block.Unlock();
  EXPECT_NE(block.Reallocate(64, GMEM_ZEROINIT), nullptr);
  EXPECT_EQ(static_cast<char*>(block.Lock())[15], 'z');
  block.Unlock();
  CGlobalHandle alias = block;  // copies share the handle
  alias.FreeHandle();
  EXPECT_EQ(alias.GetRefHandle(), nullptr);
}
