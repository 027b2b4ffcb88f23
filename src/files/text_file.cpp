// KARTEXTFILE: construction, separators, position and the UNIX text switches.
#include <algorithm>
#include <cstring>
#include <new>

#include "files/grow_buffer.h"
#include "vextools/textfile.h"

KARTEXTFILE::KARTEXTFILE() { Init(); }

KARTEXTFILE::KARTEXTFILE(const char* name) {
  Init();
  if (name) {
    std::strncpy(name_, name, sizeof name_ - 1);
    name_[sizeof name_ - 1] = '\0';
  }
  if (Open(name_, 0) == 0 && AllocateBuffer()) eof_ = 0;
}

KARTEXTFILE::~KARTEXTFILE() {
  Close(1);
  if (lineIndex_) {
    GlobalUnlock(lineIndex_);
    GlobalFree(lineIndex_);
  }
  delete[] buffer_;
  vex::files::FreeGrowBuffer(copyBuffer_);
  vex::files::FreeGrowBuffer(fieldBuffer_);
}

void KARTEXTFILE::Init() {
  std::memset(name_, 0, sizeof name_);
  std::memset(lineSeparator_, 0, sizeof lineSeparator_);
  std::memset(fieldSeparator_, 0, sizeof fieldSeparator_);
  std::strcpy(lineSeparator_, "\r\n");
  std::strcpy(fieldSeparator_, "\t");
  lineCount_ = 0;
  lineIndex_ = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, kLineIndexStep * sizeof(std::int32_t));
  lineIndexData_ = lineIndex_ ? static_cast<std::int32_t*>(GlobalLock(lineIndex_)) : nullptr;
  currentLine_ = currentField_ = lineSize_ = fieldSize_ = linePosition_ = 0;
  bufferSize_ = maxBufferSize_ = kBlockSize;
  buffer_ = nullptr;
  current_ = nullptr;
  offsetInBuffer_ = filePosition_ = 0;
  spanStart_ = spanSize_ = 0;
  eof_ = 0;
  line_ = tagFILELINE{};
  vex::files::InitGrowBuffer(copyBuffer_);
  vex::files::InitGrowBuffer(fieldBuffer_);
  readingStarted_ = 0;
  blockBytes_ = blockPosition_ = 0;
  memoFrom_ = memoEnd_ = memoFound_ = nullptr;
  lineCut_ = 0;
  skipChar_ = -1;
  copyLimit_ = 0;
}

// The block is always kBlockSize bytes (UNIX mode only asks for less) plus a slot for a terminator.
bool KARTEXTFILE::AllocateBuffer() {
  if (!buffer_) buffer_ = new (std::nothrow) char[kBlockAllocation];
  if (buffer_) std::memset(buffer_, 0, kBlockAllocation);
  return buffer_ != nullptr;
}

int KARTEXTFILE::SetLineSeparator(const char* separator) {
  if (!separator) return 0;
  const std::size_t length = std::strlen(separator);
  if (length != 1 && std::strcmp(separator, "\r\n") != 0) return 0;
  std::strcpy(lineSeparator_, separator);
  memoFrom_ = memoEnd_ = memoFound_ = nullptr;
  return 1;
}

int KARTEXTFILE::SetFieldSeparator(const char* separator) {
  if (!separator || std::strlen(separator) != 1) return 0;
  std::strcpy(fieldSeparator_, separator);
  return 1;
}

char* KARTEXTFILE::GetLineSeparator() { return lineSeparator_; }
char* KARTEXTFILE::GetFieldSeparator() { return fieldSeparator_; }

std::int32_t KARTEXTFILE::SetPosition(std::int32_t position) {
  if (position < 0) return 0;
  const std::int32_t result = KARBASICFILE::SetPosition(position, 0);
  filePosition_ = position;
  ForgetBlock();
  if (position < physical_length_) {
    bufferSize_ = std::min(maxBufferSize_, physical_length_ - position);
    eof_ = 0;
    ReadInBuffer();
  }
  return result;
}

std::int32_t KARTEXTFILE::GetPosition() { return filePosition_; }
int KARTEXTFILE::IsEof() { return eof_; }
std::int32_t KARTEXTFILE::GetLineSize() { return lineSize_; }
std::int32_t KARTEXTFILE::GetFieldSize() { return fieldSize_; }
char* KARTEXTFILE::GetFileName() { return name_; }

// Looks at the first block only, and only before reading has started; reading then starts afresh.
int KARTEXTFILE::IsUNIXTextFile() {
  if (readingStarted_) return 0;
  const int eof = eof_;
  if (!current_) ReadInBuffer();
  bool unix = false;
  if (current_) FindSeparator(current_, blockBytes_ - offsetInBuffer_, unix);
  bufferSize_ = maxBufferSize_;
  eof_ = eof;
  ForgetBlock();
  readingStarted_ = 0;
  return unix ? 1 : 0;
}

// Kept: UNIX mode reads blocks of 1000 bytes.
void KARTEXTFILE::SwitchToUNIXMode() {
  if (readingStarted_) return;
  maxBufferSize_ = bufferSize_ = kUnixBlockSize;
}
