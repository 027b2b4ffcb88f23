// Locale mapping and comparison of code-page text on POSIX through ICU: the text is decoded, mapped
// step by step in Unicode (full width, kana, half width, case, accents, symbols; the order Windows
// applies them) and encoded back. As on Windows, removing accents or symbols does not combine with
// the other mappings. Comparisons fold both texts by the options and collate the rest.
#include <unicode/coll.h>
#include <unicode/tblcoll.h>
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
  if (to_full) return;
  // Windows also narrows the typographic quotes to the ASCII ones.
  for (int32_t i = 0; i < text.length(); ++i) {
    const char16_t c = text.charAt(i);
    if (c == 0x2018 || c == 0x2019) text.setCharAt(i, u'\'');
    if (c == 0x201C || c == 0x201D) text.setCharAt(i, u'"');
  }
}

namespace {

// Spacing diacritics that Windows counts as non-spacing marks too: modifier symbols, the spacing
// modifier letters and the middle dot.
bool IsDiacritic(UChar32 c) {
  const int8_t type = u_charType(c);
  return type == U_NON_SPACING_MARK || type == U_MODIFIER_SYMBOL || (c >= 0x02B0 && c <= 0x02FF) || c == 0x00B7;
}

}  // namespace

void StripAccents(icu::UnicodeString& text) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::Normalizer2* nfd = icu::Normalizer2::getNFDInstance(status);
  const icu::Normalizer2* nfc = icu::Normalizer2::getNFCInstance(status);
  if (U_FAILURE(status)) return;
  icu::UnicodeString decomposed = nfd->normalize(text, status);
  icu::UnicodeString kept;
  for (int32_t i = 0; i < decomposed.length(); i = decomposed.moveIndex32(i, 1)) {
    const UChar32 c = decomposed.char32At(i);
    if (!IsDiacritic(c)) kept.append(c);
  }
  text = nfc->normalize(kept, status);
}

void StripSymbols(icu::UnicodeString& text) {
  icu::UnicodeString kept;
  for (int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1)) {
    const UChar32 c = text.char32At(i);
    const int32_t mask = U_MASK(u_charType(c));
    // Windows also counts the ordinal indicators, superscript digits, fractions, the soft hyphen and
    // the micro sign as symbols.
    const bool symbol = (mask & (U_GC_P_MASK | U_GC_S_MASK | U_GC_Z_MASK | U_GC_NO_MASK)) || c == 0x00AA ||
                        c == 0x00BA || c == 0x00AD || c == 0x00B5 || (c >= 0x02B0 && c <= 0x02FF);
    if (symbol || (c >= 0x09 && c <= 0x0D)) continue;
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

// The collators of the user's locale at tertiary and identical strength: texts are equal only when
// nothing but what the options fold away differs, as on Windows.
struct Collators {
  std::unique_ptr<icu::Collator> tertiary;
  std::unique_ptr<icu::Collator> identical;
};

// Rebuilt when the locale changes.
std::shared_ptr<const Collators> UserCollators() {
  static std::mutex mutex;
  static std::string name;
  static std::shared_ptr<const Collators> collators;
  const icu::Locale locale = icu_text::UserLocale();
  std::lock_guard lock(mutex);
  if (collators && name == locale.getName()) return collators;
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::Collator> base(icu::Collator::createInstance(locale, status));
  if (U_FAILURE(status) || !base) return nullptr;
  // The ASCII punctuation in the order Windows sorts it, before everything else. Not for the large
  // tailorings of the double-byte pages' languages, which take most of a second to rebuild.
  std::unique_ptr<icu::Collator> created = std::move(base);
  const auto* tailored = dynamic_cast<const icu::RuleBasedCollator*>(created.get());
  if (tailored && tailored->getRules().length() < 4096) {
    icu::UnicodeString rules = tailored->getRules();
    rules += u"&[before 1][first variable]<\\'<'-'<' '<'!'<'\"'<'#'<'$'<'%'<'&'<'('<')'<'*'<','<'.'<'/'<':'"
             u"<';'<'?'<'@'<'['<\\\\<']'<'^'<'_'<'`'<'{'<'|'<'}'<'~'<'+'<'<'<'='<'>'";
    std::unique_ptr<icu::Collator> punctuated(new icu::RuleBasedCollator(rules, status));
    if (U_SUCCESS(status)) created = std::move(punctuated);
    status = U_ZERO_ERROR;
  }
  auto made = std::make_shared<Collators>();
  made->tertiary.reset(created->clone());
  if (!made->tertiary) return nullptr;
  made->tertiary->setStrength(icu::Collator::TERTIARY);
  created->setStrength(icu::Collator::IDENTICAL);
  made->identical = std::move(created);
  collators = std::move(made);
  name = locale.getName();
  return collators;
}

// Rank of a kana variant: half-width katakana, katakana, hiragana; -1 for any other character.
int KanaRank(UChar32 c) {
  if (c >= 0xFF66 && c <= 0xFF9D) return 0;
  if (c >= 0x30A1 && c <= 0x30FA) return 1;
  if (c >= 0x3041 && c <= 0x3096) return 2;
  return -1;
}

// Texts that differ only in kana variants: Windows puts half-width katakana first, then katakana,
// then hiragana, at the first character where they differ.
UCollationResult CompareKanaVariants(const icu::UnicodeString& left, const icu::UnicodeString& right) {
  if (left.countChar32() != right.countChar32()) return UCOL_EQUAL;
  for (int32_t i = 0, j = 0; i < left.length() && j < right.length();
       i = left.moveIndex32(i, 1), j = right.moveIndex32(j, 1)) {
    const int a = KanaRank(left.char32At(i)), b = KanaRank(right.char32At(j));
    if (a >= 0 && b >= 0 && a != b) return a < b ? UCOL_LESS : UCOL_GREATER;
  }
  return UCOL_EQUAL;
}

UCollationResult Collate(const Collators& collators, const icu::UnicodeString& left,
                         const icu::UnicodeString& right, UErrorCode& status) {
  UCollationResult order = collators.tertiary->compare(left, right, status);
  if (order == UCOL_EQUAL) order = CompareKanaVariants(left, right);
  if (order == UCOL_EQUAL) order = collators.identical->compare(left, right, status);
  return order;
}

icu::UnicodeString DecodeCounted(const char* text, int length) {
  const std::size_t size = length < 0 ? std::strlen(text) : static_cast<std::size_t>(length);
  return icu_text::Decode(text, size);
}

void Fold(icu::UnicodeString& text, std::uint32_t options) {
  // Windows compares the ligatures and the sharp s as the letters they stand for, at every level.
  text.findAndReplace(u"\u00E6", u"ae").findAndReplace(u"\u00C6", u"AE").findAndReplace(u"\u0153", u"oe");
  text.findAndReplace(u"\u0152", u"OE").findAndReplace(u"\u00DF", u"ss");
  if (options & kCompareIgnoreWidth) icu_text::MapWidth(text, false);
  if (options & kCompareIgnoreKanaType) icu_text::MapKana(text, true);
  if (options & kCompareIgnoreCase) text.foldCase();
  if (options & kCompareIgnoreAccents) icu_text::StripAccents(text);
  if (options & kCompareIgnoreSymbols) icu_text::StripSymbols(text);
}

// Word sort: hyphens and apostrophes weigh only when the texts are otherwise equal.
bool IsWordSortSpecial(char16_t c) { return c == u'-' || c == u'\''; }

icu::UnicodeString WithoutHyphens(const icu::UnicodeString& text) {
  icu::UnicodeString kept;
  for (int32_t i = 0; i < text.length(); ++i) {
    if (!IsWordSortSpecial(text.charAt(i))) kept.append(text.charAt(i));
  }
  return kept;
}

// Then, as on Windows, a text without them comes first, and an earlier one weighs more.
UCollationResult CompareHyphens(const icu::UnicodeString& left, const icu::UnicodeString& right) {
  int32_t i = 0, j = 0;
  for (;;) {
    while (i < left.length() && !IsWordSortSpecial(left.charAt(i))) ++i;
    while (j < right.length() && !IsWordSortSpecial(right.charAt(j))) ++j;
    const bool left_done = i >= left.length(), right_done = j >= right.length();
    if (left_done || right_done) return left_done == right_done ? UCOL_EQUAL : left_done ? UCOL_LESS : UCOL_GREATER;
    if (i != j) return i < j ? UCOL_GREATER : UCOL_LESS;
    if (left.charAt(i) != right.charAt(j)) return left.charAt(i) < right.charAt(j) ? UCOL_LESS : UCOL_GREATER;
    ++i;
    ++j;
  }
}

}  // namespace

int MapString(std::uint32_t options, const char* source, int length, char* destination, int destination_size) {
  if (!source || destination_size < 0 || (destination_size > 0 && !destination)) return 0;
  if ((options & 0xFF) == 0 || ExcludeEachOther(options, kMapFullWidth, kMapHalfWidth) ||
      ExcludeEachOther(options, kMapHiragana, kMapKatakana) ||
      ExcludeEachOther(options, kMapLowerCase, kMapUpperCase) ||
      ExcludeEachOther(options, kMapNoAccents | kMapNoSymbols, 0x3F)) {
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
  const auto collators = UserCollators();
  if (!collators) return 0;
  icu::UnicodeString left = DecodeCounted(a, a_length);
  icu::UnicodeString right = DecodeCounted(b, b_length);
  Fold(left, options);
  Fold(right, options);
  UErrorCode status = U_ZERO_ERROR;
  UCollationResult order = UCOL_EQUAL;
  if (options & kCompareStringSort) {
    order = Collate(*collators, left, right, status);
  } else {
    order = Collate(*collators, WithoutHyphens(left), WithoutHyphens(right), status);
    if (order == UCOL_EQUAL) order = CompareHyphens(left, right);
  }
  if (U_FAILURE(status)) return 0;
  return order == UCOL_LESS ? 1 : order == UCOL_EQUAL ? 2 : 3;
}

}  // namespace vex::platform
