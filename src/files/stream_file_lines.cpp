// GTFILE: lines. The line primitives are virtual so that a derived stream can decide what ends a line.
#include <algorithm>
#include <cstring>

#include "vextools/streamfile.h"

namespace {
constexpr char kCarriageReturn = '\r';
constexpr char kLineFeed = '\n';
}  // namespace

// A carriage return that is the last byte given is no end of line yet: its line feed may follow.
std::int32_t GTFILE::SearchEndOfLine(char* text, std::int32_t size) {
  if (!text || size <= 0) return -1;
  const void* found = std::memchr(text, kCarriageReturn, static_cast<std::size_t>(size));
  if (!found) return -1;
  const auto index = static_cast<std::int32_t>(static_cast<const char*>(found) - text);
  return index == size - 1 ? -1 : index;
}

std::int32_t GTFILE::EndOfLineLength(char* text) {
  if (!text) return 2;  // "\r\n"
  if (text[0] == kCarriageReturn) return text[1] == kLineFeed ? 2 : 1;
  return text[0] == kLineFeed ? 1 : 0;
}

int GTFILE::IsLineEmpty(char* text, std::int32_t size) { return SearchEndOfLine(text, size) == 0; }

char* GTFILE::GetNextLineInCache(std::int32_t& length, int advance) {
  flags_ &= ~static_cast<std::uint32_t>(kLineCut);
  if (cacheUsed_ == 0) UpdateCache(cacheOffset_ + readPosition_);
  if (GetUnreadCacheSize() == 0) UpdateCache(cacheOffset_ + readPosition_);
  char* line = GetUnreadCachePointer();
  std::int32_t unread = GetUnreadCacheSize();
  if (!cache_ || unread <= 0) return nullptr;

  std::int32_t end = SearchEndOfLine(line, unread);
  if (end < 0 && !NoMoreToRead() && readPosition_ > 0) {
    // Start the line at the beginning of the cache so that as much of it as possible is seen.
    UpdateCache(cacheOffset_ + readPosition_);
    line = GetUnreadCachePointer();
    unread = GetUnreadCacheSize();
    if (unread <= 0) return nullptr;
    end = SearchEndOfLine(line, unread);
  }

  std::int32_t lineLength, eolLength;
  if (end < 0) {
    lineLength = unread;
    eolLength = 0;
    if (!NoMoreToRead()) {
      // Cut at the cache end, keeping back room for a CR LF pair that the cache end would split.
      flags_ |= kLineCut;
      const std::int32_t keep = EndOfLineLength(nullptr);
      if (lineLength > keep) lineLength -= keep;  // a tiny cache still moves forward
    }
  } else {
    lineLength = std::min(end, unread);
    eolLength = lineLength < unread ? EndOfLineLength(line + lineLength) : 0;
  }
  lastLineLength_ = lineLength;
  lastEolLength_ = eolLength;
  if (advance) SeekInCache(lineLength + eolLength, 1);
  lastReturnedLength_ = lineLength;
  length = lineLength;
  return line;
}

// The buffer holds max + 1 bytes. The end-of-line bytes are never copied; the rest of a line longer
// than max is pushed back so that the next call continues inside it.
char* GTFILE::fgets(char* buffer, std::int32_t max) {
  flags_ &= ~static_cast<std::uint32_t>(kLinePushed);
  if (!buffer) return nullptr;
  std::int32_t length = 0;
  const char* line = GetNextLineInCache(length, 1);
  if (!line) {
    SetLastError(GTFILE_ERR_NO_LINE);
    return nullptr;
  }
  const std::int32_t count = std::max<std::int32_t>(0, std::min(max, length));
  std::memcpy(buffer, line, static_cast<std::size_t>(count));
  buffer[count] = '\0';
  if (count < length) frewind(length - count);
  return buffer;
}

void GTFILE::frewind(std::int32_t count) {
  if (count <= 0 || count > lastReturnedLength_) return;
  SeekInCache(-(lastEolLength_ + count), 1);
  lastEolLength_ = 0;
  lastReturnedLength_ -= count;
  flags_ |= kLinePushed;
}

int GTFILE::feol() { return (flags_ & kLineCut) ? 0 : 1; }

int GTFILE::feof() { return cacheOffset_ + readPosition_ >= fileLength_; }

std::int32_t GTFILE::ftell() { return cacheOffset_ + readPosition_; }

// The length of the next line without consuming it, across as many cache refills as it takes; the cache
// is put back as it was afterwards.
std::int32_t GTFILE::LineLength() {
  std::int32_t total = 0;
  GTCACHEPARAMS saved;
  bool isSaved = false;
  const auto saveOnce = [&] {
    if (!isSaved) SaveCache(saved, 1);
    isSaved = true;
  };
  if (cacheUsed_ == 0) UpdateCache(cacheOffset_ + readPosition_);
  bool finished = false;
  while (!finished && !feof()) {
    std::int32_t unread = GetUnreadCacheSize();
    if (unread == 0 && !NoMoreToRead()) {
      saveOnce();
      UpdateCache(cacheOffset_ + readPosition_);
      unread = GetUnreadCacheSize();
    }
    if (unread <= 0) break;  // nothing more can be read (a short read or a failed seek)
    const std::int32_t end = SearchEndOfLine(GetUnreadCachePointer(), unread);
    std::int32_t count = end < 0 ? unread : std::min(end, unread);
    if (end < 0 && !NoMoreToRead()) {
      const std::int32_t keep = EndOfLineLength(nullptr);
      if (count > keep) count -= keep;
      saveOnce();
      SeekInCache(count, 1);
      UpdateCache(cacheOffset_ + readPosition_);
    } else {
      finished = true;
    }
    total += count;
  }
  if (isSaved) RestoreCache(saved);
  return total;
}
