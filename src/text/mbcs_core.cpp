// Builds the multibyte tables once: the lead bytes and the code page from the platform, then the
// folding that makes VexFindString blind to width, case, kana type and accents, taken from the
// platform's own mappings of every character of the code page.
#include "text/mbcs_core.h"

#include <cstring>
#include <initializer_list>

#include "platform/codepage.h"
#include "vextools/mbstring.h"

namespace vex::text {

MultibyteTables g_multibyte_tables{{}, 0, 1252, {}, {}, {}};

namespace {

MultibyteTables& g_tables = g_multibyte_tables;

constexpr std::uint16_t kKatakanaFirst = 0x8340, kKatakanaLast = 0x8396;
constexpr std::uint16_t kHiraganaFirst = 0x829F, kHiraganaLast = 0x82F2;
constexpr std::int32_t kFoldBufferSize = 2000;

bool g_initialised = false;

void ReadLeadBytes() {
  g_tables.dbcs = 0;
  for (int byte = 0; byte < 256; ++byte) {
    const bool lead = platform::IsCodePageLeadByte(static_cast<unsigned char>(byte));
    g_tables.lead_bytes[byte] = lead ? 1 : 0;
    if (lead) g_tables.dbcs = 1;
  }
  g_tables.code_page = platform::ActiveCodePage();
}

// Every character the fold covers, in order, each on its own line so that a mapping that drops a
// character (removing accents drops spacing diacritics on some systems) cannot put the others out of
// step: the single bytes, then in code page 932 the katakana and hiragana. Returns the count.
std::int32_t CollectCharacters(char* buffer, std::uint16_t* codes) {
  std::int32_t length = 0, count = 0;
  const auto add = [&](std::uint16_t c) {
    if (!VexSetCharValue(buffer + length, c)) return;
    length += c < 256 ? 1 : 2;
    buffer[length++] = '\n';
    codes[count++] = c;
  };
  for (int byte = 1; byte < 256; ++byte) {
    if (byte != '\n' && !IsLeadByte(static_cast<unsigned char>(byte))) add(static_cast<std::uint16_t>(byte));
  }
  if (g_tables.dbcs && g_tables.code_page == 932) {
    for (std::uint16_t c = kKatakanaFirst; c <= kKatakanaLast; ++c) {
      if (c != 0x837F) add(c);
    }
    for (std::uint16_t c = kHiraganaFirst; c <= kHiraganaLast; ++c) add(c);
  }
  buffer[length] = '\0';
  return count;
}

void StoreFold(std::uint16_t c, std::uint16_t folded) {
  if (c < 256) {
    g_tables.fold[c] = folded;
  } else if (c >= kKatakanaFirst && c <= kKatakanaLast) {
    g_tables.fold_katakana[c - kKatakanaFirst] = folded;
  } else if (c >= kHiraganaFirst && c <= kHiraganaLast) {
    g_tables.fold_hiragana[c - kHiraganaFirst] = folded;
  }
}

// Full width, upper case, hiragana, no accents: what each character of the code page becomes is what
// VexFindString compares. A character the mappings drop keeps its own code.
void BuildFoldTables() {
  for (int i = 0; i < 256; ++i) g_tables.fold[i] = static_cast<std::uint16_t>(i);
  for (std::uint16_t c = kKatakanaFirst; c <= kKatakanaLast; ++c) g_tables.fold_katakana[c - kKatakanaFirst] = c;
  for (std::uint16_t c = kHiraganaFirst; c <= kHiraganaLast; ++c) g_tables.fold_hiragana[c - kHiraganaFirst] = c;

  static char from[kFoldBufferSize], to[kFoldBufferSize];
  static std::uint16_t codes[kFoldBufferSize];
  const std::int32_t count = CollectCharacters(from, codes);
  for (std::uint32_t flags : {1u, 32u, 4u, 64u}) {
    if (VexTransformString(from, to, kFoldBufferSize, flags) >= 0) std::memcpy(from, to, kFoldBufferSize);
  }
  const char* line = from;
  for (std::int32_t i = 0; i < count && *line; ++i) {
    StoreFold(codes[i], *line == '\n' ? codes[i] : CharValueAt(line));
    while (*line && *line != '\n') line = CharNextMB(line);
    if (*line == '\n') ++line;
  }
  g_tables.fold[0] = 0;
}

void Build() {
  ReadLeadBytes();
  BuildFoldTables();
}

}  // namespace

void InitMultibyteTables() {
  if (g_initialised) return;
  g_initialised = true;
  Build();
}

void ReinitMultibyteTables() {
  platform::RereadActiveCodePage();
  g_initialised = true;
  Build();
}

}  // namespace vex::text
