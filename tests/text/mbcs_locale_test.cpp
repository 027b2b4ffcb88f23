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

TEST(VexTransformString, WithoutFlagsCopies) {
  const char source[16] = "abcdef";
  char out[16] = {};
  // Kept: with a source length the destination size is the byte count.
  EXPECT_EQ(VexTransformString(source, 3, out, 6, 0), 6);
  EXPECT_STREQ(out, "abcdef");
  char whole[16] = {};
  EXPECT_EQ(VexTransformString(source, -1, whole, 2, 0x100), 6);  // unknown bits: a copy of the string
  EXPECT_STREQ(whole, "abcdef");
  EXPECT_EQ(VexTransformString(nullptr, whole, 4, 32), -1);
}

TEST(VexTransformString, CaseAndSymbols) {
  EXPECT_EQ(Transform("Hello, World", 32), "HELLO, WORLD");
  EXPECT_EQ(Transform("Hello, World", 16), "hello, world");
  EXPECT_EQ(Transform("a.b c!d", 128), "abcd");
  EXPECT_EQ(Transform("abc", 16 | 32), "<failed>");  // both cases at once
  EXPECT_EQ(Transform("abc", 4 | 8), "<failed>");
  EXPECT_EQ(Transform("abc", 1 | 2), "<failed>");  // both widths: combined as asked, and refused
}

TEST(VexTransformString, CountsLikeThePlatform) {
  char out[8] = {};
  // With a source length no terminator is mapped, so the count minus one is one short.
  EXPECT_EQ(VexTransformString("abc", 3, out, sizeof out, 32), 2);
  EXPECT_EQ(std::string(out, 3), "ABC");
  EXPECT_EQ(VexTransformString("abcdef", out, 3, 32), -1);  // does not fit
  char text[] = "MiXeD";
  EXPECT_EQ(VexTransformString(text, 0, 16), 5);
  EXPECT_STREQ(text, "mixed");
  char part[] = "abcd";
  EXPECT_EQ(VexTransformString(part, 2, 32), 1);
  EXPECT_STREQ(part, "ABcd");
}

TEST(VexTransformString, AccentsOutsideCodePage932) {
  if (Japanese()) {
    EXPECT_EQ(Transform("abc", 64), "abc");  // ignored: a plain copy
    return;
  }
  EXPECT_EQ(Transform("c\xF4t\xE9", 64), "cote");
  EXPECT_EQ(Transform("c\xF4t\xE9", 64 | 32), "COTE");
  EXPECT_EQ(Transform("abc", 1), "abc");  // full width has no room here: the nearest form stays
}

TEST(VexTransformString, JapaneseWidthAndKana) {
  if (!Japanese()) GTEST_SKIP() << "code page 932 only";
  EXPECT_EQ(Transform("a", 1), "\x82\x81");
  EXPECT_EQ(Transform("a", 1 | 32), "\x82\x60");
  EXPECT_EQ(Transform("\xB1", 1), "\x83\x41");          // half-width to full-width katakana
  EXPECT_EQ(Transform("\xB6\xDE", 1), "\x83\x4B");      // with its voicing mark: one character
  EXPECT_EQ(Transform("\x83\x4B", 2), "\xB6\xDE");
  EXPECT_EQ(Transform("\x82\x60\x82\x81", 2), "Aa");
  EXPECT_EQ(Transform("\x83\x41", 4), "\x82\xA0");      // katakana to hiragana
  EXPECT_EQ(Transform("\x82\xA0", 8), "\x83\x41");
  EXPECT_EQ(Transform("\xB1", 1 | 4), "\x82\xA0");       // full width first, then the kana
  EXPECT_EQ(Transform("\x82\xA0", 2 | 8), "\xB1");       // the kana first, then half width
  char text[] = "\x82\x60\x82\x61";
  EXPECT_EQ(VexSimplifyString(text, 0), 2);
  EXPECT_STREQ(text, "AB");
}

TEST(VexCharUpper, ConvertsCharactersInPlace) {
  char text[] = "abc-xyz";
  EXPECT_EQ(VexCharUpper(text, 3), text);
  EXPECT_STREQ(text, "ABC-xyz");
  EXPECT_STREQ(VexCharUpper(text, 0), "ABC-XYZ");
  EXPECT_STREQ(VexCharLower(text, 0), "abc-xyz");
  EXPECT_EQ(VexCharUpper(nullptr, 0), nullptr);
  if (!Japanese()) {
    char accented[] = "\xE9t\xE9";
    EXPECT_STREQ(VexCharUpper(accented, 0), "\xC9T\xC9");
    return;
  }
  char wide[] = "\x82\x81\x83\x61z";  // full-width a, a katakana whose second byte is 'a'
  EXPECT_STREQ(VexCharUpper(wide, 0), "\x82\x60\x83\x61Z");
}

}  // namespace
