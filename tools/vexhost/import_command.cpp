#include "import_command.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include "vextools/errorfile.h"
#include "vextools/textfile.h"

namespace vexhost {
namespace {

struct ReaderApi {
  void* (*Open)(const char*);
  void (*Close)(void*);
  int (*SetFieldSeparator)(void*, const char*);
  std::int32_t (*MakeIndexLine)(void*);
  std::int32_t (*GetFieldCount)(void*);
  tagFILELINE* (*GetLineNr)(void*, std::int32_t);
  std::int32_t (*GetFieldData)(void*, tagFILELINE*, char**);
  KARERRORFILE* (*ErrOpen)(char*);
  void (*ErrWrite)(KARERRORFILE*, char*);
  void (*ErrClose)(KARERRORFILE*);

  bool Bind(const Library& library) {
    Open = library.Entry<decltype(Open)>("_Z11FileTxtOpenPKc");
    Close = library.Entry<decltype(Close)>("_Z12FileTxtClosePv");
    SetFieldSeparator = library.Entry<decltype(SetFieldSeparator)>("_Z24FileTxtSetFieldSeparatorPvPKc");
    MakeIndexLine = library.Entry<decltype(MakeIndexLine)>("_Z20FileTxtMakeIndexLinePv");
    GetFieldCount = library.Entry<decltype(GetFieldCount)>("_Z20FileTxtGetFieldCountPv");
    GetLineNr = library.Entry<decltype(GetLineNr)>("_Z16FileTxtGetLineNrPvi");
    GetFieldData = library.Entry<decltype(GetFieldData)>("_Z19FileTxtGetFieldDataPvP11tagFILELINEPPc");
    ErrOpen = library.Entry<decltype(ErrOpen)>("_Z11FileErrOpenPc");
    ErrWrite = library.Entry<decltype(ErrWrite)>("_Z12FileErrWriteP12KARERRORFILEPc");
    ErrClose = library.Entry<decltype(ErrClose)>("_Z12FileErrCloseP12KARERRORFILE");
    return Open && Close && SetFieldSeparator && MakeIndexLine && GetFieldCount && GetLineNr && GetFieldData &&
           ErrOpen && ErrWrite && ErrClose;
  }
};

bool IsDataLine(const char* text) { return std::strlen(text) > 2 && std::strncmp(text, "//", 2) != 0; }

}  // namespace

int ImportFile(const Library& library, const char* path, const char* separator) {
  ReaderApi api{};
  if (!api.Bind(library)) {
    std::fprintf(stderr, "vexhost: the library has no delimited-text reader\n");
    return 1;
  }
  void* file = api.Open(path);
  if (!file) {
    std::fprintf(stderr, "vexhost: cannot open %s\n", path);
    return 1;
  }
  api.SetFieldSeparator(file, separator);
  const std::int32_t lines = api.MakeIndexLine(file);
  const std::int32_t expected = api.GetFieldCount(file);
  std::string name(path);
  KARERRORFILE* report = api.ErrOpen(name.data());

  std::int32_t records = 0, problems = 0;
  for (std::int32_t n = 1; n <= lines; ++n) {
    tagFILELINE* line = api.GetLineNr(file, n);
    if (!line || !line->data || !IsDataLine(line->data)) continue;
    char* field = nullptr;
    std::int32_t fields = 0;
    while (api.GetFieldData(file, line, &field) > 0) ++fields;
    ++records;
    if (fields != expected) {
      char message[128];
      std::snprintf(message, sizeof message, "Line %d: %d fields, %d expected\r\n", n, fields, expected);
      api.ErrWrite(report, message);
      ++problems;
    }
  }
  std::printf("imported %s: %d lines, %d records of %d fields, %d with problems\n", path, lines, records,
              expected, problems);
  api.ErrClose(report);  // an empty report is removed
  api.Close(file);
  return 0;
}

}  // namespace vexhost
