// Code-page services on Win32: the system's own code-page, NLS and input-method calls.
#include <windows.h>
#include <imm.h>

#include "platform/codepage.h"

namespace vex::platform {

std::uint32_t ActiveCodePage() { return ::GetACP(); }

void RereadActiveCodePage() {}

bool IsCodePageLeadByte(unsigned char byte) { return ::IsDBCSLeadByteEx(CP_ACP, byte) != FALSE; }

int MapString(std::uint32_t options, const char* source, int length, char* destination, int destination_size) {
  DWORD flags = 0;
  if (options & kMapFullWidth) flags |= LCMAP_FULLWIDTH;
  if (options & kMapHalfWidth) flags |= LCMAP_HALFWIDTH;
  if (options & kMapHiragana) flags |= LCMAP_HIRAGANA;
  if (options & kMapKatakana) flags |= LCMAP_KATAKANA;
  if (options & kMapLowerCase) flags |= LCMAP_LOWERCASE;
  if (options & kMapUpperCase) flags |= LCMAP_UPPERCASE;
  if (options & kMapNoAccents) flags |= NORM_IGNORENONSPACE;
  if (options & kMapNoSymbols) flags |= NORM_IGNORESYMBOLS;
  if (!source || (destination_size > 0 && !destination)) return 0;
  return ::LCMapStringA(LOCALE_USER_DEFAULT, flags, source, length < 0 ? -1 : length, destination, destination_size);
}

int CompareStrings(std::uint32_t options, const char* a, int a_length, const char* b, int b_length) {
  DWORD flags = 0;
  if (options & kCompareIgnoreCase) flags |= NORM_IGNORECASE;
  if (options & kCompareIgnoreKanaType) flags |= NORM_IGNOREKANATYPE;
  if (options & kCompareIgnoreAccents) flags |= NORM_IGNORENONSPACE;
  if (options & kCompareIgnoreSymbols) flags |= NORM_IGNORESYMBOLS;
  if (options & kCompareIgnoreWidth) flags |= NORM_IGNOREWIDTH;
  if (options & kCompareStringSort) flags |= SORT_STRINGSORT;
  return ::CompareStringA(LOCALE_USER_DEFAULT, flags, a, a_length, b, b_length);
}

void UpperCaseBuffer(char* text, std::uint32_t length) {
  if (text) ::CharUpperBuffA(text, length);
}

void LowerCaseBuffer(char* text, std::uint32_t length) {
  if (text) ::CharLowerBuffA(text, length);
}

int ImeCompositionLength(HWND window) {
  HIMC context = ::ImmGetContext(window);
  if (!context) return 0;
  ::ImmGetOpenStatus(context);  // read as the input method expects; the status itself is not used
  const LONG length = ::ImmGetCompositionStringA(context, GCS_COMPSTR, nullptr, 0);
  ::ImmReleaseContext(window, context);
  return length > 0 ? static_cast<int>(length) : 0;
}

}  // namespace vex::platform
