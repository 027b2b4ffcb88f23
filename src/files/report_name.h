// Where a report file's name comes from: the input file's name with its extension replaced.
#pragma once

#include <string>

namespace vex::files {

// The character that ends a directory part when a report name is made. Windows names use the
// backslash only; in a POSIX name the backslash is an ordinary character and "/" separates.
#if defined(_WIN32)
inline constexpr char kReportPathSeparator = '\\';
#else
inline constexpr char kReportPathSeparator = '/';
#endif

// input with everything from the first period of its last component replaced by extension (appended
// when that component has no period). Walks characters of the active code page, so a second byte
// that equals the separator does not end a component.
std::string ReplaceExtension(const char* input, const char* extension);

}  // namespace vex::files
