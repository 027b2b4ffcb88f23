// Code-page services: the active ANSI code page, its lead bytes, locale mapping and comparison of
// 8-bit text in that code page, buffer case conversion, and the input method.
#pragma once

#include <cstdint>

#include "vextools/types.h"

namespace vex::platform {

// The active ANSI code page (Windows: GetACP; POSIX: VEXTOOLS_ACP, else the locale, else 1252).
std::uint32_t ActiveCodePage();

// Forgets the code page read so far so that the next query reads it again (POSIX; for test and fuzz
// hooks that set VEXTOOLS_ACP after start). Does nothing on Windows.
void RereadActiveCodePage();

// True when byte is a lead byte of the active code page.
bool IsCodePageLeadByte(unsigned char byte);

// Locale mapping options, combinable; the bit values are the library's own transform flags.
enum MapOption : std::uint32_t {
  kMapFullWidth = 1,
  kMapHalfWidth = 2,
  kMapHiragana = 4,
  kMapKatakana = 8,
  kMapLowerCase = 16,
  kMapUpperCase = 32,
  kMapNoAccents = 64,
  kMapNoSymbols = 128,
};

// Maps source (length bytes; negative: NUL-terminated, terminator included) with the user's default
// locale into destination, like LCMapStringA. Returns the bytes written, the bytes needed when
// destination_size is 0, or 0 on failure (bad options, a buffer too small, null pointers). Options
// that exclude each other (both widths, both kana types, both cases) fail.
int MapString(std::uint32_t options, const char* source, int length, char* destination, int destination_size);

// Comparison options, combinable; the bit values are the library's own comparison flags.
enum CompareOption : std::uint32_t {
  kCompareIgnoreCase = 1,
  kCompareIgnoreKanaType = 2,
  kCompareIgnoreAccents = 4,
  kCompareIgnoreSymbols = 8,
  kCompareIgnoreWidth = 16,
  kCompareStringSort = 32,
};

// Locale-aware comparison with the user's default locale, like CompareStringA: 1 less, 2 equal,
// 3 greater, 0 on failure. A negative length means NUL-terminated.
int CompareStrings(std::uint32_t options, const char* a, int a_length, const char* b, int b_length);

// Case conversion of length bytes in place, character by character, like CharUpperBuffA.
void UpperCaseBuffer(char* text, std::uint32_t length);
void LowerCaseBuffer(char* text, std::uint32_t length);

// Length of the composition string of the window's input context; 0 without an input method.
int ImeCompositionLength(HWND window);

}  // namespace vex::platform
