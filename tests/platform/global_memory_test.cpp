// The same expectations hold for the real Win32 functions and for the emulation.
#include <gtest/gtest.h>

#include <cstring>

#include "vextools/types.h"

TEST(GlobalMemory, MovableBlockHandleIsNotItsPointer) {
  HGLOBAL handle = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, 100);
  ASSERT_NE(handle, nullptr);
  EXPECT_GE(GlobalSize(handle), 100u);
  EXPECT_EQ(GlobalFlags(handle) & GMEM_LOCKCOUNT, 0u);

  auto* data = static_cast<unsigned char*>(GlobalLock(handle));
  ASSERT_NE(data, nullptr);
  EXPECT_NE(static_cast<void*>(data), handle);
  for (int i = 0; i < 100; ++i) ASSERT_EQ(data[i], 0);
  EXPECT_EQ(GlobalFlags(handle) & GMEM_LOCKCOUNT, 1u);
  EXPECT_EQ(GlobalLock(handle), data);
  EXPECT_EQ(GlobalFlags(handle) & GMEM_LOCKCOUNT, 2u);
  EXPECT_NE(GlobalUnlock(handle), FALSE);  // still locked once
  EXPECT_EQ(GlobalUnlock(handle), FALSE);
  EXPECT_EQ(GlobalFlags(handle) & GMEM_LOCKCOUNT, 0u);
  EXPECT_EQ(GlobalFree(handle), nullptr);
}

TEST(GlobalMemory, ReallocKeepsHandleAndContents) {
  HGLOBAL handle = GlobalAlloc(GHND, 16);
  ASSERT_NE(handle, nullptr);
  std::memcpy(GlobalLock(handle), "0123456789abcdef", 16);
  GlobalUnlock(handle);
  HGLOBAL grown = GlobalReAlloc(handle, 100000, GMEM_MOVEABLE | GMEM_ZEROINIT);
  ASSERT_EQ(grown, handle);
  EXPECT_GE(GlobalSize(grown), 100000u);
  auto* data = static_cast<char*>(GlobalLock(grown));
  EXPECT_EQ(std::memcmp(data, "0123456789abcdef", 16), 0);
  EXPECT_EQ(data[99999], 0);
  GlobalUnlock(grown);
  EXPECT_EQ(GlobalFree(grown), nullptr);
}

TEST(GlobalMemory, FixedBlockHandleIsItsPointer) {
  HGLOBAL handle = GlobalAlloc(GPTR, 32);
  ASSERT_NE(handle, nullptr);
  EXPECT_EQ(GlobalLock(handle), handle);
  static_cast<char*>(handle)[31] = 'x';
  EXPECT_GE(GlobalSize(handle), 32u);
  EXPECT_EQ(GlobalFree(handle), nullptr);
}

TEST(GlobalMemory, ManyBlocksStayDistinct) {
  std::vector<HGLOBAL> handles;
  for (int i = 0; i < 1000; ++i) {
    handles.push_back(GlobalAlloc(GMEM_MOVEABLE, 8));
    *static_cast<int*>(GlobalLock(handles.back())) = i;
    GlobalUnlock(handles.back());
  }
  for (int i = 0; i < 1000; ++i) {
    EXPECT_EQ(*static_cast<int*>(GlobalLock(handles[i])), i);
    GlobalUnlock(handles[i]);
    GlobalFree(handles[i]);
  }
}
