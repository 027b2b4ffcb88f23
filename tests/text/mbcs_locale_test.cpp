// Locale mapping, comparison and case conversion, in the active code page.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "text/mbcs_core.h"
#include "vextools/mbstring.h"
#include "vextools/strings.h"

namespace {

bool Japanese() { return vex::text::Multibyte().code_page == 932; }

std::string Transform(const char* text, std::uint32_t flags) {
  char out[256] = {};
  const std::int32_t result = VexTransformString(text, out, sizeof out, flags);
  if (result < 0) return "<failed>";
  EXPECT_EQ(result, static_cast<std::int32_t>(std::strlen(out)));
  return out;
}

TEST(VexStringCompare, NullsOrderBeforeText) {
  EXPECT_EQ(VexStringCompare(nullptr, nullptr, -1, 0), 0);
  EXPECT_EQ(VexStringCompare(nullptr, "a", -1, 0), -1);
  EXPECT_EQ(VexStringCompare("a", nullptr, -1, 0), 1);
}

TEST(VexStringCompare, OrdersLikeTheLocale) {
  EXPECT_EQ(VexStringCompare("apple", "banana", -1, 0), -1);
  EXPECT_EQ(VexStringCompare("banana", "apple", -1, 0), 1);
  EXPECT_EQ(VexStringCompare("Apple", "apple", -1, 0), 1);  // upper case after lower case
  EXPECT_EQ(VexStringCompare("Apple", "apple", -1, 1), 0);
  EXPECT_EQ(VexStringCompare("a", "B", -1, 0), -1);  // alphabet before case
  EXPECT_EQ(VexStringCompare("item2", "item10", -1, 0), 1);
  EXPECT_EQ(VexStringCompare("", "", -1, 0), 0);
  EXPECT_EQ(VexStringCompare("", "a", -1, 0), -1);
}

TEST(VexStringCompare, OneLengthBoundsBothStrings) {
  EXPECT_EQ(VexStringCompare("abcdef", "abcxyz", 3, 0), 0);
  EXPECT_EQ(VexStringCompare("abcdef", "abcxyz", 4, 0), -1);
  EXPECT_EQ(VexStringCompare("ab", "abc", 5, 0), -1);  // the shorter one ends at its terminator
}

TEST(VexStringCompare, OptionsIgnoreSymbolsAndHyphens) {
  EXPECT_EQ(VexStringCompare("a.b,c", "abc", -1, 8), 0);
  EXPECT_NE(VexStringCompare("a.b,c", "abc", -1, 0), 0);
  // Word sort weighs a hyphen only when the rest is equal; string sort puts it before letters.
  EXPECT_EQ(VexStringCompare("co-op", "coop", -1, 0), VexStringCompare("co-op", "coop", -1, 0));
  EXPECT_EQ(VexStringCompare("co-op", "coal", -1, 0), 1);
  EXPECT_EQ(VexStringCompare("co-op", "coal", -1, 32), -1);
}

TEST(VexStringCompare, AccentsAreIgnoredOutsideCodePage932) {
  if (Japanese()) GTEST_SKIP() << "accents are not folded in code page 932";
  EXPECT_NE(VexStringCompare("cote", "c\xF4t\xE9", -1, 0), 0);
  EXPECT_EQ(VexStringCompare("cote", "c\xF4t\xE9", -1, 4), 0);
  EXPECT_EQ(VexStringCompare("COTE", "c\xF4t\xE9", -1, 5), 0);
}

TEST(VexStringCompare, JapaneseKanaAndWidth) {
  if (!Japanese()) GTEST_SKIP() << "code page 932 only";
  const char* katakana = "\x83\x41";  // a in katakana
  const char* hiragana = "\x82\xA0";  // a in hiragana
  const char* half = "\xB1";          // a in half-width katakana
  EXPECT_NE(VexStringCompare(katakana, hiragana, -1, 0), 0);
  EXPECT_EQ(VexStringCompare(katakana, hiragana, -1, 2), 0);
  EXPECT_NE(VexStringCompare(katakana, half, -1, 0), 0);
  EXPECT_EQ(VexStringCompare(katakana, half, -1, 16), 0);
  EXPECT_EQ(VexStringCompare("\x82\x60", "A", -1, 16), 0);  // full-width A
}

TEST(StringCompare, FlagsChooseCaseSensitivity) {
  EXPECT_EQ(StringCompare("abc", "ABC", 1), -1);
  EXPECT_EQ(StringCompare("abc", "ABC", 2), 0);
  EXPECT_EQ(StringCompare("abc", "abd", 2), -1);
  EXPECT_EQ(StringCompare("abc", "abd", 0), 0);  // no flag: no comparison
  EXPECT_EQ(StringCompare(nullptr, "abd", 1), 0);
}

}  // namespace
