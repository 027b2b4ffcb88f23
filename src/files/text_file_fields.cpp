// KARTEXTFILE: fields within a line, at a one-character field separator.
#include <algorithm>
#include <cstring>

#include "files/grow_buffer.h"
#include "vextools/textfile.h"

namespace {

// Bytes of the field at text: up to the separator, a zero or the limit, whichever comes first.
std::int32_t FieldLength(const char* text, std::int32_t limit, char separator, bool& atSeparator) {
  const void* found = std::memchr(text, separator, static_cast<std::size_t>(limit));
  const std::int32_t bound = found ? static_cast<std::int32_t>(static_cast<const char*>(found) - text) : limit;
  const void* zero = std::memchr(text, '\0', static_cast<std::size_t>(bound));
  atSeparator = found && !zero;
  return zero ? static_cast<std::int32_t>(static_cast<const char*>(zero) - text) : bound;
}

}  // namespace

// A field is cut in place at its separator. An empty text with one byte left is an empty last field.
// A field that runs into the end of the copy is not taken: the caller reloads the copy first.
char* KARTEXTFILE::ReadFieldInLine(char* cursor, std::int32_t available, bool copyLimited) {
  if (available >= 2 && *cursor != '\0') {
    bool atSeparator = false;
    const std::int32_t length = FieldLength(cursor, available, fieldSeparator_[0], atSeparator);
    if (length == available) {
      if (copyLimited) return nullptr;
      cursor[available] = '\0';  // the copy keeps a byte after its end
    }
    if (atSeparator) cursor[length] = '\0';
    ++currentField_;
    fieldSize_ = length + 1;
    return cursor;
  }
  if (available == 1 && *cursor == '\0') {
    ++currentField_;
    fieldSize_ = 1;
    return cursor;
  }
  return nullptr;
}

std::int32_t KARTEXTFILE::GetFieldData(tagFILELINE* line, char*& field) {
  if (line != &line_ || !line->copy) return 0;
  const std::int32_t lineLeft = line->size - line->fieldOffset;
  // Never past the copy's own room, whatever happened to the block size since the line was read.
  std::int32_t copyLeft = std::min(bufferSize_, copyBuffer_.capacity - 1) - line->chunkOffset;
  char* found = nullptr;
  if (copyLeft >= 0 && line->chunkOffset >= 0)
    found = ReadFieldInLine(line->copy + line->chunkOffset, std::min(lineLeft, copyLeft), copyLeft < lineLeft);
  if (!found && copyLeft < lineLeft && lineLeft > 0) {
    // The copy ends inside the line: load the rest of the line from the file.
    if (!vex::files::ReserveGrowBuffer(copyBuffer_, maxBufferSize_ + 1)) return 0;
    line->copy = copyBuffer_.data;
    const std::int32_t got =
        std::max(0, ReadDirect(line->copy, maxBufferSize_, line->position + line->fieldOffset));
    line->copy[got] = '\0';
    line->chunkOffset = 0;
    copyLeft = got;
    found = ReadFieldInLine(line->copy, std::min(lineLeft, copyLeft), copyLeft < lineLeft);
  }
  if (!found) return 0;
  field = found;
  line->fieldOffset += fieldSize_;
  line->chunkOffset += fieldSize_;
  return fieldSize_;
}

std::int32_t KARTEXTFILE::MakeIndexField(tagFILELINE* line) {
  if (line != &line_ || !line->data) return 0;
  const char separator = fieldSeparator_[0];
  std::int32_t count = 0, fieldStart = 0;
  const auto add = [&](std::int32_t offset) {
    if (count > 0 && count % kFieldIndexStep == 0)
      vex::files::ReserveGrowBuffer(fieldBuffer_, 4 * count + kFieldIndexStep * 4);
    if ((count + 1) * 4 > fieldBuffer_.capacity) return false;
    line->fieldIndex = reinterpret_cast<std::int32_t*>(fieldBuffer_.data);
    line->fieldIndex[count++] = offset;
    return true;
  };
  const char* data = line->data;
  const char* end = data + line->size;
  for (const char* p = data; p < end;) {
    const char* found = static_cast<const char*>(std::memchr(p, separator, static_cast<std::size_t>(end - p)));
    if (!found) break;
    if (!add(fieldStart)) break;
    fieldStart = static_cast<std::int32_t>(found - data) + 1;
    p = found + 1;
  }
  if (count == 0 || fieldStart < line->size) add(fieldStart);
  line->fieldCount = count;
  return count;
}

int KARTEXTFILE::GetFieldNr(tagFILELINE* line, std::int32_t n, char* destination) {
  if (line != &line_ || !destination || n < 1 || n > line->fieldCount) return 0;
  const std::int32_t offset = line->fieldIndex[n - 1];
  if (offset < 0 || offset >= line->size) return 0;
  bool atSeparator = false;
  const std::int32_t length = FieldLength(line->data + offset, line->size - offset, fieldSeparator_[0], atSeparator);
  std::memcpy(destination, line->data + offset, static_cast<std::size_t>(length));
  destination[length] = '\0';
  return 1;
}

// Comment lines ("//...") and lines of two bytes or less are skipped.
std::int32_t KARTEXTFILE::GetFieldCount() {
  if (lineCount_ == 0) MakeIndexLine();
  for (std::int32_t n = 1; n <= lineCount_; ++n) {
    tagFILELINE* line = GetLineNr(n);
    if (!line || std::strlen(line->data) <= 2 || std::strncmp(line->data, "//", 2) == 0) continue;
    std::int32_t count = 0;
    char* field = nullptr;
    while (GetFieldData(line, field) > 0) ++count;
    return count;
  }
  return 0;
}
