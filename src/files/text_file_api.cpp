// The FileTxt functions: KARTEXTFILE through an opaque handle. A null handle gives 0 or does nothing.
// FileTxtGetFieldData, called once per field, lives beside GetFieldData so that it can be inlined.
#include <new>

#include "vextools/textfile.h"

namespace {
KARTEXTFILE* File(void* handle) { return static_cast<KARTEXTFILE*>(handle); }
}  // namespace

void* FileTxtOpen(const char* name) {
  auto* file = new (std::nothrow) KARTEXTFILE(name);
  if (file && !file->IsFileOpened()) {
    delete file;
    file = nullptr;
  }
  return file;
}

void FileTxtClose(void* handle) { delete File(handle); }

int FileTxtIsEOF(void* handle) { return handle ? File(handle)->IsEof() : 0; }

std::int32_t FileTxtLength(void* handle) { return handle ? File(handle)->FileLength() : 0; }

int FileTxtSetLineSeparator(void* handle, const char* separator) {
  return handle ? File(handle)->SetLineSeparator(separator) : 0;
}

int FileTxtSetFieldSeparator(void* handle, const char* separator) {
  return handle ? File(handle)->SetFieldSeparator(separator) : 0;
}

tagFILELINE* FileTxtGetLine(void* handle) { return handle ? File(handle)->GetLine() : nullptr; }

tagFILELINE* FileTxtGetLineNr(void* handle, std::int32_t n) {
  return handle ? File(handle)->GetLineNr(n) : nullptr;
}

std::int32_t FileTxtGetLineSize(void* handle, tagFILELINE* line) {
  return handle ? File(handle)->GetLineSize(line) : 0;
}

std::int32_t FileTxtGetLineData(void* handle, tagFILELINE* line, std::int32_t start, std::int32_t count,
                                char** data) {
  if (!handle || !data) return 0;
  return File(handle)->GetLineData(line, start, count, *data);
}

int FileTxtGetFieldNr(void* handle, tagFILELINE* line, std::int32_t n, char* destination) {
  return handle ? File(handle)->GetFieldNr(line, n, destination) : 0;
}

std::int32_t FileTxtSetPosition(void* handle, std::int32_t position) {
  return handle ? File(handle)->SetPosition(position) : 0;
}

std::int32_t FileTxtGetPosition(void* handle) { return handle ? File(handle)->GetPosition() : 0; }

std::int32_t FileTxtMakeIndexLine(void* handle) { return handle ? File(handle)->MakeIndexLine() : 0; }

std::int32_t FileTxtMakeIndexField(void* handle, tagFILELINE* line) {
  return handle ? File(handle)->MakeIndexField(line) : 0;
}

std::int32_t FileTxtGetLineCount(void* handle) { return handle ? File(handle)->GetLineCount() : 0; }

std::int32_t FileTxtGetFieldCount(void* handle) { return handle ? File(handle)->GetFieldCount() : 0; }

int FileTxtIsUNIXFile(void* handle) { return handle ? File(handle)->IsUNIXTextFile() : 0; }

void FileTxtSetUNIXMode(void* handle) {
  if (handle) File(handle)->SwitchToUNIXMode();
}
