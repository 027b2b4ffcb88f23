// Locale mapping and comparison of code-page text on POSIX through ICU: the text is decoded, mapped
// step by step in Unicode (full width, kana, half width, case, accents, symbols; the order Windows
// applies them) and encoded back. Comparisons fold both texts by the options and collate the rest.
#include <unicode/coll.h>
#include <unicode/normalizer2.h>
#include <unicode/translit.h>
#include <unicode/uchar.h>

#include <cstring>
#include <memory>
#include <mutex>
#include <string>

#include "platform/codepage.h"
#include "platform/posix/icu_codepage.h"

namespace vex::platform {
namespace icu_text {
namespace {

const icu::Transliterator* WidthTransliterator(bool to_full) {
  static std::once_flag once;
  static std::unique_ptr<icu::Transliterator> full, half;
  std::call_once(once, [] {
    UErrorCode status = U_ZERO_ERROR;
    full.reset(icu::Transliterator::createInstance("Halfwidth-Fullwidth", UTRANS_FORWARD, status));
    status = U_ZERO_ERROR;
    half.reset(icu::Transliterator::createInstance("Fullwidth-Halfwidth", UTRANS_FORWARD, status));
  });
  return to_full ? full.get() : half.get();
}

}  // namespace

void MapKana(icu::UnicodeString& text, bool to_hiragana) {
  for (int32_t i = 0; i < text.length(); ++i) {
    const char16_t c = text.charAt(i);
    if (to_hiragana && ((c >= 0x30A1 && c <= 0x30F6) || c == 0x30FD || c == 0x30FE)) {
      text.setCharAt(i, static_cast<char16_t>(c - 0x60));
    } else if (!to_hiragana && ((c >= 0x3041 && c <= 0x3096) || c == 0x309D || c == 0x309E)) {
      text.setCharAt(i, static_cast<char16_t>(c + 0x60));
    }
  }
}

void MapWidth(icu::UnicodeString& text, bool to_full) {
  if (const icu::Transliterator* transliterator = WidthTransliterator(to_full)) transliterator->transliterate(text);
}

void StripAccents(icu::UnicodeString& text) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::Normalizer2* nfd = icu::Normalizer2::getNFDInstance(status);
  const icu::Normalizer2* nfc = icu::Normalizer2::getNFCInstance(status);
  if (U_FAILURE(status)) return;
  icu::UnicodeString decomposed = nfd->normalize(text, status);
  icu::UnicodeString kept;
  for (int32_t i = 0; i < decomposed.length(); i = decomposed.moveIndex32(i, 1)) {
    const UChar32 c = decomposed.char32At(i);
    if (u_charType(c) != U_NON_SPACING_MARK) kept.append(c);
  }
  text = nfc->normalize(kept, status);
}

void StripSymbols(icu::UnicodeString& text) {
  icu::UnicodeString kept;
  for (int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1)) {
    const UChar32 c = text.char32At(i);
    const int32_t mask = U_MASK(u_charType(c));
    if ((mask & (U_GC_P_MASK | U_GC_S_MASK | U_GC_Z_MASK)) || (c != 0 && c < 0x20 && u_isspace(c))) continue;
    kept.append(c);
  }
  text = kept;
}

}  // namespace icu_text

namespace {

// Simple case mapping that keeps a character whose other case the code page cannot hold.
void MapCase(icu::UnicodeString& text, bool upper) {
  icu::UnicodeString mapped;
  for (int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1)) {
    const UChar32 c = text.char32At(i);
    const UChar32 other = upper ? u_toupper(c) : u_tolower(c);
    mapped.append(other == c || c < 0x80 || !icu_text::EncodeCodePoint(other).empty() ? other : c);
  }
  text = mapped;
}

bool ExcludeEachOther(std::uint32_t options, std::uint32_t a, std::uint32_t b) {
  return (options & a) && (options & b);
}

// The collator of the user's locale; rebuilt when the locale changes. Identical strength: texts are
// equal only when nothing but what the options fold away differs, as on Windows.
std::shared_ptr<const icu::Collator> UserCollator() {
  static std::mutex mutex;
  static std::string name;
  static std::shared_ptr<const icu::Collator> collator;
  const icu::Locale locale = icu_text::UserLocale();
  std::lock_guard lock(mutex);
  if (collator && name == locale.getName()) return collator;
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::Collator> created(icu::Collator::createInstance(locale, status));
  if (U_FAILURE(status) || !created) return nullptr;
  created->setStrength(icu::Collator::IDENTICAL);
  collator = std::move(created);
  name = locale.getName();
  return collator;
}

icu::UnicodeString DecodeCounted(const char* text, int length) {
  const std::size_t size = length < 0 ? std::strlen(text) : static_cast<std::size_t>(length);
  return icu_text::Decode(text, size);
}

void Fold(icu::UnicodeString& text, std::uint32_t options) {
  if (options & kCompareIgnoreWidth) icu_text::MapWidth(text, false);
  if (options & kCompareIgnoreKanaType) icu_text::MapKana(text, true);
  if (options & kCompareIgnoreCase) text.foldCase();
  if (options & kCompareIgnoreAccents) icu_text::StripAccents(text);
  if (options & kCompareIgnoreSymbols) icu_text::StripSymbols(text);
}

// Word sort: hyphens and apostrophes weigh only when the texts are otherwise equal.
icu::UnicodeString WithoutHyphens(const icu::UnicodeString& text) {
  icu::UnicodeString kept(text);
  kept.findAndReplace(u"-", u"");
  kept.findAndReplace(u"'", u"");
  return kept;
}

}  // namespace

int MapString(std::uint32_t options, const char* source, int length, char* destination, int destination_size) {
  if (!source || destination_size < 0 || (destination_size > 0 && !destination)) return 0;
  if ((options & 0xFF) == 0 || ExcludeEachOther(options, kMapFullWidth, kMapHalfWidth) ||
      ExcludeEachOther(options, kMapHiragana, kMapKatakana) ||
      ExcludeEachOther(options, kMapLowerCase, kMapUpperCase)) {
    return 0;
  }
  const std::size_t size = length < 0 ? std::strlen(source) + 1 : static_cast<std::size_t>(length);
  icu::UnicodeString text = icu_text::Decode(source, size);
  if (options & kMapFullWidth) icu_text::MapWidth(text, true);
  if (options & (kMapHiragana | kMapKatakana)) icu_text::MapKana(text, (options & kMapHiragana) != 0);
  if (options & kMapHalfWidth) icu_text::MapWidth(text, false);
  if (options & (kMapLowerCase | kMapUpperCase)) MapCase(text, (options & kMapUpperCase) != 0);
  if (options & kMapNoAccents) icu_text::StripAccents(text);
  if (options & kMapNoSymbols) icu_text::StripSymbols(text);
  const std::string mapped = icu_text::Encode(text);
  if (mapped.size() > static_cast<std::size_t>(INT32_MAX)) return 0;
  const int count = static_cast<int>(mapped.size());
  if (destination_size == 0) return count;
  if (count > destination_size) return 0;
  std::memcpy(destination, mapped.data(), mapped.size());
  return count;
}

int CompareStrings(std::uint32_t options, const char* a, int a_length, const char* b, int b_length) {
  if (!a || !b) return 0;
  const auto collator = UserCollator();
  if (!collator) return 0;
  icu::UnicodeString left = DecodeCounted(a, a_length);
  icu::UnicodeString right = DecodeCounted(b, b_length);
  Fold(left, options);
  Fold(right, options);
  UErrorCode status = U_ZERO_ERROR;
  UCollationResult order = UCOL_EQUAL;
  if (!(options & kCompareStringSort)) order = collator->compare(WithoutHyphens(left), WithoutHyphens(right), status);
  if (order == UCOL_EQUAL) order = collator->compare(left, right, status);
  if (U_FAILURE(status)) return 0;
  return order == UCOL_LESS ? 1 : order == UCOL_EQUAL ? 2 : 3;
}

}  // namespace vex::platform
