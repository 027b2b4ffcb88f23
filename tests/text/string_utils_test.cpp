// Copy, concatenation, case, trimming, hexadecimal, character sets and angles.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "text/mbcs_core.h"
#include "vextools/strings.h"

namespace {

bool Japanese() { return vex::text::Multibyte().code_page == 932; }

TEST(StringCopy, BoundsWithoutSplittingCharacters) {
  char out[16];
  std::memset(out, 'x', sizeof out);
  EXPECT_EQ(StringCopy(out, "abcdef", 4), out);
  EXPECT_STREQ(out, "abc");
  std::memset(out, 'x', sizeof out);
  StringCopy(out, "abcdef", 6);  // kept: a source of exactly size characters writes size + 1 bytes
  EXPECT_EQ(std::memcmp(out, "abcdef\0x", 8), 0);
  StringCopy(out, "abcdefghij", 0);  // size 0: unbounded
  EXPECT_STREQ(out, "abcdefghij");
  EXPECT_EQ(StringCopy(out, "a", -1), nullptr);
  EXPECT_EQ(StringCopy(nullptr, "a", 4), nullptr);
  std::memset(out, 'x', sizeof out);
  StringCopy(out, "a\x82\xA0" "bc", 3);
  EXPECT_STREQ(out, Japanese() ? "a" : "a\x82");  // the pair would not fit whole
  StringCopy(out, "a\x82\xA0" "bc", 4);
  EXPECT_STREQ(out, "a\x82\xA0");
}

TEST(StringConcat, AppendsTruncatesOrRefuses) {
  char out[8] = "abc";
  EXPECT_EQ(StringConcat(out, "de", sizeof out, 0), 0);
  EXPECT_STREQ(out, "abcde");
  EXPECT_EQ(StringConcat(out, "fghij", sizeof out, 0), 2);
  EXPECT_STREQ(out, "abcde");
  EXPECT_EQ(StringConcat(out, "fghij", sizeof out, 1), 1);
  EXPECT_STREQ(out, "abcdefg");
  EXPECT_EQ(StringConcat(out, "z", sizeof out, 1), 2);  // one byte left: nothing appended
}

TEST(StringUpper, DropsAccents) {
  char text[] = "caf\xE9 \xF1o \xE7\xF8";
  StringUpper(text);
  if (Japanese()) GTEST_SKIP() << "these bytes are not accented letters in code page 932";
  EXPECT_STREQ(text, "CAFE NO C\xD8");  // D8 stays
}

TEST(StringUpper, HalfWidthInCodePage932) {
  if (!Japanese()) GTEST_SKIP() << "code page 932 only";
  char text[] = "\x82\x81\x82\x82" "c\x83\x41";
  StringUpper(text);
  EXPECT_STREQ(text, "ABC\xB1");
}

TEST(CharDelete, TrimsRunsAtEitherEnd) {
  char both[] = "xxabcxx";
  EXPECT_EQ(CharDelete(both, 'x', 3), 3);
  EXPECT_STREQ(both, "abc");
  char start[] = "xxabxx";
  EXPECT_EQ(CharDelete(start, 'x', 1), 0);
  EXPECT_STREQ(start, "abxx");
  char all[] = "xxx";
  EXPECT_EQ(CharDelete(all, 'x', 2), 0);
  EXPECT_STREQ(all, "");
}

TEST(Hexadecimal, UpperCaseOnly) {
  const unsigned char bytes[] = {0x0A, 0xFF, 0x00, 0x01};
  char text[16];
  EXPECT_EQ(BinToStringExt(text, bytes, 4), 1);
  EXPECT_STREQ(text, "0AFF0001");
  EXPECT_EQ(BinToString(text, bytes), 1);  // up to the first NUL
  EXPECT_STREQ(text, "0AFF");
  EXPECT_EQ(BinToString(nullptr, bytes), 0);
  unsigned char decoded[8] = {};
  EXPECT_EQ(StringToBin("0AFF", decoded), 1);
  EXPECT_EQ(decoded[0], 0x0A);
  EXPECT_EQ(decoded[1], 0xFF);
  EXPECT_EQ(decoded[2], 0);
  StringToBin("0aff", decoded);
  EXPECT_NE(decoded[1], 0xFF);  // lower case is not hexadecimal here
  int count = 0;
  EXPECT_EQ(StringToBinExt("ABC", decoded, &count), 1);  // the odd digit is ignored
  EXPECT_EQ(count, 1);
  EXPECT_EQ(decoded[0], 0xAB);
  EXPECT_EQ(StringToBinExt(nullptr, decoded, &count), 0);
}

TEST(CharacterSets, MacintoshAndAnsi) {
  char text[] = "A\x80\x8E\xA0\xF0";
  MacToAnsiBuff(text, text, 5);  // in place
  EXPECT_EQ(std::string(text, 5), "A\xC4\xE9\x5E\xFE");
  char back[5];
  AnsiToMacBuff(text, back, 5);
  EXPECT_EQ(std::string(back, 5), "A\x80\x8E\x5E\xF0");  // not inverse: A0 became a caret
  char ansi[] = "\x80\xE9\xFF";
  AnsiToMacBuff(ansi, ansi, 3);
  EXPECT_EQ(std::string(ansi, 3), "\x20\x8E\xD8");
}

TEST(StringToDecimalDegrees, DegreesMinutesSecondsAndHemisphere) {
  int ok = -1;
  char north[] = "45\xB0" "30'0\" N";
  EXPECT_DOUBLE_EQ(StringToDecimalDegrees(north, 0, &ok), 45.5);
  EXPECT_EQ(ok, 1);
  char south[] = "45\xB0" "30'0\" S";
  EXPECT_DOUBLE_EQ(StringToDecimalDegrees(south, 0, &ok), -45.5);
  char negative[] = "-45\xB0" "30'";
  EXPECT_DOUBLE_EQ(StringToDecimalDegrees(negative, 0, &ok), -45.5);
  EXPECT_EQ(ok, 1);
  char minutes[] = "45\xB0" "70'";
  EXPECT_DOUBLE_EQ(StringToDecimalDegrees(minutes, 0, &ok), 45.0);
  EXPECT_EQ(ok, 0);
  char seconds[] = "10\xB0 6' 36\" w";  // a lower-case letter is not recognised, but upper-cased
  EXPECT_NEAR(StringToDecimalDegrees(seconds, 1, &ok), 10.11, 1e-12);
  EXPECT_EQ(ok, 1);
  EXPECT_STREQ(seconds + std::strlen(seconds) - 1, "W");
  char contradiction[] = "-10\xB0 0' 0\" W";
  EXPECT_DOUBLE_EQ(StringToDecimalDegrees(contradiction, 1, &ok), -10.0);
  EXPECT_EQ(ok, 0);
  char plain[] = "12.25";
  EXPECT_DOUBLE_EQ(StringToDecimalDegrees(plain, 1, &ok), 12.25);
  EXPECT_EQ(ok, 1);
}

TEST(StringToDecimalDegrees, DoubleByteSigns) {
  if (!Japanese()) GTEST_SKIP() << "code page 932 only";
  int ok = 0;
  char text[] = "45\x81\x8B" "30\x81\x8C" "36\x81\x8D N";
  EXPECT_NEAR(StringToDecimalDegrees(text, 0, &ok), 45.51, 1e-12);
  EXPECT_EQ(ok, 1);
}

}  // namespace
