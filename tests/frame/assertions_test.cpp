#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "frame/lifecycle_steps.h"
#include "platform/process.h"
#include "support/temp_dir.h"
#include "vextools/display.h"
#include "vextools/frame.h"

namespace {

struct Shown {
  std::vector<VEXDISPLAYREQUEST> boxes;
  std::vector<std::string> texts, titles;
  int dialogs = 0;
  std::int32_t box_answer = IDOK;
  std::int32_t dialog_answer = IDOK;
  std::string comment;
  std::int32_t tick = 0;
};

Shown* g_shown = nullptr;
int g_breaks = 0;

std::int32_t Record(const VEXDISPLAYREQUEST* request, void*) {
  if (request->kind == VEXDISPLAY_MESSAGEBOX) {
    g_shown->boxes.push_back(*request);
    g_shown->texts.emplace_back(request->text);
    g_shown->titles.emplace_back(request->title);
    return g_shown->box_answer;
  }
  ++g_shown->dialogs;
  EXPECT_EQ(request->dialogId, 217);
  EXPECT_EQ(request->editSize, 1024);
  if (g_shown->dialog_answer == IDOK) {
    std::strcpy(request->editText, g_shown->comment.c_str());
    *request->checked = g_shown->tick;
  }
  return g_shown->dialog_answer;
}

class Assertions : public testing::Test {
 protected:
  void SetUp() override {
    g_shown = &shown;
    g_breaks = 0;
    VexSetDisplayCallback(Record, nullptr);
    vex::platform::SetDebugBreakHook([] { ++g_breaks; });
    SetAssertionBehaviour(2, 3, 1, 1);
  }
  void TearDown() override {
    vex::frame::DestroyAssertionLog();
    SetAssertionBehaviour(2, 3, 1, 1);
    vex::platform::SetDebugBreakHook(nullptr);
    VexSetDisplayCallback(nullptr, nullptr);
  }
  std::vector<char> Log() const { return vex::test::ReadAll(dir.file("Assert.txt")); }

  vex::test::TempDir dir;
  Shown shown;
};

constexpr char kSep[3] = {'\r', '\n', '\0'};

// Checks one record at offset and returns its length.
std::size_t ExpectRecord(const std::vector<char>& log, std::size_t at, const std::string& title,
                         const std::string& message) {
  const std::size_t length = 3 + 50 + 3 + title.size() + 3 + message.size() + 3 + 80 + 3;
  EXPECT_GE(log.size(), at + length);
  if (log.size() < at + length) return length;
  const char* p = log.data() + at;
  EXPECT_EQ(std::memcmp(p, kSep, 3), 0);
  const std::string stamp(p + 3);
  EXPECT_TRUE(std::regex_match(stamp, std::regex(R"(\d\d:\d\d:\d{4},\d\d:\d\d:\d\d)"))) << stamp;
  for (std::size_t i = stamp.size(); i < 50; ++i) EXPECT_EQ(p[3 + i], '\0');
  p += 53;
  EXPECT_EQ(std::memcmp(p, kSep, 3), 0);
  EXPECT_EQ(std::string(p + 3, title.size()), title);
  p += 3 + title.size();
  EXPECT_EQ(std::memcmp(p, kSep, 3), 0);
  EXPECT_EQ(std::string(p + 3, message.size()), message);
  p += 3 + message.size();
  EXPECT_EQ(std::memcmp(p, kSep, 3), 0);
  EXPECT_EQ(std::string(p + 3, 80), "/" + std::string(77, '*') + "/" + std::string(1, '\0'));
  EXPECT_EQ(std::memcmp(p + 83, kSep, 3), 0);
  return length;
}

}  // namespace

TEST_F(Assertions, DefaultsIgnoreInformationShowWarningsAndBreakOnErrors) {
  EXPECT_EQ(AssertMessage(1, "low", "a.cpp", 1), 0);
  EXPECT_TRUE(shown.boxes.empty());

  EXPECT_EQ(AssertMessage(2, "x > 0", "map.cpp", 42), 0);
  ASSERT_EQ(shown.boxes.size(), 1u);
  EXPECT_EQ(shown.texts[0], "Assertion failed : x > 0\r\n File map.cpp, Line 42\nCancel to debug the application");
  EXPECT_EQ(shown.titles[0], "Warning !");
  EXPECT_EQ(shown.boxes[0].style, MB_OKCANCEL | MB_ICONSTOP);
  EXPECT_EQ(g_breaks, 0);

  shown.box_answer = IDCANCEL;
  AssertMessage(2, "again", "map.cpp", 43);
  EXPECT_EQ(g_breaks, 1);

  AssertMessage(3, "error", "map.cpp", 44);
  AssertMessage(4, "fatal", "map.cpp", 45);
  EXPECT_EQ(g_breaks, 3);
  EXPECT_EQ(shown.boxes.size(), 2u);
  EXPECT_FALSE(std::filesystem::exists(dir.file("Assert.txt")));
}

TEST_F(Assertions, RecordsAreAppendedByteForByte) {
  SetAssertionBehaviour(1, 9, 2, 0);
  AssertMessage(1, "first", "a.cpp", 1);
  AssertMessage(4, "second", "b.cpp", 65535);  // exit on fatal is off
  AssertMessage(7, "odd level", "c.cpp", 3);
  const std::vector<char> log = Log();
  std::size_t at = ExpectRecord(log, 0, "Information", "Assertion failed : first\r\n File a.cpp, Line 1");
  at += ExpectRecord(log, at, "Fatal Error !", "Assertion failed : second\r\n File b.cpp, Line 65535");
  at += ExpectRecord(log, at, "", "Assertion failed : odd level\r\n File c.cpp, Line 3");
  EXPECT_EQ(at, log.size());
  EXPECT_TRUE(shown.boxes.empty());
}

TEST_F(Assertions, AnExistingLogIsAppendedTo) {
  vex::test::WriteAll(dir.file("Assert.txt"), "older");
  SetAssertionBehaviour(2, 5, 2, 0);
  AssertMessage(3, "t", "f", 9);
  const std::vector<char> log = Log();
  ASSERT_GT(log.size(), 5u);
  EXPECT_EQ(std::string(log.data(), 5), "older");
  ExpectRecord(log, 5, "Error !", "Assertion failed : t\r\n File f, Line 9");
}

TEST_F(Assertions, CommentIsAskedUntilTheUserDeclinesFurtherQuestions) {
  SetAssertionBehaviour(2, 5, 3, 0);
  shown.dialog_answer = IDCANCEL;
  AssertMessage(2, "one", "f", 1);
  shown.dialog_answer = IDOK;
  shown.comment = "while zooming";
  shown.tick = 1;
  AssertMessage(2, "two", "f", 2);
  AssertMessage(2, "three", "f", 3);  // not asked again
  EXPECT_EQ(shown.dialogs, 2);
  const std::vector<char> log = Log();
  std::size_t at = ExpectRecord(log, 0, "Warning !", "Assertion failed : one\r\n File f, Line 1\r\n");
  at += ExpectRecord(log, at, "Warning !", "Assertion failed : two\r\n File f, Line 2\r\nwhile zooming");
  at += ExpectRecord(log, at, "Warning !", "Assertion failed : three\r\n File f, Line 3");
  EXPECT_EQ(at, log.size());
}

TEST_F(Assertions, OtherBehavioursShowAndWriteNothing) {
  SetAssertionBehaviour(1, 5, 9, 0);
  AssertMessage(2, "quiet", "f", 1);
  EXPECT_TRUE(shown.boxes.empty());
  EXPECT_FALSE(std::filesystem::exists(dir.file("Assert.txt")));
}

TEST_F(Assertions, LongTextsAreBoundedNotOverrun) {
  const std::string huge(5000, 'x');
  AssertMessage(2, huge.c_str(), huge.c_str(), 1);
  ASSERT_EQ(shown.texts.size(), 1u);
  EXPECT_LT(shown.texts[0].size(), 1524u);
}

TEST(AssertionsDeathTest, FatalAssertionEndsTheProcessWith255AfterTheRecord) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto where = std::filesystem::temp_directory_path() / "vextools-fatal-assertion";
  std::filesystem::remove_all(where);
  std::filesystem::create_directories(where);
  EXPECT_EXIT(
      {
        std::filesystem::current_path(where);
        SetAssertionBehaviour(1, 5, 2, 1);
        AssertMessage(4, "fatal", "f", 1);
      },
      testing::ExitedWithCode(255), "");
  const std::vector<char> log = vex::test::ReadAll((where / "Assert.txt").string());
  ExpectRecord(log, 0, "Fatal Error !", "Assertion failed : fatal\r\n File f, Line 1");
  std::filesystem::remove_all(where);
}
