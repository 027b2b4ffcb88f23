// Multibyte-aware strings: walking, counting, searching, comparing and transforming 8-bit text in the
// active ANSI code page, which may be a double-byte one. A character code is the byte below 256, or
// lead byte * 256 + second byte.
#pragma once

#include <cstdint>

#include "export.h"
#include "types.h"

// Nonzero when the active code page has lead bytes.
VEXTOOLS_API std::uint32_t VexIsDBCSEnabled();
// The 256 entries, nonzero for a lead byte.
VEXTOOLS_API const std::uint32_t* VexGetTabBLeadByte();

VEXTOOLS_API int VexIsValidChar(std::uint16_t c);
VEXTOOLS_API int VexIsSpaceChar(std::uint16_t c);

// The previous character of current in the string that begins at start; null when either is null.
VEXTOOLS_API char* VexCharPrev(const char* start, const char* current);

VEXTOOLS_API std::int32_t VexNbChar(const char* text);
VEXTOOLS_API std::int32_t VexNbChar2NbBytes(const char* text, std::int32_t characters);
VEXTOOLS_API std::int32_t VexNbBytes2NbChar(const char* text, std::int32_t bytes);

// Comparison flags: 1 ignore case, 2 ignore kana type, 4 ignore accents, 8 ignore symbols, 16 ignore
// width, 32 string sort. One length for both strings (-1: NUL-terminated). -1, 0 or 1.
VEXTOOLS_API int VexStringCompare(const char* s1, const char* s2, std::int32_t length, std::uint32_t flags);

// Case conversion of length bytes (0: up to the NUL), in place; returns text.
VEXTOOLS_API char* VexCharUpper(char* text, std::uint32_t length);
VEXTOOLS_API char* VexCharLower(char* text, std::uint32_t length);

// Transform flags: 1 full width, 2 half width, 4 hiragana, 8 katakana, 16 lower case, 32 upper case,
// 64 no accents, 128 no symbols.
VEXTOOLS_API std::int32_t VexTransformString(const char* source, std::int32_t source_length, char* destination,
                                             std::int32_t destination_size, std::uint32_t flags);
VEXTOOLS_API std::int32_t VexTransformString(const char* source, char* destination, std::int32_t destination_size,
                                             std::uint32_t flags);
VEXTOOLS_API std::int32_t VexTransformString(char* text, std::int32_t length, std::uint32_t flags);
// Half width, in place.
VEXTOOLS_API std::int32_t VexSimplifyString(char* text, std::int32_t length);

// Writes the one or two bytes of c (no terminator): 1, or 0 for a null destination or invalid c.
VEXTOOLS_API int VexSetCharValue(char* destination, std::uint16_t c);

VEXTOOLS_API char* VexStrChr(const char* text, std::uint16_t c);
VEXTOOLS_API char* VexStrChr(const char* buffer, std::uint16_t c, std::int32_t count);
VEXTOOLS_API char* VexStrRChr(const char* text, std::uint16_t c);
VEXTOOLS_API char* VexStrStr(const char* haystack, const char* needle);
VEXTOOLS_API char* VexStrStrC(const char* haystack, const char* needle);
// First match blind to case, width, kana type and accents.
VEXTOOLS_API char* VexFindString(const char* text, const char* pattern);

// Mode 0: count characters from character number first (from 1); mode 1: the count rightmost ones.
VEXTOOLS_API int VexExtractString(const char* source, char* destination, std::int32_t destination_size, int mode,
                                  std::int32_t first, std::int32_t count);

// 1 while an input-method composition is in progress in the window.
VEXTOOLS_API int VexIsImeRunning(HWND window);
