// Searches that respect double-byte characters, and the tolerant search.
#include <gtest/gtest.h>

#include "text/mbcs_core.h"
#include "vextools/mbstring.h"

namespace {

bool Japanese() { return vex::text::Multibyte().code_page == 932; }

TEST(VexStrChr, FindsCharactersNotSecondBytes) {
  EXPECT_EQ(VexStrChr(nullptr, 'a'), nullptr);
  const char* s = "\x83\x5C\\x";  // a character whose second byte is a backslash, then a backslash
  EXPECT_EQ(VexStrChr(s, '\\'), Japanese() ? s + 2 : s + 1);
  EXPECT_EQ(VexStrRChr(s, '\\'), s + 2);
  EXPECT_EQ(VexStrChr(s, 'q'), nullptr);
  const char* twice = "a\\b\\c";
  EXPECT_EQ(VexStrRChr(twice, '\\'), twice + 3);  // the last match; the walk ends
  EXPECT_EQ(VexStrRChr(twice, 'z'), nullptr);
}

TEST(VexStrChr, CodesAboveTheByteRangeMatchLowByteFirst) {
  if (!Japanese()) GTEST_SKIP() << "code page 932 only";
  const char* s = "a\x83\x41" "A\x83";
  // Kept: 0x8341 is looked for as the bytes 41 83, not as the character written 83 41.
  EXPECT_EQ(VexStrChr(s, 0x8341), s + 3);
  EXPECT_EQ(VexStrChr(s, 0x81), nullptr);  // a lead byte alone is no character
}

TEST(VexStrChr, WithinACount) {
  const char* s = "abcabc";
  EXPECT_EQ(VexStrChr(nullptr, 'c', 3), nullptr);
  EXPECT_EQ(VexStrChr(s, 'c', 2), nullptr);
  EXPECT_EQ(VexStrChr(s, 'c', 3), s + 2);
  EXPECT_EQ(VexStrChr(s, 'c', 0), s + 2);  // no count: the whole string
  const char buffer[] = {'a', '\0', 'c', 'd'};
  EXPECT_EQ(VexStrChr(buffer, 'c', 4), buffer + 2);  // past a NUL in the buffer
  if (Japanese()) {
    const char* pair = "\x83\x5C\\";
    EXPECT_EQ(VexStrChr(pair, '\\', 3), pair + 2);
  }
}

TEST(VexStrStr, PlainAndCharacterWise) {
  const char* s = "hello world";
  EXPECT_EQ(VexStrStr(s, "wor"), s + 6);
  EXPECT_EQ(VexStrStr(s, "xyz"), nullptr);
  EXPECT_EQ(VexStrStr(nullptr, "a"), nullptr);
  EXPECT_EQ(VexStrStrC(s, "lo"), s + 3);
  EXPECT_EQ(VexStrStr(s, "o"), s + 4);  // 'o' is character-wise on a double-byte page
}

TEST(VexStrStr, RestartsAfterAPartialMatch) {
  const char* s = "aaab";
  EXPECT_EQ(VexStrStr(s, "aab"), s + 1);
  EXPECT_EQ(VexStrStr(s, "aaaa"), nullptr);
}

TEST(VexStrStr, EmptyNeedle) {
  const char* s = "abc";
  // The standard library's search finds an empty needle at once; the character-wise one never does.
  EXPECT_EQ(VexStrStr(s, ""), VexIsDBCSEnabled() ? nullptr : s);
}

TEST(VexStrStr, DoesNotMatchInsideACharacter) {
  if (!Japanese()) GTEST_SKIP() << "code page 932 only";
  const char* s = "\x83\x5C" "x\\\x83\x5C";
  EXPECT_EQ(VexStrStr(s, "\\"), s + 3);
  EXPECT_EQ(VexStrStr(s, "\\\x83\x5C"), s + 3);
  EXPECT_EQ(VexStrStr("\x83\x5C", "\\"), nullptr);
  EXPECT_EQ(VexStrStr("", "\x83\x5C"), nullptr);
}

TEST(VexFindString, IsBlindToCaseAndAccents) {
  const char* s = "Le Caf\xE9 noir";
  EXPECT_EQ(VexFindString(nullptr, "a"), nullptr);
  EXPECT_EQ(VexFindString("", "a"), nullptr);
  EXPECT_EQ(VexFindString(s, ""), nullptr);
  EXPECT_EQ(VexFindString(s, "NOIR"), s + 8);
  EXPECT_EQ(VexFindString(s, "cAf"), s + 3);
  EXPECT_EQ(VexFindString(s, "noix"), nullptr);
  if (!Japanese()) EXPECT_EQ(VexFindString(s, "CAFE"), s + 3);
}

TEST(VexFindString, IsBlindToWidthAndKanaType) {
  if (!Japanese()) GTEST_SKIP() << "code page 932 only";
  const char* s = "xx\x83\x4A\x83\x5E";  // katakana ka ta
  EXPECT_EQ(VexFindString(s, "\x82\xA9\x82\xBD"), s + 2);  // hiragana ka ta
  EXPECT_EQ(VexFindString(s, "\xB6\xC0"), s + 2);          // half-width katakana ka ta
  const char* letters = "\x82\x81\x82\x82";  // full-width a b
  EXPECT_EQ(VexFindString(letters, "AB"), letters);
  const char* ascii = "zAB";
  EXPECT_EQ(VexFindString(ascii, "\x82\x60\x82\x82"), ascii + 1);  // full-width A, full-width b
}

}  // namespace
