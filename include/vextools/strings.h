// String list and string utilities.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "export.h"

// Bounded copy that never cuts a double-byte character in half. A source no longer than size (or any
// source when size is 0) is copied whole with its terminator. Null when a pointer is null or size < 0.
VEXTOOLS_API char* StringCopy(char* destination, const char* source, std::int32_t size);

// Appends source when both fit in size: 0. Flag 1 appends what fits: 1. Otherwise nothing: 2.
VEXTOOLS_API int StringConcat(char* destination, const char* source, std::int32_t size, std::int32_t flags);

// Flag 1: case-sensitive, flag 2: ignoring case, in the user's locale; -1, 0 or 1 (0 for null or no flag).
VEXTOOLS_API int StringCompare(const char* a, const char* b, std::int32_t flags);

// Upper case without accents (and, with double-byte support, in half width), in place.
VEXTOOLS_API void StringUpper(char* text);

// Flag 1 removes the run of c at the start, flag 2 the run at the end (byte-wise). Returns the length
// left when flag 2 is given, else 0.
VEXTOOLS_API int CharDelete(char* text, char c, int flags);

// Maps count bytes between the classic Macintosh and the ANSI character sets; source and destination
// may be the same buffer.
VEXTOOLS_API void MacToAnsiBuff(const char* source, char* destination, std::int32_t count);
VEXTOOLS_API void AnsiToMacBuff(const char* source, char* destination, std::int32_t count);

// Upper-case hexadecimal text of the bytes up to their first NUL, or of count bytes: 1, 0 for null.
VEXTOOLS_API int BinToString(char* text, const unsigned char* bytes);
VEXTOOLS_API int BinToStringExt(char* text, const unsigned char* bytes, std::int32_t count);
// Decodes upper-case hexadecimal text (length / 2 bytes, then a NUL): 1, 0 for null.
VEXTOOLS_API int StringToBin(const char* text, unsigned char* bytes);
VEXTOOLS_API int StringToBinExt(const char* text, unsigned char* bytes, int* count);

// An angle written as degrees, minutes and seconds with a hemisphere letter, in decimal degrees. ok is
// set to 0 when minutes or seconds are out of range or the letter contradicts a negative value. The
// text after the seconds is upper-cased in place.
VEXTOOLS_API double StringToDecimalDegrees(char* text, int longitude, int* ok);

// Strings joined by one separator character. Items are never empty and never hold the separator when
// added; there is no escaping.
class VEXTOOLS_API KVStringList {
 public:
  explicit KVStringList(char separator);
  KVStringList(const char* text, char separator);
  KVStringList(const KVStringList& other);
  KVStringList& operator=(const KVStringList& other);
  ~KVStringList();

  void Clear();
  std::uint32_t Count() const;
  const char* Item(std::uint32_t index) const;  // null when out of range
  const char* operator[](std::uint32_t index) const;
  bool Add(const char* text);
  bool GetStringList(std::string& out) const;
  // False when a piece was refused (an empty one between separators); the others are kept.
  bool SetStringList(const char* text);
  bool GetStringPos(const char* text, std::uint32_t& index, bool case_sensitive) const;
  bool RemoveString(std::uint32_t index);
  bool HasString(const char* text, bool case_sensitive) const;
  char SetSeparator(char separator);  // NUL keeps the current one; returns the previous one
  char GetSeparator() const;

 private:
  bool HoldsSeparator(const char* text) const;

  char separator_;
  std::vector<std::string> items_;
};
