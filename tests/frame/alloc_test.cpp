#include <gtest/gtest.h>

#include <cstring>
#include <numeric>
#include <vector>

#include "vextools/frame.h"

TEST(Alloc, EmptyOrNegativeSizeGivesNull) {
  for (std::int32_t flags : {0, 1}) {
    EXPECT_EQ(VexAllocPtr(0, flags), nullptr);
    EXPECT_EQ(VexAllocPtr(-5, flags), nullptr);
    EXPECT_EQ(VexReallocPtr(nullptr, 0, flags), nullptr);
  }
}

TEST(Alloc, ZeroFlagClearsNewBlocksAndReallocKeepsContents) {
  auto* block = static_cast<unsigned char*>(VexAllocPtr(64, VEXALLOC_ZERO));
  ASSERT_NE(block, nullptr);
  EXPECT_TRUE(std::all_of(block, block + 64, [](unsigned char c) { return c == 0; }));
  std::iota(block, block + 64, 1);
  block = static_cast<unsigned char*>(VexReallocPtr(block, 4096, VEXALLOC_ZERO));
  ASSERT_NE(block, nullptr);
  for (int i = 0; i < 64; ++i) EXPECT_EQ(block[i], i + 1);
  EXPECT_EQ(VexReallocPtr(block, 0, 0), nullptr);  // releases the block (the sanitizer build checks)
  VexFreePtr(nullptr);
}

TEST(Alloc, NullBlockReallocAllocates) {
  void* block = VexReallocPtr(nullptr, 16, VEXALLOC_ZERO);
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(std::memcmp(block, std::vector<char>(16).data(), 16), 0);
  VexFreePtr(block);
}

TEST(Alloc, InitAndCloseCanRepeat) {
  VexInitAlloc();
  VexInitAlloc();
  VexCloseAlloc();
  VexCloseAlloc();
}

TEST(HugeMemCopy, OverlapInBothDirectionsMatchesCopyThroughTemporary) {
  for (int shift : {-7, -1, 1, 7}) {
    std::vector<char> buffer(64), expected;
    std::iota(buffer.begin(), buffer.end(), 0);
    expected = buffer;
    const int from = 20, to = 20 + shift, count = 30;
    std::vector<char> temp(expected.begin() + from, expected.begin() + from + count);
    std::copy(temp.begin(), temp.end(), expected.begin() + to);
    HugeMemCopy(buffer.data() + to, buffer.data() + from, count);
    EXPECT_EQ(buffer, expected) << "shift " << shift;
  }
}
