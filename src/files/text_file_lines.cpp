// KARTEXTFILE: blocks and lines. Lines are cut in place in the block and handed out as pointers.
#include <algorithm>
#include <cstring>

#include "files/grow_buffer.h"
#include "vextools/textfile.h"

namespace {
constexpr char kLineFeed = '\n';
}  // namespace

void KARTEXTFILE::ForgetBlock() {
  current_ = nullptr;
  offsetInBuffer_ = 0;
  blockBytes_ = 0;
  memoFrom_ = memoEnd_ = memoFound_ = nullptr;
  skipChar_ = -1;
}

// Reads size bytes at position into the block. A block that reaches the end of the file gets one more
// byte, a zero, which ends a last line that has no separator.
std::int32_t KARTEXTFILE::LoadBlock(std::int32_t position, std::int32_t size) {
  memoFrom_ = memoEnd_ = memoFound_ = nullptr;
  blockBytes_ = 0;
  if (!buffer_ && !AllocateBuffer()) return 0;
  size = std::clamp(size, 0, static_cast<std::int32_t>(kBlockSize));
  const std::int32_t got = ReadDirect(buffer_, size, position);
  if (got <= 0) {
    buffer_[0] = '\0';
    return got;
  }
  buffer_[got] = '\0';
  blockPosition_ = position;
  blockBytes_ = got;
  if (got < size || static_cast<std::int64_t>(position) + got >= physical_length_) ++blockBytes_;
  return got;
}

bool KARTEXTFILE::BlockReachesEnd() {
  return static_cast<std::int64_t>(blockPosition_) + blockBytes_ > physical_length_;
}

std::int32_t KARTEXTFILE::ReadInBuffer() {
  readingStarted_ = 1;
  const std::int64_t left = static_cast<std::int64_t>(physical_length_) - filePosition_;
  if (bufferSize_ > left) bufferSize_ = static_cast<std::int32_t>(std::max<std::int64_t>(left + 1, 0));
  if (bufferSize_ < 1) {
    eof_ = 1;
    current_ = nullptr;
    return 0;
  }
  const std::int32_t got = LoadBlock(filePosition_, bufferSize_);
  if (got > 0) {
    current_ = buffer_;
    offsetInBuffer_ = 0;
  } else {
    eof_ = 1;
    current_ = nullptr;
  }
  return got;
}

// Where the next separator character lies is remembered for the block, so that a file whose lines end
// in a line feed alone is not rescanned to the block end for a carriage return at every line.
const char* KARTEXTFILE::FindFirstSeparatorChar(const char* from, const char* end) {
  if (memoFrom_ && memoFrom_ <= from && memoEnd_ == end && (!memoFound_ || memoFound_ >= from))
    return memoFound_;
  const void* found = from < end ? std::memchr(from, lineSeparator_[0], static_cast<std::size_t>(end - from)) : nullptr;
  memoFrom_ = from;
  memoEnd_ = end;
  memoFound_ = static_cast<const char*>(found);
  return memoFound_;
}

// The separator's first character; failing that, with the "\r\n" separator, a line feed alone, which
// is a UNIX line end.
const char* KARTEXTFILE::FindSeparator(const char* from, std::int32_t size, bool& unix) {
  unix = false;
  if (size <= 0) return nullptr;
  const char* found = FindFirstSeparatorChar(from, from + size);
  if (!found && std::strcmp(lineSeparator_, "\r\n") == 0) {
    found = static_cast<const char*>(std::memchr(from, kLineFeed, static_cast<std::size_t>(size)));
    unix = found != nullptr;
  }
  return found;
}

// Cuts the line at end and returns the byte after its separator: a CR is followed by its LF, a UNIX
// LF by a CR. When the second byte would open the next block, the next read skips it.
char* KARTEXTFILE::StepOverSeparator(char* end, bool unix) {
  *end = '\0';
  char* next = end + 1;
  const char second = unix ? lineSeparator_[0] : lineSeparator_[1];
  if (second == '\0') return next;
  if (next < buffer_ + blockBytes_) {
    if (*next == second) ++next;
  } else if (!BlockReachesEnd()) {
    skipChar_ = static_cast<unsigned char>(second);
  }
  return next;
}

char* KARTEXTFILE::ReadLine() {
  if (!current_) ReadInBuffer();
  if (eof_ || !current_) return nullptr;
  if (skipChar_ >= 0) {
    if (offsetInBuffer_ >= blockBytes_ && (ReadInBuffer(), eof_ || !current_)) return nullptr;
    if (static_cast<unsigned char>(*current_) == skipChar_) {
      ++current_;
      ++offsetInBuffer_;
      ++filePosition_;
    }
    skipChar_ = -1;
  }

  bool unix = false;
  char* end = const_cast<char*>(FindSeparator(current_, blockBytes_ - offsetInBuffer_, unix));
  if (!end || end == buffer_ + blockBytes_ - 1) {
    // Read the block again from the line's start so that the whole line is in it.
    ReadInBuffer();
    if (!current_) return nullptr;
    end = const_cast<char*>(FindSeparator(current_, blockBytes_, unix));
    if (!end && BlockReachesEnd()) {
      if (blockBytes_ > 1) end = buffer_ + blockBytes_ - 1;  // the zero after the file's last byte
      unix = false;
      eof_ = 1;
    }
  }

  char* const start = current_;
  ++currentLine_;
  currentField_ = 0;
  linePosition_ = filePosition_;
  if (end) {
    current_ = StepOverSeparator(end, unix);
    lineSize_ = static_cast<std::int32_t>(current_ - start);
    offsetInBuffer_ += lineSize_;
    filePosition_ += lineSize_;
    lineCut_ = 0;
    return start;
  }
  if (eof_) {
    --currentLine_;
    return nullptr;
  }
  // No separator in a whole block: the block is this piece of the line, the next read goes on after it.
  lineSize_ = blockBytes_ - offsetInBuffer_;
  filePosition_ += lineSize_;
  offsetInBuffer_ = 0;
  current_ = nullptr;
  lineCut_ = 1;
  return start;
}

char* KARTEXTFILE::ReadLineNr(std::int32_t n) {
  readingStarted_ = 1;
  bufferSize_ = maxBufferSize_;
  const std::int32_t start = lineIndexData_[n - 1];
  const std::int32_t next = n < lineCount_ ? lineIndexData_[n] : 0;
  spanStart_ += spanSize_;
  spanSize_ = std::max(0, next - start);
  const bool inBuffer = n == currentLine_ + 1 && n != 1 && n != lineCount_ && !lineCut_ && current_ &&
                        spanStart_ + spanSize_ <= blockBytes_ && blockPosition_ + spanStart_ == start;
  if (!inBuffer) {
    skipChar_ = -1;
    const std::int32_t got = LoadBlock(start, maxBufferSize_);
    spanStart_ = 0;
    currentLine_ = 0;
    if (got <= 0) {
      current_ = nullptr;
      return nullptr;
    }
  }
  memoFrom_ = memoEnd_ = memoFound_ = nullptr;  // earlier cuts changed the block

  char* const line = buffer_ + spanStart_;
  const std::int32_t available = blockBytes_ - spanStart_;
  // The last line ends at its separator; any other line ends at the separator within its span.
  const std::int32_t limit = n == lineCount_ ? available : std::min(spanSize_, available);
  bool unix = false;
  char* end = const_cast<char*>(FindSeparator(line, limit, unix));
  currentLine_ = n;
  currentField_ = 0;
  linePosition_ = start;
  lineCut_ = 0;
  if (end) {
    current_ = StepOverSeparator(end, unix);
    skipChar_ = -1;
    offsetInBuffer_ = static_cast<std::int32_t>(current_ - buffer_);
    filePosition_ = blockPosition_ + offsetInBuffer_;
    eof_ = 0;  // sequential reading may go on after this line
  } else if (n != lineCount_) {
    // A piece of a line longer than the block: end it at its span, and read the next one afresh.
    if (limit < available) line[limit] = '\0';
    lineCut_ = 1;
    current_ = nullptr;
  }
  lineSize_ = static_cast<std::int32_t>(std::strlen(line)) + 1;
  return line;
}

tagFILELINE* KARTEXTFILE::GetFileLine(char* line) {
  line_.data = line;
  line_.size = lineSize_ < 1 ? 0 : lineSize_;
  line_.fieldCount = 0;
  vex::files::ReserveGrowBuffer(fieldBuffer_, kFieldIndexStep * 4);
  line_.fieldIndex = reinterpret_cast<std::int32_t*>(fieldBuffer_.data);
  const std::int32_t copied = std::max(0, std::min(bufferSize_, line_.size));
  if (vex::files::ReserveGrowBuffer(copyBuffer_, std::max(bufferSize_, copied) + 1)) {
    std::memcpy(copyBuffer_.data, line, static_cast<std::size_t>(copied));
    copyBuffer_.data[copied] = '\0';
    copyBuffer_.length = copied;
  }
  line_.copy = copyBuffer_.data;
  copyLimit_ = std::min(bufferSize_, copyBuffer_.capacity - 1);
  if (static_cast<std::int64_t>(bufferSize_) + linePosition_ < physical_length_ && lineCut_ && copied > 0 &&
      copyBuffer_.data[copied - 1] != '\0')
    ++line_.size;  // the block cut the line and the file goes on
  line_.position = linePosition_;
  line_.spanStart = line_.fieldOffset = line_.chunkOffset = 0;
  return &line_;
}

tagFILELINE* KARTEXTFILE::GetLine() {
  char* line = ReadLine();
  return line ? GetFileLine(line) : nullptr;
}

tagFILELINE* KARTEXTFILE::GetLineNr(std::int32_t n) {
  if (n < 1 || n > lineCount_ || !lineIndexData_) return nullptr;
  char* line = ReadLineNr(n);
  return line ? GetFileLine(line) : nullptr;
}

std::int32_t KARTEXTFILE::GetLineSize(tagFILELINE* line) { return line == &line_ ? line->size : 0; }

std::int32_t KARTEXTFILE::GetLineData(tagFILELINE* line, std::int32_t start, std::int32_t count, char*& data) {
  if (line != &line_ || count < 1 || count > bufferSize_ || start < 0 || start >= line->size) return 0;
  const std::int32_t result = std::min(count, line->size - start);
  if (line->size <= bufferSize_) {
    data = line->data + start;
    return result;
  }
  // A line longer than the block: serve the range from the copy, reloading it when needed.
  if (start < line->spanStart || start + result > line->spanStart + bufferSize_) {
    if (!vex::files::ReserveGrowBuffer(copyBuffer_, maxBufferSize_ + 1)) return 0;
    line->copy = copyBuffer_.data;
    const std::int32_t got = std::max(0, ReadDirect(line->copy, maxBufferSize_, line->position + start));
    line->copy[got] = '\0';
    line->spanStart = start;
  }
  data = line->copy + (start - line->spanStart);
  return result;
}

std::int32_t KARTEXTFILE::LineIndexCapacity() {
  return lineIndex_ ? static_cast<std::int32_t>(GlobalSize(lineIndex_) / sizeof(std::int32_t)) : 0;
}

// Doubles the index: it grows at 5000 and 10000 lines, then at 20000, 40000, ... so that indexing a
// file of millions of lines stays linear.
bool KARTEXTFILE::GrowLineIndex() {
  if (!lineIndex_) return false;
  const std::int32_t capacity = LineIndexCapacity();
  if (capacity > INT32_MAX / 8) return false;
  GlobalUnlock(lineIndex_);
  HGLOBAL grown = GlobalReAlloc(lineIndex_, static_cast<SIZE_T>(capacity) * 2 * sizeof(std::int32_t),
                                GMEM_MOVEABLE | GMEM_ZEROINIT);
  if (grown) lineIndex_ = grown;
  lineIndexData_ = static_cast<std::int32_t*>(GlobalLock(lineIndex_));
  return grown != nullptr && lineIndexData_ != nullptr;
}

void KARTEXTFILE::Rewind() {
  eof_ = 0;
  filePosition_ = 0;
  currentLine_ = 0;
  currentField_ = 0;
  bufferSize_ = maxBufferSize_;
  spanStart_ = spanSize_ = 0;
  lineCut_ = 0;
  ForgetBlock();
}

// Indexes the lines of the loaded block that ReadLine would cut without reloading: those whose
// separator lies before the block's last byte. Nothing is cut in place (the block is cleared after
// the index is built). Leaves the rest of the block, and every unusual case, to ReadLine.
bool KARTEXTFILE::IndexBlock(std::int32_t& count, std::int32_t& capacity) {
  if (!current_ || eof_ || skipChar_ >= 0) return true;
  const char first = lineSeparator_[0], second = lineSeparator_[1];
  const bool crlf = std::strcmp(lineSeparator_, "\r\n") == 0;
  char* const start = current_;
  char* const end = buffer_ + blockBytes_;
  char* const last = end - 1;
  char* p = start;
  const char* nextFirst = nullptr;  // the next separator character at or after p, if any
  bool noFirst = false;             // none before the block end
  std::int32_t lines = 0, lastStart = 0;
  while (p < last) {
    if (!noFirst && nextFirst < p) {
      nextFirst = static_cast<const char*>(std::memchr(p, first, static_cast<std::size_t>(end - p)));
      noFirst = nextFirst == nullptr;
    }
    const char* found = nextFirst;
    bool unix = false;
    if (noFirst) {
      if (!crlf) break;
      found = static_cast<const char*>(std::memchr(p, kLineFeed, static_cast<std::size_t>(end - p)));
      unix = true;
    }
    if (!found || found == last) break;
    const char* next = found + 1;
    if (*next == (unix ? first : second) && (unix || second != '\0')) ++next;
    if (count >= capacity) {
      if (!GrowLineIndex()) return false;
      capacity = LineIndexCapacity();
    }
    lastStart = static_cast<std::int32_t>(p - start);
    lineIndexData_[count++] = filePosition_ + lastStart;
    ++lines;
    p = const_cast<char*>(next);
  }
  if (lines) {
    const auto consumed = static_cast<std::int32_t>(p - start);
    currentLine_ += lines;
    linePosition_ = filePosition_ + lastStart;
    lineSize_ = consumed - lastStart;
    filePosition_ += consumed;
    offsetInBuffer_ += consumed;
    current_ = p;
    lineCut_ = 0;
    memoFrom_ = memoEnd_ = memoFound_ = nullptr;
  }
  return true;
}

std::int32_t KARTEXTFILE::MakeIndexLine() {
  Open(name_, 0);
  Rewind();
  lineCount_ = 0;
  std::int32_t count = 0, capacity = LineIndexCapacity();
  for (;;) {
    if (!IndexBlock(count, capacity) || !ReadLine()) break;
    if (count >= capacity) {
      if (!GrowLineIndex()) break;
      capacity = LineIndexCapacity();
    }
    lineIndexData_[count++] = linePosition_;
    if (eof_) break;
  }
  lineCount_ = count;
  Rewind();
  if (buffer_) std::memset(buffer_, 0, kBlockAllocation);
  return lineCount_;
}

std::int32_t KARTEXTFILE::GetLineCount() { return MakeIndexLine(); }
