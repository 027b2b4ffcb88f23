// TEXTLIST encodings. Format 1: each non-null item and a 0 byte. Format 2: quoted items separated by
// semicolons, then a 0 byte.
#include <algorithm>
#include <cstring>
#include <string>

#include "vextools/textlist.h"
#include "vextools/types.h"

namespace {

// Bytes a format writes, including the final 0 byte of format 2 even for an empty list.
std::size_t BytesWritten(std::int32_t measured, std::int32_t format) {
  return format == 2 ? std::max<std::size_t>(measured, 1) : static_cast<std::size_t>(measured);
}

const char* FindQuoteSemicolonQuote(const char* from, const char* end) {
  static const char kSeparator[] = "\";\"";
  const char* found = std::search(from, end, kSeparator, kSeparator + 3);
  return found == end ? nullptr : found;
}

char* FindLastQuote(char* from, char* end) {
  for (char* p = end; p > from;) {
    if (*--p == '"') return p;
  }
  return nullptr;
}

}  // namespace

std::int32_t TEXTLIST::EncodOnlyTextList(char* buffer) {
  std::int32_t size = 0;
  for (VEXTNODE<char*>* node = first_; node; node = node->next) {
    if (!node->item) continue;
    const std::size_t length = std::strlen(node->item) + 1;
    if (buffer) std::memcpy(buffer + size, node->item, length);
    size += static_cast<std::int32_t>(length);
  }
  return size;
}

std::int32_t TEXTLIST::EncodQuoted(char* buffer) {
  std::int32_t size = 0;
  char* out = buffer;
  for (VEXTNODE<char*>* node = first_; node; node = node->next) {
    if (!node->item) continue;
    const std::size_t length = std::strlen(node->item);
    if (out) {
      if (size) *out++ = ';';
      *out++ = '"';
      std::memcpy(out, node->item, length);
      out += length;
      *out++ = '"';
    }
    size += static_cast<std::int32_t>(length + 3);
  }
  if (out) *out = '\0';
  return size;
}

std::int32_t TEXTLIST::Encod(char* buffer, std::int32_t format) {
  if (format == 1) return EncodOnlyTextList(buffer);
  if (format == 2) return EncodQuoted(buffer);
  return 0;
}

std::int32_t TEXTLIST::Encod(void* handle, std::int32_t format) {
  const std::int32_t size = Encod(static_cast<char*>(nullptr), format);
  if (!handle || (format != 1 && format != 2)) return size;
  if (GlobalSize(handle) < BytesWritten(size, format)) return 0;  // never write past the block
  auto* buffer = static_cast<char*>(GlobalLock(handle));
  if (!buffer) return 0;
  Encod(buffer, format);
  GlobalUnlock(handle);
  return size;
}

// Format 1 over size bytes. An item whose 0 byte lies beyond size ends at size.
std::int32_t TEXTLIST::DecodOnlyTextList(char* buffer, std::int32_t size) {
  std::int32_t result = 1;
  std::int32_t position = 0;
  std::string unterminated;
  while (result && position < size) {
    char* item = buffer + position;
    const std::size_t room = static_cast<std::size_t>(size - position);
    const void* nul = std::memchr(item, 0, room);
    if (nul) {
      position += static_cast<std::int32_t>(static_cast<const char*>(nul) - item) + 1;
    } else {
      unterminated.assign(item, room);
      item = unterminated.data();
      position = size;
    }
    result = AddItem(item);
  }
  return result;
}

// Format 2 over text[0, extent). Each item is cut out by a 0 byte written over its closing quote and
// restored after AddItem, so the caller's text comes back unchanged.
int TEXTLIST::DecodQuoted(char* text, std::size_t extent) {
  char* const end = text + extent;
  char* p = static_cast<char*>(std::memchr(text, '"', extent));
  bool last = false;
  while (p && !last) {
    char* start = p + 1;
    char* close = const_cast<char*>(FindQuoteSemicolonQuote(start, end));
    if (!close) {
      close = FindLastQuote(start, end);
      last = true;
    }
    if (!close) break;
    *close = '\0';
    AddItem(start);
    *close = '"';
    p = static_cast<char*>(std::memchr(close + 1, '"', static_cast<std::size_t>(end - close - 1)));
  }
  return 0;
}

int TEXTLIST::Decod(char* buffer, std::int32_t size, std::int32_t format) {
  Reset();
  if (!buffer) return 0;
  if (format == 1) return DecodOnlyTextList(buffer, size);
  if (format == 2) return DecodQuoted(buffer, std::strlen(buffer));
  return 0;
}

int TEXTLIST::Decod(void* handle, std::int32_t size, std::int32_t format) {
  Reset();
  if (!handle || (format != 1 && format != 2)) return 0;
  auto* buffer = static_cast<char*>(GlobalLock(handle));
  if (!buffer) return 0;
  const std::size_t block = GlobalSize(handle);
  int result = 0;
  if (format == 1) {
    const auto bounded = static_cast<std::int32_t>(std::min<std::size_t>(block, size < 0 ? 0 : size));
    result = DecodOnlyTextList(buffer, size <= 0 ? size : bounded);
  } else {
    const void* nul = std::memchr(buffer, 0, block);
    const std::size_t extent = nul ? static_cast<const char*>(nul) - buffer : block;
    result = DecodQuoted(buffer, extent);
  }
  GlobalUnlock(handle);
  return result;
}
