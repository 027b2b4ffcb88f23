#include <gtest/gtest.h>

#include <string>

#include "support/temp_dir.h"
#include "vextools/binaryfile.h"

namespace {
const std::uint32_t kRead = 0x21, kWrite = 0x0A, kReadWrite = 0x0B;
}

TEST(BinaryFile, MissingFileIsErrorOne) {
  vex::test::TempDir dir;
  KVBinaryFile file;
  EXPECT_FALSE(file.Open(_SS<char>("absent.bin"), kRead));
  EXPECT_EQ(file.GetLastError(), 1u);
  EXPECT_FALSE(file.IsOpen());
  EXPECT_FALSE(file.Open(_SS<char>("no-such-dir/absent.bin"), kWrite));
  EXPECT_EQ(file.GetLastError(), 1u);
  EXPECT_EQ(file.Read(nullptr, 0), -1);
  EXPECT_EQ(file.Write("x", 1), 0);
  EXPECT_EQ(file.SeekFromBegin(0), -1);
}

TEST(BinaryFile, CreateWriteSeekRead) {
  vex::test::TempDir dir;
  KVBinaryFile file;
  ASSERT_TRUE(file.Create(_SS<char>("data.bin"), kReadWrite));
  EXPECT_EQ(file.Write("hello world", 11), 11);
  EXPECT_EQ(file.GetLength(), 11u);
  EXPECT_EQ(file.SeekFromBegin(6), 6);
  char buffer[16] = {};
  EXPECT_EQ(file.Read(buffer, 16), 5);
  EXPECT_STREQ(buffer, "world");
  EXPECT_EQ(file.SeekFromEnd(-5), 6);
  EXPECT_EQ(file.SeekFromCurrent(-6), 0);
  EXPECT_EQ(file.SeekFromBegin(20), 20);  // past the end is allowed; a write there extends the file
  EXPECT_EQ(file.Write("!", 1), 1);
  EXPECT_EQ(file.GetLength(), 21u);
  EXPECT_TRUE(file.Flush());
  EXPECT_TRUE(file.Close());
  EXPECT_FALSE(file.Close());
  EXPECT_EQ(vex::test::ReadAll(dir.file("data.bin")).size(), 21u);
}

TEST(BinaryFile, AccessFollowsTheFlags) {
  vex::test::TempDir dir;
  vex::test::WriteAll(dir.file("r.bin"), "abc");
  {
    KVBinaryFile reader(_SS<char>("r.bin"), kRead);
    ASSERT_TRUE(reader.IsOpen());
    EXPECT_EQ(reader.Write("x", 1), 0);
  }
  {
    KVBinaryFile writer(_SS<char>("r.bin"), kWrite);
    ASSERT_TRUE(writer.IsOpen());
    char c;
    EXPECT_EQ(writer.Read(&c, 1), -1);
  }

  KVBinaryFile always;
  EXPECT_TRUE(always.Open(_SS<char>("made.bin"), 0x42));  // open-always creates
  KVBinaryFile existing;
  EXPECT_TRUE(existing.Create(_SS<char>("r.bin"), kReadWrite));  // create truncates
  EXPECT_EQ(existing.GetLength(), 0u);
}
