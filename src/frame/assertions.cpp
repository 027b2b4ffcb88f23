#include <cstdio>
#include <cstring>
#include <string>

#include "frame/lifecycle_steps.h"
#include "platform/display.h"
#include "platform/process.h"
#include "ui/beep_box.h"
#include "vextools/binaryfile.h"
#include "vextools/frame.h"
#include "vextools/dates.h"
#include "vextools/strings.h"

namespace {

struct AssertionSettings {
  unsigned short report_level = 2;
  unsigned short break_level = 3;
  unsigned short behaviour = 1;
  std::int32_t exit_on_fatal = 1;
} g_settings;

KVBinaryFile* g_assert_log = nullptr;
std::int32_t g_do_not_ask_again = 0;

constexpr int kMessageSize = 1524;
constexpr int kFormattedLimit = 1024;  // what the platform's formatter produces at most, terminator included
constexpr int kCommentSize = 1024;
constexpr std::uint32_t kAssertLogFlags = 66;

const char* LevelTitle(unsigned short level) {
  switch (level) {
    case 1: return "Information";
    case 2: return "Warning !";
    case 3: return "Error !";
    case 4: return "Fatal Error !";
    default: return "";
  }
}

// One record: each separator is CR LF with its terminating zero, deliberately.
std::string AssertionRecord(const char* title, const char* message) {
  static const char kSeparator[3] = {'\r', '\n', '\0'};
  char stamp[50] = {};
  StringDateTime(stamp, 3, sizeof stamp);
  char rule[80] = {};
  rule[0] = '/';
  std::memset(rule + 1, '*', 77);
  rule[78] = '/';

  std::string record;
  record.append(kSeparator, 3).append(stamp, sizeof stamp).append(kSeparator, 3);
  record.append(title).append(kSeparator, 3);
  record.append(message).append(kSeparator, 3);
  record.append(rule, sizeof rule).append(kSeparator, 3);
  return record;
}

void WriteRecord(const char* title, const char* message) {
  if (!g_assert_log) {
    g_assert_log = new KVBinaryFile(_SS<char>("Assert.txt"), kAssertLogFlags);
    g_assert_log->SeekFromEnd(0);
  }
  if (!g_assert_log->IsOpen()) return;  // the record is skipped silently
  const std::string record = AssertionRecord(title, message);
  g_assert_log->Write(record.data(), static_cast<std::int32_t>(record.size()));
  g_assert_log->Flush();
}

void AskForComment(char* message) {
  if (g_do_not_ask_again) return;
  char comment[kCommentSize] = {};
  std::int32_t checked = g_do_not_ask_again;
  const int answer = vex::platform::ShowCommentDialog(vex::platform::ActiveWindow(), comment, kCommentSize, &checked);
  if (answer == -1) return;  // not shown
  StringConcat(message, "\r\n", kMessageSize, 1);
  StringConcat(message, comment, kMessageSize, 1);
  g_do_not_ask_again = checked;
}

}  // namespace

namespace vex::frame {
void DestroyAssertionLog() {
  delete g_assert_log;
  g_assert_log = nullptr;
}
}  // namespace vex::frame

int AssertMessage(unsigned short level, const char* text, const char* file, unsigned short line) {
  if (level >= g_settings.break_level) {
    vex::platform::DebugBreakNow();
    return 0;
  }
  if (level < g_settings.report_level) return 0;

  const char* title = LevelTitle(level);
  const std::int32_t exit_now = level == 4 ? g_settings.exit_on_fatal : 0;
  char message[kMessageSize];
  std::snprintf(message, kFormattedLimit, "Assertion failed : %s\r\n File %s, Line %d", text ? text : "(null)",
                file ? file : "(null)", static_cast<int>(line));

  switch (g_settings.behaviour) {
    case 1:
      StringConcat(message, "\nCancel to debug the application", kMessageSize, 1);
      if (vex::ui::BeepBox(vex::platform::ActiveWindow(), message, title, MB_OKCANCEL | MB_ICONSTOP) == IDCANCEL)
        vex::platform::DebugBreakNow();
      break;
    case 3:
      AskForComment(message);
      WriteRecord(title, message);
      break;
    case 2:
      WriteRecord(title, message);
      break;
    default:
      break;
  }
  if (exit_now) vex::platform::ExitNow(255);
  return 0;
}

void SetAssertionBehaviour(unsigned short reportLevel, unsigned short breakLevel, unsigned short behaviour,
                           std::int32_t exitOnFatal) {
  g_settings = {reportLevel, breakLevel, behaviour, exitOnFatal};
}
