// ICU helpers shared by the POSIX code-page services: text of the active code page to and from
// UTF-16, and the locale that stands for the user's default one.
#pragma once

#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <cstdint>
#include <string>

namespace vex::platform::icu_text {

// Decodes length bytes of the active code page.
icu::UnicodeString Decode(const char* bytes, std::size_t length);

// Encodes into the active code page. A character the code page lacks takes its nearest form (full
// width to ASCII, the base letter of an accented one), else "?", as the Windows conversion does.
std::string Encode(const icu::UnicodeString& text);

// The bytes of one code point in the active code page, nearest forms allowed; empty when there is
// none.
std::string EncodeCodePoint(UChar32 c);

// Katakana to hiragana (to_hiragana) or the reverse, one character for one.
void MapKana(icu::UnicodeString& text, bool to_hiragana);

// Full-width forms to half-width ones, or the reverse.
void MapWidth(icu::UnicodeString& text, bool to_full);

// Removes the non-spacing marks of the canonical decomposition.
void StripAccents(icu::UnicodeString& text);

// Removes punctuation, symbols and white space.
void StripSymbols(icu::UnicodeString& text);

// The user's default locale: the language of a double-byte code page, else the environment's.
icu::Locale UserLocale();

}  // namespace vex::platform::icu_text
