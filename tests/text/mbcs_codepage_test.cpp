// Where the active code page comes from on POSIX, and the tables that follow it.
#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "platform/codepage.h"
#include "text/mbcs_core.h"
#include "vextools/mbstring.h"

namespace {

#ifndef _WIN32
// Sets the code-page environment for one test and puts the original back, tables included.
class CodePageEnvironment : public testing::Test {
 protected:
  static constexpr const char* kNames[] = {"VEXTOOLS_ACP", "LC_ALL", "LC_CTYPE", "LANG"};

  void SetUp() override {
    for (const char* name : kNames) {
      const char* value = std::getenv(name);
      saved_.push_back(value ? std::optional<std::string>(value) : std::nullopt);
      unsetenv(name);
    }
  }

  void TearDown() override {
    for (std::size_t i = 0; i < saved_.size(); ++i) {
      if (saved_[i]) {
        setenv(kNames[i], saved_[i]->c_str(), 1);
      } else {
        unsetenv(kNames[i]);
      }
    }
    vex::text::ReinitMultibyteTables();
  }

  static std::uint32_t PageWith(const char* name, const char* value) {
    setenv(name, value, 1);
    vex::platform::RereadActiveCodePage();
    const std::uint32_t page = vex::platform::ActiveCodePage();
    unsetenv(name);
    return page;
  }

 private:
  std::vector<std::optional<std::string>> saved_;
};

TEST_F(CodePageEnvironment, ComesFromTheVariableThenTheLocale) {
  vex::platform::RereadActiveCodePage();
  EXPECT_EQ(vex::platform::ActiveCodePage(), 1252u);  // nothing set
  EXPECT_EQ(PageWith("VEXTOOLS_ACP", "949"), 949u);
  EXPECT_EQ(PageWith("VEXTOOLS_ACP", "x"), 1252u);  // not a number: ignored
  EXPECT_EQ(PageWith("LANG", "ja_JP.UTF-8"), 932u);
  EXPECT_EQ(PageWith("LANG", "ja_JP.eucJP"), 932u);
  EXPECT_EQ(PageWith("LC_ALL", "zh_TW.UTF-8"), 950u);
  EXPECT_EQ(PageWith("LC_CTYPE", "zh_CN.GB18030"), 936u);
  EXPECT_EQ(PageWith("LANG", "ru_RU.KOI8-R"), 1251u);
  EXPECT_EQ(PageWith("LANG", "de_DE.ISO-8859-15@euro"), 1252u);
  EXPECT_EQ(PageWith("LANG", "pl_PL.UTF-8"), 1250u);
  EXPECT_EQ(PageWith("LANG", "C"), 1252u);
  setenv("LANG", "ja_JP.UTF-8", 1);
  EXPECT_EQ(PageWith("LC_ALL", "C.UTF-8"), 1252u);  // LC_ALL wins over LANG
}

TEST_F(CodePageEnvironment, TablesFollowTheCodePage) {
  setenv("VEXTOOLS_ACP", "936", 1);
  vex::text::ReinitMultibyteTables();
  EXPECT_EQ(vex::text::Multibyte().code_page, 936u);
  EXPECT_NE(VexIsDBCSEnabled(), 0u);
  EXPECT_NE(VexGetTabBLeadByte()[0xFE], 0u);
  EXPECT_EQ(VexNbChar("\xC4\xE3" "a"), 2);
  setenv("VEXTOOLS_ACP", "1250", 1);
  vex::text::ReinitMultibyteTables();
  EXPECT_EQ(VexIsDBCSEnabled(), 0u);
  char text[] = "\x9A";  // s with caron in 1250
  EXPECT_STREQ(VexCharUpper(text, 0), "\x8A");
}
#endif

}  // namespace
