// The active code page on POSIX and its conversions through ICU. The code page comes from
// VEXTOOLS_ACP, else from the locale of the environment (its charset, or for UTF-8 the ANSI code page
// Windows gives its language), else 1252. 932, 936, 949 and 950 are the double-byte pages.
#include <unicode/normalizer2.h>
#include <unicode/translit.h>
#include <unicode/uchar.h>
#include <unicode/ucnv.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "platform/codepage.h"
#include "platform/posix/icu_codepage.h"

namespace vex::platform {
namespace {

std::atomic<std::uint32_t> g_code_page{0};

struct NamedPage {
  std::string_view name;
  std::uint32_t code_page;
};

// Charset names, lower case without "-" and "_".
constexpr NamedPage kCharsets[] = {
    {"sjis", 932},     {"shiftjis", 932},  {"cp932", 932},     {"windows31j", 932}, {"mskanji", 932},
    {"gbk", 936},      {"gb2312", 936},    {"cp936", 936},     {"euccn", 936},      {"gb18030", 936},
    {"euckr", 949},    {"cp949", 949},     {"uhc", 949},       {"big5", 950},       {"cp950", 950},
    {"big5hkscs", 950}, {"iso88591", 1252}, {"iso885915", 1252}, {"latin1", 1252},  {"iso88592", 1250},
    {"iso88595", 1251}, {"koi8r", 1251},   {"koi8u", 1251},    {"iso88597", 1253},  {"iso88599", 1254},
    {"iso88598", 1255}, {"iso88596", 1256}, {"iso885913", 1257}, {"tis620", 874},
};

// The ANSI code page Windows gives a language.
constexpr NamedPage kLanguages[] = {
    {"ja", 932},   {"ko", 949},   {"cs", 1250}, {"hu", 1250}, {"pl", 1250}, {"ro", 1250}, {"sk", 1250},
    {"sl", 1250},  {"hr", 1250},  {"sq", 1250}, {"bs", 1250}, {"ru", 1251}, {"uk", 1251}, {"be", 1251},
    {"bg", 1251},  {"mk", 1251},  {"sr", 1251}, {"kk", 1251}, {"el", 1253}, {"tr", 1254}, {"az", 1254},
    {"he", 1255},  {"ar", 1256},  {"fa", 1256}, {"ur", 1256}, {"et", 1257}, {"lv", 1257}, {"lt", 1257},
    {"vi", 1258},  {"th", 874},
};

std::uint32_t CodePageOfLocale(std::string_view locale) {
  const std::size_t at = locale.find('@');
  if (at != std::string_view::npos) locale = locale.substr(0, at);
  const std::size_t dot = locale.find('.');
  std::string charset;
  if (dot != std::string_view::npos) {
    for (char c : locale.substr(dot + 1)) {
      if (c != '-' && c != '_') charset += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    locale = locale.substr(0, dot);
  }
  if (charset.size() > 2 && charset.compare(0, 2, "cp") == 0 && charset.size() == 6) {
    const std::uint32_t page = static_cast<std::uint32_t>(std::strtoul(charset.c_str() + 2, nullptr, 10));
    if (page >= 1250 && page <= 1258) return page;
  }
  for (const auto& entry : kCharsets) {
    if (charset == entry.name) return entry.code_page;
  }
  const std::string_view language = locale.substr(0, locale.find('_'));
  if (language == "zh") {
    const bool traditional = locale.find("_TW") != std::string_view::npos ||
                             locale.find("_HK") != std::string_view::npos ||
                             locale.find("_MO") != std::string_view::npos;
    return traditional ? 950 : 936;
  }
  for (const auto& entry : kLanguages) {
    if (language == entry.name) return entry.code_page;
  }
  return 1252;
}

std::uint32_t ReadCodePage() {
  if (const char* acp = std::getenv("VEXTOOLS_ACP"); acp && *acp) {
    char* end = nullptr;
    const unsigned long page = std::strtoul(acp, &end, 10);
    if (end != acp && *end == '\0' && page > 0 && page < 65536) return static_cast<std::uint32_t>(page);
  }
  for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
    if (const char* value = std::getenv(name); value && *value) return CodePageOfLocale(value);
  }
  return 1252;
}

struct ConverterCloser {
  void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, ConverterCloser>;

// A converter of the active code page that stops at a character it cannot convert.
Converter OpenConverter() {
  UErrorCode status = U_ZERO_ERROR;
  const std::string name = "windows-" + std::to_string(ActiveCodePage());
  UConverter* converter = ucnv_open(name.c_str(), &status);
  if (U_FAILURE(status)) {
    status = U_ZERO_ERROR;
    converter = ucnv_open("windows-1252", &status);
  }
  if (U_FAILURE(status)) return nullptr;
  status = U_ZERO_ERROR;
  ucnv_setFromUCallBack(converter, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
  return Converter(converter);
}

// Exact bytes of c in the code page; empty when it has none.
std::string EncodeExact(UConverter* converter, UChar32 c) {
  UChar units[2];
  int32_t count = 0;
  U16_APPEND_UNSAFE(units, count, c);
  char bytes[8];
  UErrorCode status = U_ZERO_ERROR;
  ucnv_reset(converter);
  const int32_t length = ucnv_fromUChars(converter, bytes, sizeof bytes, units, count, &status);
  if (U_FAILURE(status) || length <= 0) return c == 0 ? std::string(1, '\0') : std::string();
  return std::string(bytes, static_cast<std::size_t>(length));
}

// Nearest forms of c, tried in order when the code page lacks c itself.
std::string EncodeNearest(UConverter* converter, UChar32 c) {
  if (std::string exact = EncodeExact(converter, c); !exact.empty()) return exact;
  if (c >= 0xFF01 && c <= 0xFF5E) return EncodeExact(converter, c - 0xFEE0);  // full-width ASCII
  if (c == 0x3000) return " ";
  UErrorCode status = U_ZERO_ERROR;
  const icu::Normalizer2* nfd = icu::Normalizer2::getNFDInstance(status);
  icu::UnicodeString decomposition;
  if (U_SUCCESS(status) && nfd->getDecomposition(c, decomposition) && decomposition.length() > 0) {
    return EncodeExact(converter, decomposition.char32At(0));
  }
  return std::string();
}

// Single-byte case tables of the active code page.
struct CaseTables {
  std::uint32_t code_page = 0;
  std::array<unsigned char, 256> upper{};
  std::array<unsigned char, 256> lower{};
};

std::mutex g_case_mutex;
std::shared_ptr<const CaseTables> g_case_tables;

std::shared_ptr<const CaseTables> CurrentCaseTables() {
  const std::uint32_t page = ActiveCodePage();
  std::lock_guard lock(g_case_mutex);
  if (g_case_tables && g_case_tables->code_page == page) return g_case_tables;
  auto tables = std::make_shared<CaseTables>();
  tables->code_page = page;
  Converter converter = OpenConverter();
  for (int byte = 0; byte < 256; ++byte) {
    tables->upper[byte] = tables->lower[byte] = static_cast<unsigned char>(byte);
    if (byte < 0x80 || IsCodePageLeadByte(static_cast<unsigned char>(byte)) || !converter) continue;
    const char single = static_cast<char>(byte);
    const icu::UnicodeString text = icu_text::Decode(&single, 1);
    if (text.length() != 1 || text.charAt(0) == 0xFFFD) continue;
    const std::string up = EncodeExact(converter.get(), u_toupper(text.char32At(0)));
    const std::string low = EncodeExact(converter.get(), u_tolower(text.char32At(0)));
    if (up.size() == 1) tables->upper[byte] = static_cast<unsigned char>(up[0]);
    if (low.size() == 1) tables->lower[byte] = static_cast<unsigned char>(low[0]);
  }
  g_case_tables = tables;
  return tables;
}

void CaseBuffer(char* text, std::uint32_t length, bool upper) {
  if (!text) return;
  if (length == 0) length = static_cast<std::uint32_t>(std::strlen(text));
  const auto tables = CurrentCaseTables();
  const auto& table = upper ? tables->upper : tables->lower;
  Converter converter;
  for (std::uint32_t i = 0; i < length; ++i) {
    const unsigned char byte = static_cast<unsigned char>(text[i]);
    if (byte < 0x80) {
      if (upper ? (byte >= 'a' && byte <= 'z') : (byte >= 'A' && byte <= 'Z')) text[i] = static_cast<char>(byte ^ 0x20);
      continue;
    }
    if (!IsCodePageLeadByte(byte) || i + 1 >= length) {
      text[i] = static_cast<char>(table[byte]);
      continue;
    }
    // A double-byte character: through Unicode, kept when its other case is not two bytes here.
    if (!converter) converter = OpenConverter();
    const icu::UnicodeString decoded = icu_text::Decode(text + i, 2);
    if (converter && decoded.length() == 1) {
      const UChar32 c = decoded.char32At(0);
      const std::string mapped = EncodeExact(converter.get(), upper ? u_toupper(c) : u_tolower(c));
      if (mapped.size() == 2) std::memcpy(text + i, mapped.data(), 2);
    }
    ++i;
  }
}

}  // namespace

std::uint32_t ActiveCodePage() {
  std::uint32_t page = g_code_page.load(std::memory_order_acquire);
  if (page == 0) {
    page = ReadCodePage();
    g_code_page.store(page, std::memory_order_release);
  }
  return page;
}

void RereadActiveCodePage() { g_code_page.store(0, std::memory_order_release); }

bool IsCodePageLeadByte(unsigned char byte) {
  switch (ActiveCodePage()) {
    case 932:
      return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
    case 936:
    case 949:
    case 950:
      return byte >= 0x81 && byte <= 0xFE;
    default:
      return false;
  }
}

void UpperCaseBuffer(char* text, std::uint32_t length) { CaseBuffer(text, length, true); }
void LowerCaseBuffer(char* text, std::uint32_t length) { CaseBuffer(text, length, false); }

int ImeCompositionLength(HWND) { return 0; }

namespace icu_text {

icu::UnicodeString Decode(const char* bytes, std::size_t length) {
  Converter converter = OpenConverter();
  if (!converter || length == 0) return icu::UnicodeString();
  std::u16string buffer(length + 1, u'\0');
  UErrorCode status = U_ZERO_ERROR;
  const int32_t count = ucnv_toUChars(converter.get(), buffer.data(), static_cast<int32_t>(buffer.size()), bytes,
                                      static_cast<int32_t>(length), &status);
  if (U_FAILURE(status)) return icu::UnicodeString();
  return icu::UnicodeString(buffer.data(), count);
}

std::string Encode(const icu::UnicodeString& text) {
  Converter converter = OpenConverter();
  std::string out;
  if (!converter) return out;
  out.reserve(static_cast<std::size_t>(text.length()) * 2);
  for (int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1)) {
    const std::string bytes = EncodeNearest(converter.get(), text.char32At(i));
    out += bytes.empty() ? std::string("?") : bytes;
  }
  return out;
}

std::string EncodeCodePoint(UChar32 c) {
  Converter converter = OpenConverter();
  return converter ? EncodeNearest(converter.get(), c) : std::string();
}

icu::Locale UserLocale() {
  switch (ActiveCodePage()) {
    case 932:
      return icu::Locale("ja");
    case 936:
      return icu::Locale("zh");
    case 949:
      return icu::Locale("ko");
    case 950:
      return icu::Locale("zh_Hant");
    default:
      break;
  }
  // The C locale stands for no preference: the root collation, not ICU's code-point-like en_US_POSIX.
  const icu::Locale& locale = icu::Locale::getDefault();
  return std::strcmp(locale.getName(), "en_US_POSIX") == 0 ? icu::Locale::getRoot() : locale;
}

}  // namespace icu_text
}  // namespace vex::platform
