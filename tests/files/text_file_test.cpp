#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "support/temp_dir.h"
#include "vextools/textfile.h"

namespace {

class TextFile : public KARTEXTFILE {
 public:
  using KARTEXTFILE::KARTEXTFILE;
  std::size_t IndexBytes() { return GlobalSize(lineIndex_); }
};

std::vector<std::string> ReadLines(KARTEXTFILE& file) {
  std::vector<std::string> lines;
  while (tagFILELINE* line = file.GetLine()) lines.emplace_back(line->data);
  return lines;
}

std::vector<std::string> Fields(KARTEXTFILE& file, tagFILELINE* line) {
  std::vector<std::string> fields;
  char* field = nullptr;
  while (file.GetFieldData(line, field) > 0) fields.emplace_back(field);
  return fields;
}

// Lines of varied lengths, joined by the given separator; the last has none when open is set.
std::string Join(const std::vector<std::string>& lines, const std::string& separator, bool open = false) {
  std::string text;
  for (std::size_t i = 0; i < lines.size(); ++i)
    text += lines[i] + (open && i + 1 == lines.size() ? "" : separator);
  return text;
}

std::vector<std::string> VariedLines(int count, int seed) {
  std::vector<std::string> lines;
  for (int i = 0; i < count; ++i) {
    const int length = (i * 37 + seed) % 211;
    std::string line;
    for (int j = 0; j < length; ++j) line += j % 9 == 8 ? '\t' : static_cast<char>('a' + (i + j) % 26);
    lines.push_back(line);
  }
  return lines;
}

}  // namespace

TEST(TextFile, LinesSizesAndTheLastLineWithoutSeparator) {
  vex::test::TempDir dir;
  vex::test::WriteAll("t.txt", "one\r\ntwo\r\n\r\nlast");
  TextFile file("t.txt");
  ASSERT_TRUE(file.IsFileOpened());
  EXPECT_EQ(file.FileLength(), 16);
  tagFILELINE* line = file.GetLine();
  ASSERT_NE(line, nullptr);
  EXPECT_STREQ(line->data, "one");
  EXPECT_EQ(line->size, 5);
  EXPECT_EQ(line->position, 0);
  EXPECT_EQ(file.GetPosition(), 5);
  EXPECT_STREQ(file.GetLine()->data, "two");
  line = file.GetLine();
  EXPECT_STREQ(line->data, "");
  EXPECT_EQ(line->size, 2);
  EXPECT_FALSE(file.IsEof());
  line = file.GetLine();
  ASSERT_NE(line, nullptr);
  EXPECT_STREQ(line->data, "last");
  EXPECT_EQ(line->position, 12);
  EXPECT_TRUE(file.IsEof());
  EXPECT_EQ(file.GetLine(), nullptr);
}

TEST(TextFile, UnixFilesAreDetectedAndRead) {
  vex::test::TempDir dir;
  vex::test::WriteAll("u.txt", "alpha\nbeta\n\ngamma");
  vex::test::WriteAll("d.txt", "alpha\r\nbeta\n");
  TextFile unix("u.txt");
  EXPECT_EQ(unix.IsUNIXTextFile(), 1);
  EXPECT_EQ(unix.IsUNIXTextFile(), 1);  // looking does not start the reading
  EXPECT_EQ(ReadLines(unix), (std::vector<std::string>{"alpha", "beta", "", "gamma"}));
  EXPECT_EQ(unix.IsUNIXTextFile(), 0);  // reading has started
  TextFile dos("d.txt");
  EXPECT_EQ(dos.IsUNIXTextFile(), 0);
  EXPECT_EQ(ReadLines(dos), (std::vector<std::string>{"alpha", "beta"}));

  // A carriage return anywhere further in the block still ends the line there.
  vex::test::WriteAll("r.txt", "a\nb\r\nc\n");
  TextFile mixed("r.txt");
  EXPECT_EQ(ReadLines(mixed), (std::vector<std::string>{"a\nb", "c"}));
  // Lines read by number end at their own separator, whichever it is.
  EXPECT_EQ(unix.MakeIndexLine(), 4);
  EXPECT_STREQ(unix.GetLineNr(2)->data, "beta");
  EXPECT_STREQ(unix.GetLineNr(1)->data, "alpha");
  EXPECT_STREQ(unix.GetLineNr(4)->data, "gamma");
}

TEST(TextFile, UnixModeReadsSmallBlocksAcrossBoundaries) {
  vex::test::TempDir dir;
  const std::vector<std::string> lines = VariedLines(400, 3);
  for (const char* separator : {"\r\n", "\n"}) {
    vex::test::WriteAll("m.txt", Join(lines, separator, true));
    TextFile file("m.txt");
    file.SwitchToUNIXMode();  // 1000-byte blocks: a line crosses a block end every few lines
    EXPECT_EQ(ReadLines(file), lines) << "separator of " << std::strlen(separator);
    EXPECT_TRUE(file.IsEof());
  }
  // Switching is refused once reading has started.
  vex::test::WriteAll("m.txt", Join(lines, "\r\n"));
  TextFile late("m.txt");
  late.GetLine();
  late.SwitchToUNIXMode();
  std::size_t count = 1;
  while (late.GetLine()) ++count;
  EXPECT_EQ(count, lines.size());
}

TEST(TextFile, LinesLongerThanTheBlockComeInPiecesAndSeparatorsSplitByTheBlockEnd) {
  vex::test::TempDir dir;
  const std::string longLine(2500, 'x');
  const std::string exact(999, 'e');  // with its CR the block's last byte, its LF opens the next block
  vex::test::WriteAll("p.txt", exact + "\r\n" + "short\r\n" + longLine + "\r\nend");
  TextFile file("p.txt");
  file.SwitchToUNIXMode();
  EXPECT_EQ(std::string(file.GetLine()->data), exact);
  EXPECT_STREQ(file.GetLine()->data, "short");
  std::string joined;
  tagFILELINE* line;
  while ((line = file.GetLine()) && std::string(line->data) != "end") {
    joined += std::string(line->data, std::strlen(line->data));
    EXPECT_LE(std::strlen(line->data), 1000u);
    if (line->size > 1000) {  // a piece cut by the block end counts one byte more
      char* data = nullptr;
      EXPECT_EQ(file.GetLineData(line, 995, 20, data), line->size - 995);
      EXPECT_EQ(std::string(data, 5), "xxxxx");
    }
  }
  EXPECT_EQ(joined, longLine);
  ASSERT_NE(line, nullptr);
  EXPECT_TRUE(file.IsEof());
}

TEST(TextFile, FullSizeBlocksAreCrossedCleanly) {
  vex::test::TempDir dir;
  const std::vector<std::string> lines = VariedLines(9000, 11);  // about 950 KB: four blocks
  vex::test::WriteAll("big.txt", Join(lines, "\r\n"));
  TextFile file("big.txt");
  EXPECT_EQ(ReadLines(file), lines);
  EXPECT_EQ(file.MakeIndexLine(), 9000);
  EXPECT_EQ(ReadLines(file), lines);  // the index rewinds: sequential reading starts again
  for (std::int32_t n : {1, 2, 3, 2760, 2761, 2762, 5000, 8999, 9000, 4}) {
    tagFILELINE* line = file.GetLineNr(n);
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(std::string(line->data), lines[n - 1]) << "line " << n;
  }
  tagFILELINE* next = file.GetLine();
  ASSERT_NE(next, nullptr);
  EXPECT_EQ(std::string(next->data), lines[4]);  // reading goes on after the line read by number
}

TEST(TextFile, IndexOfTwelveThousandLinesGrowsTwice) {
  vex::test::TempDir dir;
  std::string text;
  for (int i = 1; i <= 12000; ++i) text += "line " + std::to_string(i) + "\r\n";
  vex::test::WriteAll("i.txt", text);
  TextFile file("i.txt");
  EXPECT_EQ(file.IndexBytes(), 20000u);
  EXPECT_EQ(file.GetLineCount(), 12000);
  EXPECT_EQ(file.IndexBytes(), 80000u);  // grown at 5000 and at 10000 lines
  for (std::int32_t n = 1; n <= 12000; n += 997) {
    ASSERT_NE(file.GetLineNr(n), nullptr);
    EXPECT_EQ(std::string(file.GetLineNr(n)->data), "line " + std::to_string(n));
  }
  // In order, each line after the first comes from the block already read.
  for (std::int32_t n = 4990; n <= 5010; ++n) EXPECT_EQ(std::string(file.GetLineNr(n)->data), "line " + std::to_string(n));
  EXPECT_EQ(std::string(file.GetLineNr(12000)->data), "line 12000");
  EXPECT_EQ(file.GetLineNr(0), nullptr);
  EXPECT_EQ(file.GetLineNr(12001), nullptr);
}

TEST(TextFile, Separators) {
  vex::test::TempDir dir;
  vex::test::WriteAll("s.txt", "a;b;c");
  TextFile file("s.txt");
  EXPECT_STREQ(file.GetLineSeparator(), "\r\n");
  EXPECT_STREQ(file.GetFieldSeparator(), "\t");
  EXPECT_EQ(file.SetLineSeparator("\n\r"), 0);
  EXPECT_EQ(file.SetLineSeparator("ab"), 0);
  EXPECT_EQ(file.SetLineSeparator(""), 0);
  EXPECT_STREQ(file.GetLineSeparator(), "\r\n");
  EXPECT_EQ(file.SetFieldSeparator(",,"), 0);
  EXPECT_EQ(file.SetLineSeparator(";"), 1);
  EXPECT_EQ(ReadLines(file), (std::vector<std::string>{"a", "b", "c"}));
  EXPECT_EQ(file.SetLineSeparator("\r\n"), 1);
}

TEST(TextFile, FieldsOfALine) {
  vex::test::TempDir dir;
  vex::test::WriteAll("f.txt", "a\t\tb\r\nx,y\r\nsolo\r\n");
  TextFile file("f.txt");
  tagFILELINE* line = file.GetLine();
  EXPECT_EQ(file.MakeIndexField(line), 3);
  char field[32];
  EXPECT_EQ(file.GetFieldNr(line, 2, field), 1);
  EXPECT_STREQ(field, "");
  EXPECT_EQ(file.GetFieldNr(line, 3, field), 1);
  EXPECT_STREQ(field, "b");
  EXPECT_EQ(file.GetFieldNr(line, 4, field), 0);
  EXPECT_EQ(Fields(file, line), (std::vector<std::string>{"a", "", "b"}));
  EXPECT_STREQ(line->data, "a\t\tb");  // fields are cut in the copy, not in the line
  EXPECT_EQ(file.GetFieldSize(), 2);

  ASSERT_EQ(file.SetFieldSeparator(","), 1);
  line = file.GetLine();
  EXPECT_EQ(Fields(file, line), (std::vector<std::string>{"x", "y"}));
  line = file.GetLine();
  EXPECT_EQ(file.MakeIndexField(line), 1);
  EXPECT_EQ(file.GetFieldNr(line, 1, field), 1);
  EXPECT_STREQ(field, "solo");

  // Another record than the object's own is refused.
  tagFILELINE foreign = *line;
  char* data = nullptr;
  EXPECT_EQ(file.GetFieldData(&foreign, data), 0);
  EXPECT_EQ(file.MakeIndexField(&foreign), 0);
  EXPECT_EQ(file.GetLineSize(&foreign), 0);
  EXPECT_EQ(file.GetLineData(&foreign, 0, 1, data), 0);
  EXPECT_EQ(file.GetFieldNr(&foreign, 1, field), 0);
}

TEST(TextFile, ManyFieldsGrowTheFieldIndex) {
  vex::test::TempDir dir;
  std::string line;
  for (int i = 0; i < 2500; ++i) line += std::to_string(i) + "\t";
  line += "end";
  vex::test::WriteAll("w.txt", line + "\r\n");
  TextFile file("w.txt");
  tagFILELINE* record = file.GetLine();
  EXPECT_EQ(file.MakeIndexField(record), 2501);
  char field[16];
  EXPECT_EQ(file.GetFieldNr(record, 2000, field), 1);
  EXPECT_STREQ(field, "1999");
  EXPECT_EQ(file.GetFieldNr(record, 2501, field), 1);
  EXPECT_STREQ(field, "end");
  EXPECT_EQ(Fields(file, record).size(), 2501u);
}

TEST(TextFile, FieldCountSkipsCommentsAndShortLines) {
  vex::test::TempDir dir;
  vex::test::WriteAll("c.txt", "// a\tcomment\r\nab\r\n\r\n//x\r\n1\t2\t3\t4\r\n5\t6\r\n");
  TextFile file("c.txt");
  EXPECT_EQ(file.GetFieldCount(), 4);
  vex::test::WriteAll("n.txt", "//only\r\nab\r\n");
  TextFile none("n.txt");
  EXPECT_EQ(none.GetFieldCount(), 0);
}

TEST(TextFile, LineDataRanges) {
  vex::test::TempDir dir;
  vex::test::WriteAll("d.txt", "0123456789\r\n");
  TextFile file("d.txt");
  tagFILELINE* line = file.GetLine();
  char* data = nullptr;
  EXPECT_EQ(file.GetLineSize(line), 12);
  EXPECT_EQ(file.GetLineData(line, 2, 3, data), 3);
  EXPECT_EQ(std::string(data, 3), "234");
  EXPECT_EQ(file.GetLineData(line, 8, 10, data), 4);  // never past the line
  EXPECT_EQ(std::string(data, 2), "89");
  EXPECT_EQ(file.GetLineData(line, 12, 1, data), 0);
  EXPECT_EQ(file.GetLineData(line, -1, 1, data), 0);
  EXPECT_EQ(file.GetLineData(line, 0, 0, data), 0);
}

TEST(TextFile, SetPositionStartsReadingThere) {
  vex::test::TempDir dir;
  vex::test::WriteAll("p.txt", "first\r\nsecond\r\nthird");
  TextFile file("p.txt");
  EXPECT_EQ(file.SetPosition(7), 7);
  EXPECT_STREQ(file.GetLine()->data, "second");
  EXPECT_STREQ(file.GetLine()->data, "third");
  EXPECT_TRUE(file.IsEof());
  file.SetPosition(15);
  EXPECT_FALSE(file.IsEof());
  EXPECT_STREQ(file.GetLine()->data, "third");
  file.SetPosition(20);
  EXPECT_EQ(file.GetLine(), nullptr);
}

TEST(TextFile, FlatFunctions) {
  vex::test::TempDir dir;
  EXPECT_EQ(FileTxtOpen("absent.txt"), nullptr);
  EXPECT_EQ(FileTxtGetLine(nullptr), nullptr);
  EXPECT_EQ(FileTxtMakeIndexLine(nullptr), 0);
  EXPECT_EQ(FileTxtIsUNIXFile(nullptr), 0);
  FileTxtClose(nullptr);
  FileTxtSetUNIXMode(nullptr);

  vex::test::WriteAll("h.txt", "k;v\nx;y\n");
  void* handle = FileTxtOpen("h.txt");
  ASSERT_NE(handle, nullptr);
  EXPECT_EQ(FileTxtLength(handle), 8);
  EXPECT_EQ(FileTxtIsUNIXFile(handle), 1);
  EXPECT_EQ(FileTxtSetFieldSeparator(handle, ";"), 1);
  EXPECT_EQ(FileTxtGetLineCount(handle), 2);
  EXPECT_EQ(FileTxtGetFieldCount(handle), 2);
  tagFILELINE* line = FileTxtGetLineNr(handle, 2);
  ASSERT_NE(line, nullptr);
  EXPECT_STREQ(line->data, "x;y");
  char* field = nullptr;
  EXPECT_EQ(FileTxtGetFieldData(handle, line, &field), 2);
  EXPECT_STREQ(field, "x");
  EXPECT_EQ(FileTxtMakeIndexField(handle, line), 2);
  char text[8];
  EXPECT_EQ(FileTxtGetFieldNr(handle, line, 2, text), 1);
  EXPECT_STREQ(text, "y");
  EXPECT_EQ(FileTxtSetLineSeparator(handle, "\n"), 1);
  EXPECT_EQ(FileTxtSetPosition(handle, 0), 0);
  line = FileTxtGetLine(handle);
  EXPECT_EQ(FileTxtGetLineSize(handle, line), 4);
  char* data = nullptr;
  EXPECT_EQ(FileTxtGetLineData(handle, line, 2, 1, &data), 1);
  EXPECT_EQ(*data, 'v');
  EXPECT_EQ(FileTxtGetPosition(handle), 4);
  FileTxtGetLine(handle);
  EXPECT_EQ(FileTxtGetLine(handle), nullptr);
  EXPECT_EQ(FileTxtIsEOF(handle), 1);
  FileTxtClose(handle);
}
