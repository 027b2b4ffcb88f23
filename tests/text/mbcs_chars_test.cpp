// Character tables, steps, counts and extraction in the active code page.
#include <gtest/gtest.h>

#include <cstring>

#include "text/mbcs_core.h"
#include "vextools/mbstring.h"

namespace {

bool Japanese() { return vex::text::Multibyte().code_page == 932; }

TEST(MultibyteTables, FollowTheCodePage) {
  const std::uint32_t* lead = VexGetTabBLeadByte();
  if (!Japanese()) {
    if (vex::text::Multibyte().dbcs) GTEST_SKIP() << "another double-byte code page";
    EXPECT_EQ(VexIsDBCSEnabled(), 0u);
    for (int i = 0; i < 256; ++i) EXPECT_EQ(lead[i], 0u) << i;
    return;
  }
  EXPECT_NE(VexIsDBCSEnabled(), 0u);
  for (int byte : {0x81, 0x9F, 0xE0, 0xFC}) EXPECT_NE(lead[byte], 0u) << byte;
  for (int byte : {0x00, 0x41, 0x80, 0xA0, 0xB1, 0xDF, 0xFD}) EXPECT_EQ(lead[byte], 0u) << byte;
}

TEST(MultibyteChars, ValidityAndWriting) {
  char out[4] = {'x', 'x', 'x', 'x'};
  EXPECT_EQ(VexSetCharValue(nullptr, 'a'), 0);
  EXPECT_EQ(VexSetCharValue(out, 'a'), 1);
  EXPECT_EQ(out[0], 'a');
  EXPECT_EQ(out[1], 'x');  // no terminator
  EXPECT_EQ(VexIsSpaceChar(' '), 1);
  EXPECT_EQ(VexIsSpaceChar('\t'), 1);
  EXPECT_EQ(VexIsSpaceChar('a'), 0);
  EXPECT_EQ(VexIsSpaceChar(0x3000), 1);
  EXPECT_EQ(VexIsSpaceChar(0x8140), 0);
  if (!Japanese()) {
    EXPECT_EQ(VexIsValidChar(0x82), 1);
    EXPECT_EQ(VexIsValidChar(0x82A0), 0);
    EXPECT_EQ(VexSetCharValue(out, 0x82A0), 0);
    return;
  }
  EXPECT_EQ(VexIsValidChar(0x81), 0);
  EXPECT_EQ(VexIsValidChar(0x41), 1);
  EXPECT_EQ(VexIsValidChar(0x82A0), 1);
  EXPECT_EQ(VexIsValidChar(0x4141), 0);
  EXPECT_EQ(VexSetCharValue(out, 0x81), 0);
  EXPECT_EQ(VexSetCharValue(out, 0x82A0), 1);
  EXPECT_EQ(std::memcmp(out, "\x82\xA0x", 3), 0);
  std::memset(out, 'x', sizeof out);
  EXPECT_EQ(VexSetCharValue(out, 0x8200), 1);  // a zero low byte is not written
  EXPECT_EQ(std::memcmp(out, "\x82x", 2), 0);
}

TEST(MultibyteChars, CharPrevSingleByte) {
  if (VexIsDBCSEnabled()) GTEST_SKIP() << "single-byte code pages only";
  const char* s = "abc";
  EXPECT_EQ(VexCharPrev(s, s), s);
  EXPECT_EQ(VexCharPrev(s, s + 3), s + 2);
  EXPECT_EQ(VexCharPrev(nullptr, s), nullptr);
}

TEST(MultibyteChars, CharPrevDoubleByte) {
  if (!Japanese()) GTEST_SKIP() << "code page 932 only";
  const char* s = "a\x82\xA0z";
  EXPECT_EQ(VexCharPrev(s, s), s);
  EXPECT_EQ(VexCharPrev(s, s + 1), s);
  EXPECT_EQ(VexCharPrev(s, s + 3), s + 1);  // over the pair
  EXPECT_EQ(VexCharPrev(s, s + 4), s + 3);
  const char* run = "\x81\x81\x81\x41";  // pairs 81 81 and 81 41
  EXPECT_EQ(VexCharPrev(run, run + 4), run + 2);
  const char* sjis = "\x83\x5C\x83\x5C";  // a second byte that is a backslash
  EXPECT_EQ(VexCharPrev(sjis, sjis + 4), sjis + 2);
  EXPECT_EQ(VexCharPrev(sjis + 1, sjis + 2), sjis + 1);  // start reached
}

TEST(MultibyteChars, Counting) {
  EXPECT_EQ(VexNbChar(nullptr), 0);
  EXPECT_EQ(VexNbChar("abc"), 3);
  EXPECT_EQ(VexNbChar2NbBytes("ab", 5), 5);  // steps on the terminator still count
  EXPECT_EQ(VexNbBytes2NbChar(nullptr, 3), 0);
  EXPECT_EQ(VexNbBytes2NbChar("abc", 0), 0);
  EXPECT_EQ(VexNbBytes2NbChar("abc", 2), 2);
  if (!Japanese()) {
    EXPECT_EQ(VexNbChar("a\x82\xA0"), 3);
    EXPECT_EQ(VexNbChar2NbBytes(nullptr, 4), 4);  // returned as it is
    return;
  }
  EXPECT_EQ(VexNbChar("a\x82\xA0" "b"), 3);
  EXPECT_EQ(VexNbChar2NbBytes("a\x82\xA0" "b", 2), 3);
  EXPECT_EQ(VexNbChar2NbBytes(nullptr, 4), 0);
  EXPECT_EQ(VexNbChar2NbBytes("a", 0), 0);
  EXPECT_EQ(VexNbBytes2NbChar("\x82\xA0\x82\xA0", 3), 2);  // a pair across the limit is one character
  EXPECT_EQ(VexNbBytes2NbChar("a\0b", 3), 3);              // the terminator does not stop it
}

TEST(VexExtractString, FromAPosition) {
  char out[16] = {};
  EXPECT_EQ(VexExtractString(nullptr, out, sizeof out, 0, 1, 1), 0);
  EXPECT_EQ(VexExtractString("abc", out, 0, 0, 1, 1), 0);
  out[0] = 'x';
  EXPECT_EQ(VexExtractString("abc", out, sizeof out, 0, 1, 0), 1);
  EXPECT_STREQ(out, "");
  EXPECT_EQ(VexExtractString("", out, sizeof out, 0, 1, 2), 0);
  EXPECT_EQ(VexExtractString("abcdef", out, sizeof out, 0, 2, 3), 1);
  EXPECT_STREQ(out, "bcd");
  std::memset(out, 0, sizeof out);
  EXPECT_EQ(VexExtractString("abcdef", out, sizeof out, 0, 5, 9), 1);  // stops at the end
  EXPECT_STREQ(out, "ef");
  EXPECT_EQ(VexExtractString("abcdef", out, sizeof out, 7, 1, 1), 0);
}

TEST(VexExtractString, Rightmost) {
  char out[16] = {};
  EXPECT_EQ(VexExtractString("abcdef", out, sizeof out, 1, 0, 2), 1);
  EXPECT_STREQ(out, "ef");
  EXPECT_EQ(VexExtractString("ab", out, sizeof out, 1, 0, 5), 1);
  EXPECT_STREQ(out, "ab");
  EXPECT_EQ(VexExtractString("abcdef", out, 2, 1, 0, 2), 0);  // size must exceed the count
  EXPECT_EQ(VexExtractString("abcdef", out, 4, 1, 0, 3), 1);
  EXPECT_STREQ(out, "def");
  EXPECT_EQ(VexExtractString("abcdef", out, sizeof out, 1, 0, -1), 1);  // nothing to the right
}

TEST(VexExtractString, KeepsDoubleByteCharactersWhole) {
  if (!Japanese()) GTEST_SKIP() << "code page 932 only";
  char out[16] = {};
  EXPECT_EQ(VexExtractString("a\x82\xA0\x82\xA2", out, sizeof out, 1, 0, 2), 1);
  EXPECT_STREQ(out, "\x82\xA0\x82\xA2");
  std::memset(out, 0, sizeof out);
  EXPECT_EQ(VexExtractString("a\x82\xA0\x82\xA2", out, sizeof out, 0, 2, 1), 1);
  EXPECT_STREQ(out, "\x82\xA0");
}

TEST(VexIsImeRunning, NoWindowNoComposition) { EXPECT_EQ(VexIsImeRunning(nullptr), 0); }

}  // namespace
