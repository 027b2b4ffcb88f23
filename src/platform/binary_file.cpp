// The parts of KVBinaryFile that are the same on every platform; posix/ and win32/ hold the rest.
#include "vextools/binaryfile.h"

KVBinaryFile::KVBinaryFile() : handle_(-1), flags_(0), last_error_(kErrorNone) {}

KVBinaryFile::KVBinaryFile(const _SS<char>& name, std::uint32_t flags) : KVBinaryFile() { Open(name, flags); }

KVBinaryFile::~KVBinaryFile() { Close(); }

bool KVBinaryFile::Open(const _SS<char>& name, std::uint32_t flags, bool) {
  return OpenHandle(name.c_str(), flags, false);
}

bool KVBinaryFile::Create(const _SS<char>& name, std::uint32_t flags, bool) {
  return OpenHandle(name.c_str(), flags, true);
}

// Origins 0, 1 and 2: from the start, the current position and the end.
std::int64_t KVBinaryFile::SeekFromBegin(std::int64_t offset) { return Seek(offset, 0); }
std::int64_t KVBinaryFile::SeekFromCurrent(std::int64_t offset) { return Seek(offset, 1); }
std::int64_t KVBinaryFile::SeekFromEnd(std::int64_t offset) { return Seek(offset, 2); }

std::uint32_t KVBinaryFile::GetLastError() const { return last_error_; }
