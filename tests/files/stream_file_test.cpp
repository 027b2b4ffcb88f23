#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "support/temp_dir.h"
#include "vextools/streamfile.h"

namespace {

constexpr unsigned kRead = 0x21, kReadWrite = 0x0B;

std::string Next(GTFILE& file, std::int32_t max = 1000) {
  std::vector<char> buffer(static_cast<std::size_t>(max) + 1, '#');
  const char* line = file.fgets(buffer.data(), max);
  return line ? std::string(line) : std::string("<null>");
}

// Reads every line, joining the pieces of lines that were cut at the cache end.
std::vector<std::string> AllLines(GTFILE& file) {
  std::vector<std::string> lines;
  std::string pending;
  for (;;) {
    char buffer[70000];
    if (!file.fgets(buffer, 69999)) break;
    pending += buffer;
    if (file.feol()) {
      lines.push_back(pending);
      pending.clear();
    }
  }
  if (!pending.empty()) lines.push_back(pending);
  return lines;
}

// Lines end at a line feed alone: what a derived stream does with the virtual primitives.
class LineFeedStream : public GTFILE {
 public:
  std::int32_t SearchEndOfLine(char* text, std::int32_t size) override {
    const void* found = std::memchr(text, '\n', static_cast<std::size_t>(size));
    return found ? static_cast<std::int32_t>(static_cast<const char*>(found) - text) : -1;
  }
  std::int32_t EndOfLineLength(char* text) override { return 1; }
};

}  // namespace

TEST(StreamFile, LinesEndAtCarriageReturnWithOptionalLineFeed) {
  vex::test::TempDir dir;
  vex::test::WriteAll("a.txt", "a\r\nb\rc");
  GTFILE file;
  ASSERT_EQ(file.fopen("a.txt", kRead), 1);
  EXPECT_EQ(Next(file), "a");
  EXPECT_EQ(file.ftell(), 3);  // both end-of-line bytes consumed
  EXPECT_EQ(Next(file), "b");
  EXPECT_EQ(file.ftell(), 5);
  EXPECT_FALSE(file.feof());
  EXPECT_EQ(Next(file), "c");
  EXPECT_TRUE(file.feof());
  EXPECT_TRUE(file.feol());
  EXPECT_EQ(Next(file), "<null>");
  EXPECT_EQ(file.GetLastError(), GTFILE_ERR_NO_LINE);
}

TEST(StreamFile, LineFeedsAloneDoNotEndLines) {
  vex::test::TempDir dir;
  vex::test::WriteAll("lf.txt", "one\ntwo\nthree\n");
  GTFILE file;
  ASSERT_EQ(file.fopen("lf.txt", kRead), 1);
  EXPECT_EQ(Next(file), "one\ntwo\nthree\n");
  EXPECT_EQ(Next(file), "<null>");

  LineFeedStream derived;
  ASSERT_EQ(derived.fopen("lf.txt", kRead), 1);
  EXPECT_EQ(Next(derived), "one");
  EXPECT_EQ(Next(derived), "two");
  EXPECT_EQ(Next(derived), "three");
  EXPECT_EQ(Next(derived), "<null>");
}

TEST(StreamFile, LineLongerThanTheCacheComesInPieces) {
  vex::test::TempDir dir;
  const std::string line = "abcdefghijklmnopqrstuvwxy";  // 25 bytes
  vex::test::WriteAll("long.txt", line + "\r\nx");
  GTFILE file;
  ASSERT_EQ(file.SetCacheSize(10), 1);
  ASSERT_EQ(file.fopen("long.txt", kRead), 1);
  EXPECT_EQ(file.LineLength(), 25);
  EXPECT_EQ(file.ftell(), 0);  // LineLength consumes nothing
  // Each piece is two bytes short of the unread cache, so a CR LF split by the cache end stays whole.
  EXPECT_EQ(Next(file), "abcdefgh");
  EXPECT_FALSE(file.feol());
  EXPECT_EQ(Next(file), "ijklmnop");
  EXPECT_FALSE(file.feol());
  EXPECT_EQ(Next(file), "qrstuvwx");  // its cache ended on the CR
  EXPECT_FALSE(file.feol());
  EXPECT_EQ(Next(file), "y");
  EXPECT_TRUE(file.feol());
  EXPECT_EQ(file.LineLength(), 1);
  EXPECT_EQ(Next(file), "x");
}

TEST(StreamFile, LinesAcrossCacheBoundariesWithSmallCaches) {
  vex::test::TempDir dir;
  std::vector<std::string> expected;
  std::string content;
  for (int i = 0; i < 300; ++i) {
    std::string line(static_cast<std::size_t>((i * 7) % 23), static_cast<char>('a' + i % 26));
    if (i % 5 == 0) line = "lf\n" + line;  // a line feed inside a line is text
    expected.push_back(line);
    content += line + (i % 3 == 0 ? "\r" : "\r\n");
  }
  content += "tail";
  expected.push_back("tail");
  vex::test::WriteAll("many.txt", content);
  for (std::int32_t cacheSize : {3, 4, 5, 7, 16, 31, 64, 4096}) {
    GTFILE file;
    ASSERT_EQ(file.SetCacheSize(cacheSize), 1);
    ASSERT_EQ(file.fopen("many.txt", kRead), 1);
    EXPECT_EQ(AllLines(file), expected) << "cache of " << cacheSize;
    EXPECT_TRUE(file.feof());
  }
}

TEST(StreamFile, ShortBufferPushesTheRestBack) {
  vex::test::TempDir dir;
  vex::test::WriteAll("s.txt", "abcdef\r\nxy\r\n");
  GTFILE file;
  ASSERT_EQ(file.fopen("s.txt", kRead), 1);
  EXPECT_EQ(Next(file, 3), "abc");
  EXPECT_EQ(file.ftell(), 3);
  EXPECT_EQ(Next(file, 3), "def");
  EXPECT_EQ(Next(file, 3), "xy");
  file.frewind(1);  // give back the y
  EXPECT_EQ(Next(file), "y");
  file.frewind(5);  // more than was returned: nothing happens
  EXPECT_EQ(file.ftell(), 12);
}

TEST(StreamFile, CacheSizeRules) {
  vex::test::TempDir dir;
  vex::test::WriteAll("c.txt", "x");
  GTFILE file;
  EXPECT_EQ(file.GetCacheSize(), 64000);
  EXPECT_EQ(file.SetCacheSize(64000), 0);  // kept: the default itself is refused
  EXPECT_EQ(file.GetLastError(), GTFILE_ERR_CACHE_SIZE);
  EXPECT_EQ(file.SetCacheSize(4096), 1);
  EXPECT_EQ(file.SetCacheSize(4096), 0);  // unchanged
  ASSERT_EQ(file.fopen("c.txt", kRead), 1);
  file.SetLastError(0);
  EXPECT_EQ(file.SetCacheSize(1000), 0);
  EXPECT_EQ(file.GetLastError(), GTFILE_ERR_IS_OPEN);
  EXPECT_EQ(file.GetCacheSize(), 4096);
  ASSERT_EQ(file.fclose(), 1);
  EXPECT_EQ(file.SetCacheSize(0), 1);
  EXPECT_EQ(file.fopen("c.txt", kRead), 0);  // no cache, no stream
  EXPECT_EQ(file.GetLastError(), GTFILE_ERR_CACHE);
  EXPECT_FALSE(file.IsOpen());
}

TEST(StreamFile, OpenAndCloseErrors) {
  vex::test::TempDir dir;
  GTFILE file;
  EXPECT_EQ(file.fopen("absent.txt", kRead), 0);
  EXPECT_EQ(file.GetLastError(), GTFILE_ERR_NOT_FOUND);
  std::filesystem::create_directory("folder");
  EXPECT_EQ(file.fopen("folder", kRead), 0);
  EXPECT_EQ(file.GetLastError(), GTFILE_ERR_OPEN);
  EXPECT_EQ(file.fclose(), 0);
  EXPECT_EQ(file.GetLastError(), GTFILE_ERR_CLOSE);
  EXPECT_EQ(file.fputs("x", 0), 0);
  EXPECT_EQ(file.GetLastError(), GTFILE_ERR_NOT_OPEN);
  EXPECT_EQ(file.fprintf("%d", 5), 0);  // closed: nothing, and no error of its own
  EXPECT_EQ(file.GetLastError(), GTFILE_ERR_NOT_OPEN);

  vex::test::WriteAll("r.txt", "read only");
  ASSERT_EQ(file.fopen("r.txt", kRead), 1);
  char name[260];
  file.FileName(name);
  EXPECT_STREQ(name, "r.txt");
  EXPECT_EQ(file.fputs("", 0), 0);
  EXPECT_EQ(file.GetLastError(), GTFILE_ERR_EMPTY_TEXT);
  EXPECT_EQ(file.fputs("abc", 0), 0);
  EXPECT_EQ(file.GetLastError(), GTFILE_ERR_WRITE);
  file.SetLastError(0);
  EXPECT_EQ(file.fprintf("%s", ""), 0);
  EXPECT_EQ(file.GetLastError(), GTFILE_ERR_FORMAT);
  EXPECT_EQ(file.fprintf("%d", 12), 0);
  EXPECT_EQ(file.GetLastError(), GTFILE_ERR_WRITE);
  EXPECT_EQ(file.fopen("r.txt", kRead), 1);  // reopening closes first
}

TEST(StreamFile, WritesEmptyTheCacheAndFormattedOutputHasNoBound) {
  vex::test::TempDir dir;
  GTFILE file;
  ASSERT_EQ(file.SetCacheSize(16), 1);
  ASSERT_EQ(file.fcreate("w.txt", kReadWrite), 1);
  EXPECT_EQ(file.fputs("first\r\n", 0), 1);
  EXPECT_EQ(file.fputs("second\r\nignored", 8), 1);
  const std::string wide(100, 'w');
  EXPECT_EQ(file.fprintf("%s=%d\r\n", wide.c_str(), 42), 105);  // far beyond the 16-byte cache
  EXPECT_EQ(file.FileLength(), 7 + 8 + 105);
  EXPECT_TRUE(file.feof());
  EXPECT_EQ(file.fseek(0, 0), 0);
  EXPECT_EQ(Next(file), "first");
  EXPECT_EQ(file.Write("SECOND", 6), 6);  // over the start of the second line; the cache is emptied
  EXPECT_EQ(file.ftell(), 13);
  EXPECT_EQ(file.fseek(7, 0), 0);
  EXPECT_EQ(Next(file), "SECOND");
  std::string third;
  while (!file.feof()) third += Next(file);
  EXPECT_EQ(third, wide + "=42");
  ASSERT_EQ(file.fclose(), 1);
  EXPECT_EQ(vex::test::ReadAll("w.txt").size(), 120u);
}

TEST(StreamFile, SeekOriginsAndReadResult) {
  vex::test::TempDir dir;
  vex::test::WriteAll("k.txt", "0123456789");
  GTFILE file;
  ASSERT_EQ(file.fopen("k.txt", kRead), 1);
  EXPECT_EQ(file.fseek(0, 2), 0);
  EXPECT_EQ(file.ftell(), 10);
  EXPECT_TRUE(file.feof());
  file.fseek(3, 2);  // kept: origin 2 subtracts
  EXPECT_EQ(file.ftell(), 7);
  file.fseek(-2, 1);
  EXPECT_EQ(file.ftell(), 5);
  char buffer[8] = {};
  EXPECT_EQ(file.Read(buffer, 3), 0);  // kept: the count is not reported
  EXPECT_STREQ(buffer, "567");
  EXPECT_EQ(file.ftell(), 8);
  file.fseek(0, 0);
  EXPECT_EQ(file.Read(buffer, 0), 0);
  EXPECT_EQ(file.fseek(4, 9), 0);  // any other origin: position -1, nothing to read
  EXPECT_EQ(file.ftell(), -1);
  EXPECT_EQ(Next(file), "<null>");
  EXPECT_EQ(file.LineLength(), 0);
  EXPECT_EQ(file.Read(buffer, 3), 0);
}

TEST(StreamFile, ReadCrossesCacheRefills) {
  vex::test::TempDir dir;
  std::string content;
  for (int i = 0; i < 1000; ++i) content += static_cast<char>('A' + i % 26);
  vex::test::WriteAll("r.bin", content);
  GTFILE file;
  ASSERT_EQ(file.SetCacheSize(64), 1);
  ASSERT_EQ(file.fopen("r.bin", kRead), 1);
  file.fseek(10, 0);
  std::string block(500, '\0');
  file.Read(block.data(), 500);
  EXPECT_EQ(block, content.substr(10, 500));
  EXPECT_EQ(file.ftell(), 510);
  file.Read(block.data(), 500);  // only 490 are left
  EXPECT_EQ(block.substr(0, 490), content.substr(510));
  EXPECT_TRUE(file.feof());
}
