// Arbitrary bytes, written to a file, read through KARTEXTFILE (lines, fields, the line index) and
// GTFILE (lines with small caches). The first bytes choose the options.
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "vextools/streamfile.h"
#include "vextools/textfile.h"

namespace {

const std::string& FileName() {
  static const std::string name =
      (std::filesystem::temp_directory_path() /
       ("vextools-fuzz-text-" + std::to_string(std::chrono::steady_clock::now().time_since_epoch().count())))
          .string();
  return name;
}

void ReadText(std::uint8_t options, char fieldSeparator) {
  KARTEXTFILE file(FileName().c_str());
  if (!file.IsFileOpened()) return;
  static const char* const kLineSeparators[] = {"\r\n", ";", "\n", "\r"};
  file.SetLineSeparator(kLineSeparators[options & 3]);
  const char separator[2] = {fieldSeparator ? fieldSeparator : '\t', '\0'};
  file.SetFieldSeparator(separator);
  if (options & 4) file.IsUNIXTextFile();
  if (options & 8) file.SwitchToUNIXMode();

  std::vector<char> destination;
  for (int guard = 0; guard < 100000; ++guard) {
    tagFILELINE* line = file.GetLine();
    if (!line) break;
    char* data = nullptr;
    file.GetLineData(line, guard % 7, 5, data);
    if (options & 16) {
      const std::int32_t count = file.MakeIndexField(line);
      destination.assign(static_cast<std::size_t>(line->size) + 2, '\0');
      for (std::int32_t n = 1; n <= count && n < 50; ++n) file.GetFieldNr(line, n, destination.data());
    }
    char* field = nullptr;
    for (int fields = 0; fields < 100000 && file.GetFieldData(line, field) > 0; ++fields) {
    }
  }
  const std::int32_t lines = file.MakeIndexLine();
  for (std::int32_t n : {1, 2, lines / 2, lines - 1, lines, lines + 1}) {
    if (tagFILELINE* line = file.GetLineNr(n)) {
      char* field = nullptr;
      while (file.GetFieldData(line, field) > 0) {
      }
    }
  }
  file.GetFieldCount();
  file.SetPosition(static_cast<std::int32_t>(options) * 3);
  file.GetLine();
}

void ReadStream(std::int32_t cacheSize, std::int32_t max) {
  GTFILE file;
  file.SetCacheSize(cacheSize);
  if (!file.fopen(FileName().c_str(), 0x21)) return;
  std::vector<char> buffer(static_cast<std::size_t>(max) + 1);
  for (int guard = 0; guard < 100000; ++guard) {
    if (guard % 5 == 0) file.LineLength();
    if (!file.fgets(buffer.data(), max)) break;
    if (guard % 3 == 0) file.frewind(1);
    file.feol();
  }
  file.fseek(2, 2);
  char block[64];
  file.Read(block, sizeof block);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 3) return 0;
  {
    std::ofstream out(FileName(), std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(data + 3), static_cast<std::streamsize>(size - 3));
  }
  ReadText(data[0], static_cast<char>(data[1]));
  ReadStream(1 + data[2] % 64, 1 + data[1] % 40);
  return 0;
}
