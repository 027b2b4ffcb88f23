// Builds the multibyte tables once: the lead bytes and the code page from the platform, then the
// folding that makes VexFindString blind to width, case, kana type and accents, taken from the
// platform's own mappings of every character of the code page.
#include "text/mbcs_core.h"

#include <cstring>

#include "platform/codepage.h"
#include "vextools/mbstring.h"

namespace vex::text {
namespace {

constexpr std::uint16_t kKatakanaFirst = 0x8340, kKatakanaLast = 0x8396;
constexpr std::uint16_t kHiraganaFirst = 0x829F, kHiraganaLast = 0x82F2;
constexpr std::int32_t kFoldBufferSize = 2000;

MultibyteTables g_tables{{}, 0, 1252, {}, {}, {}};
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

// Every character the fold covers, in order: the single bytes, then (932) katakana and hiragana.
std::int32_t CollectCharacters(char* buffer) {
  std::int32_t length = 0;
  for (int byte = 1; byte < 256; ++byte) {
    if (!IsLeadByte(static_cast<unsigned char>(byte))) buffer[length++] = static_cast<char>(byte);
  }
  if (g_tables.dbcs && g_tables.code_page == 932) {
    for (std::uint16_t c = kKatakanaFirst; c <= kKatakanaLast; ++c) {
      if (c == 0x837F) continue;
      VexSetCharValue(buffer + length, c);
      length += 2;
    }
    for (std::uint16_t c = kHiraganaFirst; c <= kHiraganaLast; ++c) {
      VexSetCharValue(buffer + length, c);
      length += 2;
    }
  }
  buffer[length] = '\0';
  return length;
}

void BuildFoldTables() {
  for (int i = 0; i < 256; ++i) g_tables.fold[i] = static_cast<std::uint16_t>(i);
  for (std::uint16_t c = kKatakanaFirst; c <= kKatakanaLast; ++c) g_tables.fold_katakana[c - kKatakanaFirst] = c;
  for (std::uint16_t c = kHiraganaFirst; c <= kHiraganaLast; ++c) g_tables.fold_hiragana[c - kHiraganaFirst] = c;

  static char original[kFoldBufferSize], first[kFoldBufferSize], second[kFoldBufferSize];
  CollectCharacters(original);
  VexTransformString(original, first, kFoldBufferSize, 1);  // full width
  VexTransformString(first, second, kFoldBufferSize, 32);   // upper case
  VexTransformString(second, first, kFoldBufferSize, 4);    // hiragana
  VexTransformString(first, second, kFoldBufferSize, 64);   // no accents
  const char* from = original;
  const char* to = second;
  while (*from) {
    const std::uint16_t c = CharValueAt(from);
    const std::uint16_t folded = CharValueAt(to);
    if (c < 256) {
      g_tables.fold[c] = folded;
    } else if (c >= kKatakanaFirst && c <= kKatakanaLast) {
      g_tables.fold_katakana[c - kKatakanaFirst] = folded;
    } else if (c >= kHiraganaFirst && c <= kHiraganaLast) {
      g_tables.fold_hiragana[c - kHiraganaFirst] = folded;
    }
    from = CharNextMB(from);
    to = CharNextMB(to);
  }
  g_tables.fold[0] = 0;
}

void Build() {
  ReadLeadBytes();
  BuildFoldTables();
}

}  // namespace

const MultibyteTables& Multibyte() { return g_tables; }

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
