#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "files/report_name.h"
#include "support/temp_dir.h"
#include "vextools/errorfile.h"

using vex::files::kReportPathSeparator;
using vex::files::ReplaceExtension;
using vex::test::AsText;
using vex::test::Name;
using vex::test::ReadAll;
using vex::test::TempDir;
using vex::test::WriteAll;

namespace {

std::string Path(std::initializer_list<const char*> parts) {
  std::string path;
  for (const char* part : parts) path += (path.empty() ? "" : std::string(1, kReportPathSeparator)) + part;
  return path;
}

}  // namespace

TEST(ErrorFile, ReportNameReplacesTheExtensionOfTheLastComponent) {
  EXPECT_EQ(ReplaceExtension(Path({"DATA", "ROADS.TXT"}).c_str(), ".ERR"), Path({"DATA", "ROADS.ERR"}));
  EXPECT_EQ(ReplaceExtension(Path({"DATA", "ROADS.V1.TXT"}).c_str(), ".ERR"), Path({"DATA", "ROADS.ERR"}));
  EXPECT_EQ(ReplaceExtension(Path({"DATA.D", "ROADS"}).c_str(), ".ERR"), Path({"DATA.D", "ROADS.ERR"}));
  EXPECT_EQ(ReplaceExtension("ROADS", ".ERR"), "ROADS.ERR");
  EXPECT_EQ(ReplaceExtension(".hidden", ".ERR"), ".ERR");
  EXPECT_EQ(ReplaceExtension(Path({"DATA", ""}).c_str(), ".ERR"), Path({"DATA", ".ERR"}));
#if defined(_WIN32)
  EXPECT_EQ(ReplaceExtension("C:/DATA.D\\ROADS", ".ERR"), "C:/DATA.D\\ROADS.ERR");
  EXPECT_EQ(ReplaceExtension("DATA.D/ROADS", ".ERR"), "DATA.ERR");  // only the backslash separates
#else
  EXPECT_EQ(ReplaceExtension("DATA.D\\ROADS", ".ERR"), "DATA.ERR");  // a backslash is part of the name
#endif
}

TEST(ErrorFile, UnwrittenReportIsRemoved) {
  TempDir dir;
  WriteAll("A.TXT", "input");
  {
    KARERRORFILE report(Name("A.TXT"));
    EXPECT_TRUE(std::filesystem::exists("A.ERR"));
    EXPECT_EQ(std::filesystem::file_size("A.ERR"), 0u);
  }
  EXPECT_FALSE(std::filesystem::exists("A.ERR"));
  EXPECT_TRUE(std::filesystem::exists("A.TXT"));
}

TEST(ErrorFile, WritesAppendAndTheReportStays) {
  TempDir dir;
  std::filesystem::create_directory("DATA.D");
  const std::string input = Path({"DATA.D", "ROADS"});
  const std::string report = input + ".ERR";
  KARERRORFILE* file = FileErrOpen(const_cast<char*>(input.c_str()));
  ASSERT_NE(file, nullptr);
  FileErrWrite(file, Name("a\r\n"));
  EXPECT_EQ(AsText(ReadAll(report)), "a\r\n");  // complete on disk after every write
  FileErrWrite(file, Name("b\r\n"));
  FileErrWrite(file, nullptr);
  FileErrWrite(file, Name(""));
  FileErrClose(file);
  EXPECT_EQ(AsText(ReadAll(report)), "a\r\nb\r\n");

  // A new object on the same input empties the report first.
  {
    KARERRORFILE again(const_cast<char*>(input.c_str()));
    EXPECT_EQ(std::filesystem::file_size(report), 0u);
  }
  EXPECT_FALSE(std::filesystem::exists(report));
}

TEST(ErrorFile, ReportsThatCannotBeNamedAreNotWritten) {
  TempDir dir;
  {
    KARERRORFILE none;
    none.Write(Name("lost"));
    KARERRORFILE empty(Name(""));
    empty.Write(Name("lost"));
    KARERRORFILE null(nullptr);
    null.Write(Name("lost"));
    const std::string longName(257, 'x');  // + ".ERR" does not fit the name field
    KARERRORFILE tooLong(const_cast<char*>(longName.c_str()));
    tooLong.Write(Name("lost"));
    KARERRORFILE missingDirectory(const_cast<char*>(Path({"nowhere", "A.TXT"}).c_str()));
    missingDirectory.Write(Name("lost"));
  }
  EXPECT_TRUE(std::filesystem::is_empty(dir.path()));
  FileErrWrite(nullptr, Name("x"));
  FileErrClose(nullptr);
}

TEST(ErrorFile, MakeFileNameRenamesTheReport) {
  TempDir dir;
  {
    KARERRORFILE report(Name("A.TXT"));
    report.MakeFileName(nullptr);  // unchanged
    report.Write(Name("1"));
    report.MakeFileName(Name("B.CSV"));
    report.Write(Name("2"));  // B.ERR was never created: nothing written
  }
  EXPECT_EQ(AsText(ReadAll("A.ERR")), "1");
  EXPECT_FALSE(std::filesystem::exists("B.ERR"));
}
