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
