#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>

#include "support/temp_dir.h"
#include "vextools/frame.h"

namespace {
std::string Text(const std::string& name) {
  const auto bytes = vex::test::ReadAll(name);
  return {bytes.begin(), bytes.end()};
}
}  // namespace

// One test: the trace object lives for the whole process once the first VexDebugFile made it.
TEST(DebugTrace, LifeOfTheTraceFile) {
  vex::test::TempDir dir;
  EXPECT_EQ(VexDebugMessage("too early"), 0);
  EXPECT_TRUE(std::filesystem::is_empty(dir.path()));

  VexDebugFile("trace.txt", 1);
  EXPECT_EQ(VexDebugMessage("first"), 1);
  EXPECT_EQ(VexDebugTime(), 1);
  const std::string text = Text(dir.file("trace.txt"));
  EXPECT_TRUE(std::regex_match(text, std::regex("first\r\nDate/Time : \\d\\d:\\d\\d:\\d{4},\\d\\d:\\d\\d:\\d\\d\r\n")))
      << text;

  VexDebugFile("trace.txt", 0);  // reopened at its end
  VexDebugMessage("second");
  EXPECT_EQ(Text(dir.file("trace.txt")).substr(text.size()), "second\r\n");

  VexDebugFile("trace.txt", 1);  // truncated
  VexDebugMessage("");
  EXPECT_EQ(Text(dir.file("trace.txt")), "\r\n");

  VexDebugFile("missing.txt", 0);  // cannot be opened: the default file takes the lines
  EXPECT_EQ(VexDebugMessage("fallback"), 1);
  EXPECT_FALSE(std::filesystem::exists(dir.file("missing.txt")));
  EXPECT_EQ(Text(dir.file("VEXDEBUG.TXT")), "fallback\r\n");
  // Park the trace outside so the temporary directory can go.
  VexDebugFile((std::filesystem::temp_directory_path() / "vextools-trace-parking.txt").string().c_str(), 1);
}
