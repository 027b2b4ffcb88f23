#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/temp_dir.h"
#include "vextools/basicfile.h"

using vex::test::AsText;
using vex::test::Name;
using vex::test::ReadAll;
using vex::test::TempDir;
using vex::test::WriteAll;

namespace {

// Exposes the stored access mode and records the reads that Copy makes through the virtual ReadDirect.
class ProbeFile : public KARBASICFILE {
 public:
  std::int32_t Access() const { return access_mode_; }
  std::int32_t ReadDirect(char* buffer, std::int32_t size, std::int32_t position) override {
    reads.push_back(size);
    return KARBASICFILE::ReadDirect(buffer, size, position);
  }
  std::vector<std::int32_t> reads;
};

std::string Pattern(std::size_t n) {
  std::string s(n, '\0');
  for (std::size_t i = 0; i < n; ++i) s[i] = static_cast<char>('a' + (i * 7 + i / 251) % 26);
  return s;
}

}  // namespace

TEST(BasicFile, FailedOpenDistinguishesMissingFile) {
  TempDir dir;
  std::filesystem::create_directory(dir.path() / "sub");
  KARBASICFILE file;
  EXPECT_EQ(file.Open(Name("missing.bin"), 0), -9);
  EXPECT_FALSE(file.IsFileOpened());
  EXPECT_EQ(file.Open(Name("sub"), 0), -1);  // exists, but cannot be opened as a file
  EXPECT_FALSE(file.IsFileOpened());
  char buffer[4];
  EXPECT_EQ(file.ReadDirect(buffer, 4, 0), -3);
  EXPECT_EQ(file.WriteDirect(buffer, 4, 0), -3);
  EXPECT_EQ(file.SetPosition(0, 0), -3);
  EXPECT_EQ(file.GetPosition(), -1);
}

TEST(BasicFile, AccessModesFollowTheModeWord) {
  TempDir dir;
  WriteAll("a.bin", "0123456789");
  ProbeFile file;
  char buffer[4] = {};
  ASSERT_EQ(file.Open(Name("a.bin"), 0), 0);
  EXPECT_EQ(file.Access(), 1);
  EXPECT_EQ(file.GetPhysicalLength(), 10);
  EXPECT_EQ(file.WriteDirect(buffer, 1, 0), -4);

  ASSERT_EQ(file.Open(Name("a.bin"), 3), 0);  // bit 0 wins: write only
  EXPECT_EQ(file.Access(), 2);
  EXPECT_EQ(file.ReadDirect(buffer, 1, 0), -5);

  ASSERT_EQ(file.Open(Name("a.bin"), 2), 0);
  EXPECT_EQ(file.Access(), 3);
  EXPECT_EQ(file.ReadDirect(buffer, 4, 2), 4);
  EXPECT_EQ(std::string(buffer, 4), "2345");

  // The create bit alone: the file is made, but no access mode is stored and no access is granted.
  ASSERT_EQ(file.Open(Name("a.bin"), 0x1000), 0);
  EXPECT_EQ(file.Access(), 0);
  EXPECT_EQ(file.GetPhysicalLength(), 0);
  EXPECT_EQ(file.WriteDirect(buffer, 1, 0), -4);
  EXPECT_EQ(file.ReadDirect(buffer, 1, 0), -5);
  file.Close(1);
  EXPECT_TRUE(ReadAll("a.bin").empty());
}

TEST(BasicFile, CloseAlwaysReturnsMinusThree) {
  TempDir dir;
  WriteAll("a.bin", "abcdef");
  KARBASICFILE file;
  EXPECT_EQ(file.Close(0), -3);
  ASSERT_EQ(file.Open(Name("a.bin"), 0), 0);
  EXPECT_EQ(file.FileLength(), 6);
  EXPECT_EQ(file.Close(0), -3);
  EXPECT_FALSE(file.IsFileOpened());
  EXPECT_EQ(file.GetPhysicalLength(), 0);
  EXPECT_EQ(file.Close(1), -3);

  // The name survives, so ReOpen can use another mode without naming the file again.
  EXPECT_EQ(file.ReOpen(1), 0);
  EXPECT_EQ(file.WriteDirect(Name("XY"), 2, 0), 2);
  file.Close(1);
  EXPECT_EQ(AsText(ReadAll("a.bin")), "XYcdef");
}

TEST(BasicFile, ReOpenWithoutName) {
  TempDir dir;
  KARBASICFILE file;
  EXPECT_EQ(file.ReOpen(0), -1);
  WriteAll("a.bin", "x");
  ASSERT_EQ(file.Open(Name("a.bin"), 0), 0);
  file.SetFileName(Name(""));
  EXPECT_EQ(file.ReOpen(0), 0);
  EXPECT_TRUE(file.IsFileOpened());
}

TEST(BasicFile, SetPositionOrigins) {
  TempDir dir;
  WriteAll("a.bin", std::string(40, 'x'));
  KARBASICFILE file;
  ASSERT_EQ(file.Open(Name("a.bin"), 0), 0);
  EXPECT_EQ(file.GetPosition(), 0);
  EXPECT_EQ(file.SetPosition(10, 0), 10);
  EXPECT_EQ(file.SetPosition(5, 1), 15);
  EXPECT_EQ(file.SetPosition(0, 2), 40);
  EXPECT_EQ(file.SetPosition(3, 0), 3);
  EXPECT_EQ(file.SetPosition(-5, 0), 40);  // any negative offset goes to the end
  EXPECT_EQ(file.SetPosition(-1, 1), 40);
  EXPECT_EQ(file.SetPosition(0, 3), -3);
  EXPECT_EQ(file.GetPosition(), 40);
}

TEST(BasicFile, WriteDirectRaisesThePhysicalLength) {
  TempDir dir;
  WriteAll("a.bin", std::string(50, 'x'));
  KARBASICFILE file;
  ASSERT_EQ(file.Open(Name("a.bin"), 2), 0);
  EXPECT_EQ(file.WriteDirect(Name("0123456789"), 10, 100), 10);
  EXPECT_EQ(file.GetPhysicalLength(), 110);
  EXPECT_EQ(file.WriteDirect(Name("ab"), 2, 0), 2);
  EXPECT_EQ(file.GetPhysicalLength(), 110);
  // A negative position writes at the end but measures the length from the position itself.
  EXPECT_EQ(file.WriteDirect(Name("END"), 3, -1), 3);
  EXPECT_EQ(file.GetPhysicalLength(), 110);
  char buffer[3];
  EXPECT_EQ(file.ReadDirect(buffer, 3, 110), 3);
  EXPECT_EQ(std::string(buffer, 3), "END");
  EXPECT_EQ(file.ReadDirect(buffer, 3, 200), 0);
  EXPECT_EQ(file.ReadDirect(buffer, 3, -1), 0);  // at the end
  EXPECT_EQ(file.WriteDirect(Name("x"), 0, 0), -4);
  file.Close(1);
  EXPECT_EQ(ReadAll("a.bin").size(), 113u);
}

TEST(BasicFile, CopyRunsInChunksOfTenThousand) {
  TempDir dir;
  const std::string data = Pattern(30000);
  WriteAll("src.bin", data);
  WriteAll("dst.bin", "HEAD");
  ProbeFile source;
  ASSERT_EQ(source.Open(Name("src.bin"), 0), 0);

  EXPECT_EQ(source.Copy(1000, 25000, Name("dst.bin"), 0), 25000);
  EXPECT_EQ(source.reads, (std::vector<std::int32_t>{10000, 10000, 5000}));
  EXPECT_EQ(AsText(ReadAll("dst.bin")), "HEAD" + data.substr(1000, 25000));

  source.reads.clear();
  EXPECT_EQ(source.Copy(1000, 25000, Name("dst.bin"), 0x1000), 25000);
  EXPECT_EQ(source.reads.size(), 3u);
  EXPECT_EQ(AsText(ReadAll("dst.bin")), data.substr(1000, 25000));

  // Short source: stops at the end of the file.
  EXPECT_EQ(source.Copy(29000, 5000, Name("dst.bin"), 0x1000), 1000);
  EXPECT_EQ(AsText(ReadAll("dst.bin")), data.substr(29000));
}

TEST(BasicFile, CopyFailuresCopyNothing) {
  TempDir dir;
  WriteAll("src.bin", "abc");
  KARBASICFILE source;
  EXPECT_EQ(source.Copy(0, 3, Name("dst.bin"), 0x1000), 0);  // source not open
  ASSERT_EQ(source.Open(Name("src.bin"), 0), 0);
  EXPECT_EQ(source.Copy(0, 3, Name("dst.bin"), 0), 0);  // append needs an existing destination
  EXPECT_FALSE(std::filesystem::exists("dst.bin"));
  EXPECT_EQ(source.Copy(0, 0, Name("dst.bin"), 0x1000), 0);
  EXPECT_EQ(source.Copy(0, -5, Name("dst.bin"), 0x1000), 0);
  EXPECT_EQ(source.Copy(0, 3, nullptr, 0x1000), 0);
  EXPECT_EQ(source.Copy(0, 3, Name("dst.bin"), 0x1000), 3);
}

TEST(BasicFile, NamesAreCutAt260Characters) {
  KARBASICFILE file;
  const std::string longName(300, 'n');
  EXPECT_NE(file.Open(const_cast<char*>(longName.c_str()), 0), 0);
  char buffer[400];
  file.GetFileName(buffer);
  EXPECT_EQ(std::string(buffer), longName.substr(0, 260));
  file.SetFileName(nullptr);
  file.GetFileName(buffer);
  EXPECT_STREQ(buffer, "");
  file.SetUserData(-77);
  EXPECT_EQ(file.GetUserData(), -77);
}

TEST(BasicFile, CopiesShareTheBinaryFile) {
  TempDir dir;
  WriteAll("a.bin", "0123456789");
  KARBASICFILE file;
  file.SetUserData(5);
  ASSERT_EQ(file.Open(Name("a.bin"), 0), 0);
  {
    KARBASICFILE copy(file);
    EXPECT_EQ(copy.GetUserData(), 5);
    EXPECT_EQ(copy.GetPhysicalLength(), 10);
    EXPECT_EQ(copy.SetPosition(7, 0), 7);
    EXPECT_EQ(file.GetPosition(), 7);
    KARBASICFILE assigned;
    assigned = copy;
    EXPECT_TRUE(assigned.IsFileOpened());
  }
  // The copies closed the shared file when they went; the original is left closed but usable.
  EXPECT_FALSE(file.IsFileOpened());
  EXPECT_EQ(file.ReOpen(0), 0);
  EXPECT_EQ(file.GetPosition(), 0);
}
