// KARERRORFILE and the FileErr functions.
#include "vextools/errorfile.h"

#include <cstdio>
#include <cstring>
#include <new>
#include <string>

#include "files/report_name.h"

namespace {

constexpr unsigned short kModeRead = 0x0000;
constexpr unsigned short kModeWrite = 0x0001;
constexpr unsigned short kModeWriteCreate = 0x1001;

}  // namespace

KARERRORFILE::KARERRORFILE() : report_name_{}, extension_{} { std::strcpy(extension_, ".ERR"); }

KARERRORFILE::KARERRORFILE(char* inputName) : KARERRORFILE() {
  MakeFileName(inputName);
  if (report_name_[0] == '\0') return;
  Open(report_name_, kModeWriteCreate);  // empties an earlier report
  Close(1);
}

KARERRORFILE::~KARERRORFILE() {
  if (report_name_[0] != '\0') {
    // Only a report seen to be empty is removed: one that cannot be opened is left alone.
    const bool opened = Open(report_name_, kModeRead) == 0;
    const std::int32_t length = GetPhysicalLength();
    Close(1);
    if (opened && length == 0) std::remove(report_name_);
  }
  report_name_[0] = '\0';
}

void KARERRORFILE::MakeFileName(char* inputName) {
  if (!inputName) return;
  // An empty input names no report, and a name that would not fit the field is not cut to another
  // file's name: both leave the object without a report.
  const std::string name = *inputName ? vex::files::ReplaceExtension(inputName, extension_) : std::string();
  if (name.size() >= sizeof report_name_) {
    report_name_[0] = '\0';
    return;
  }
  std::memcpy(report_name_, name.c_str(), name.size() + 1);
}

void KARERRORFILE::Write(char* text) {
  Open(report_name_, kModeWrite);
  // Position -1 is the end of the file; on a report that could not be opened this writes nothing.
  WriteDirect(text, text ? static_cast<std::int32_t>(std::strlen(text)) : 0, -1);
  Close(1);
}

KARERRORFILE* FileErrOpen(char* inputName) { return new (std::nothrow) KARERRORFILE(inputName); }

void FileErrWrite(KARERRORFILE* file, char* text) {
  if (file) file->Write(text);
}

void FileErrClose(KARERRORFILE* file) { delete file; }
