// KARTEXTFILE: fields within a line, at a one-character field separator.
#include <algorithm>
#include <bit>
#include <cstring>
#if defined(__SSE2__)
#  include <emmintrin.h>
#endif

#include "files/grow_buffer.h"
#include "vextools/textfile.h"

namespace {

// Bytes of the field at text: up to the separator, a zero or the limit, whichever comes first. Sixteen
// or eight bytes are tested at a time: fields are short, and a call to memchr per field costs more.
#if defined(__GNUC__)
#  define VEX_HOT_INLINE inline __attribute__((always_inline))
#else
#  define VEX_HOT_INLINE inline
#endif

VEX_HOT_INLINE std::int32_t FieldLength(const char* text, std::int32_t limit, char separator, bool& atSeparator) {
  std::int32_t i = 0;
#if defined(__SSE2__)
  const __m128i pattern = _mm_set1_epi8(separator), zero = _mm_setzero_si128();
  for (; i + 16 <= limit; i += 16) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i));
    const unsigned separators = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, pattern)));
    const unsigned stops = separators | static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, zero)));
    if (stops) {
      atSeparator = (separators & stops & (0u - stops)) != 0;
      return i + std::countr_zero(stops);
    }
  }
#endif
  if constexpr (std::endian::native == std::endian::little) {
    constexpr std::uint64_t kOnes = 0x0101010101010101ull, kHighs = 0x8080808080808080ull;
    const std::uint64_t pattern = kOnes * static_cast<std::uint8_t>(separator);
    for (; i + 8 <= limit; i += 8) {
      std::uint64_t word;
      std::memcpy(&word, text + i, sizeof word);
      const std::uint64_t other = word ^ pattern;
      // The lowest flagged byte is exact; flags above it may be false and are never looked at.
      const std::uint64_t flags = ((word - kOnes) & ~word & kHighs) | ((other - kOnes) & ~other & kHighs);
      if (flags) {
        i += std::countr_zero(flags) / 8;
        atSeparator = text[i] == separator;
        return i;
      }
    }
  }
  for (; i < limit; ++i) {
    if (text[i] == separator || text[i] == '\0') {
      atSeparator = text[i] == separator;
      return i;
    }
  }
  atSeparator = false;
  return limit;
}

// The same in the block, whose allocation ends in zeros well past any line: whole 16-byte groups are
// read, also past the limit, and what lies beyond the limit is never taken.
VEX_HOT_INLINE std::int32_t FieldLengthInBlock(const char* text, std::int32_t limit, char separator,
                                               bool& atSeparator) {
#if defined(__SSE2__)
  const __m128i pattern = _mm_set1_epi8(separator), zero = _mm_setzero_si128();
  for (std::int32_t i = 0; i < limit; i += 16) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i));
    const unsigned separators = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, pattern)));
    const unsigned stops = separators | static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, zero)));
    if (stops) {
      const std::int32_t at = i + std::countr_zero(stops);
      if (at >= limit) break;
      atSeparator = (separators & stops & (0u - stops)) != 0;
      return at;
    }
  }
  atSeparator = false;
  return limit;
#else
  return FieldLength(text, limit, separator, atSeparator);
#endif
}

// A field is cut in place at its separator. An empty text with one byte left is an empty last field.
// A field that runs into the end of the copy is not taken: the caller reloads the copy first.
VEX_HOT_INLINE char* CutField(char* cursor, std::int32_t available, bool copyLimited, char separator,
                              std::int32_t& size) {
  if (available >= 2 && *cursor != '\0') {
    bool atSeparator = false;
    const std::int32_t length = FieldLength(cursor, available, separator, atSeparator);
    if (length == available) {
      if (copyLimited) return nullptr;
      cursor[available] = '\0';  // the copy keeps a byte after its end
    }
    if (atSeparator) cursor[length] = '\0';
    size = length + 1;
    return cursor;
  }
  if (available == 1 && *cursor == '\0') {
    size = 1;
    return cursor;
  }
  return nullptr;
}

}  // namespace

char* KARTEXTFILE::ReadFieldInLine(char* cursor, std::int32_t available, bool copyLimited) {
  std::int32_t size = 0;
  char* field = CutField(cursor, available, copyLimited, fieldSeparator_[0], size);
  if (field) {
    ++currentField_;
    fieldSize_ = size;
  }
  return field;
}

// The usual case: a non-empty field of a line whose rest is in the copy. Inlined into both callers.
VEX_HOT_INLINE std::int32_t KARTEXTFILE::NextField(tagFILELINE* line, char*& field) {
  if (line != &line_ || !line->copy) return 0;
  const std::int32_t lineLeft = line->size - line->fieldOffset;
  const std::int32_t chunk = line->chunkOffset;
  char* const cursor = line->copy + chunk;
  if (chunk >= 0 && lineLeft >= 2 && lineLeft <= copyLimit_ - chunk && *cursor != '\0') {
    // Scanned in the block rather than in the copy, which was just written: the same bytes, and no
    // wide read waits on the copy's recent stores.
    const bool inBlock = chunk == line->fieldOffset && line->spanStart == 0 && line->data >= buffer_ &&
                         line->data + line->size <= buffer_ + kBlockSize + 1;
    bool atSeparator = false;
    const std::int32_t length = inBlock ? FieldLengthInBlock(line->data + chunk, lineLeft, fieldSeparator_[0], atSeparator)
                                        : FieldLength(cursor, lineLeft, fieldSeparator_[0], atSeparator);
    if (atSeparator || length == lineLeft) cursor[length] = '\0';  // the copy keeps a byte after its end
    const std::int32_t size = length + 1;
    ++currentField_;
    fieldSize_ = size;
    field = cursor;
    line->fieldOffset += size;
    line->chunkOffset = chunk + size;
    return size;
  }
  return GetFieldDataSlowly(line, field);
}

std::int32_t KARTEXTFILE::GetFieldData(tagFILELINE* line, char*& field) { return NextField(line, field); }

std::int32_t KARTEXTFILE::GetFieldDataSlowly(tagFILELINE* line, char*& field) {
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

std::int32_t FileTxtGetFieldData(void* handle, tagFILELINE* line, char** field) {
  if (!handle || !field) return 0;
  return static_cast<KARTEXTFILE*>(handle)->NextField(line, *field);
}
