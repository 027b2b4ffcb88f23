// GTFILE: construction, opening and closing, last error and cache size.
#include <cstring>
#include <new>

#include "vextools/streamfile.h"

namespace {

void CopyName(char (&destination)[260], const char* name) {
  std::size_t length = name ? std::strlen(name) : 0;
  if (length > sizeof destination - 1) length = sizeof destination - 1;
  if (length) std::memcpy(destination, name, length);
  destination[length] = '\0';
}

}  // namespace

GTFILE::GTFILE()
    : flags_(0),
      lastError_(0),
      fileLength_(0),
      lastLineLength_(0),
      lastEolLength_(0),
      lastReturnedLength_(0),
      cache_(nullptr),
      cacheSize_(kDefaultCacheSize),
      cacheOffset_(0),
      cacheUsed_(0),
      readPosition_(0),
      fileName_{} {}

GTFILE::GTFILE(const GTFILE& other) : GTFILE() { CopyFields(other); }

GTFILE& GTFILE::operator=(const GTFILE& other) {
  if (this != &other) {
    if (IsOpen()) fclose();  // our own cache and handle would otherwise be lost
    CopyFields(other);
  }
  return *this;
}

GTFILE::~GTFILE() {
  if (IsOpen()) fclose();
}

void GTFILE::CopyFields(const GTFILE& other) {
  flags_ = other.flags_;
  lastError_ = other.lastError_;
  fileLength_ = other.fileLength_;
  lastLineLength_ = other.lastLineLength_;
  lastEolLength_ = other.lastEolLength_;
  lastReturnedLength_ = other.lastReturnedLength_;
  cache_ = other.cache_;  // shared on purpose: callers do not copy live streams
  cacheSize_ = other.cacheSize_;
  cacheOffset_ = other.cacheOffset_;
  cacheUsed_ = other.cacheUsed_;
  readPosition_ = other.readPosition_;
  std::memcpy(fileName_, other.fileName_, sizeof fileName_);
}

void GTFILE::SetLastError(std::int32_t error) { lastError_ = error; }
std::int32_t GTFILE::GetLastError() { return lastError_; }

int GTFILE::fopen(const char* name, unsigned int flags) { return OpenFile(name, flags, false); }
int GTFILE::fcreate(const char* name, unsigned int flags) { return OpenFile(name, flags, true); }

int GTFILE::OpenFile(const char* name, unsigned int flags, bool create) {
  if (IsOpen() && !fclose()) {
    SetLastError(GTFILE_ERR_IS_OPEN);
    return 0;
  }
  const _SS<char> fileName(name);
  const bool opened = create ? file_.Create(fileName, flags, false) : file_.Open(fileName, flags, false);
  if (!opened) {
    SetLastError(file_.GetLastError() == KVBinaryFile::kErrorNotFound ? GTFILE_ERR_NOT_FOUND : GTFILE_ERR_OPEN);
    return 0;
  }
  CopyName(fileName_, name);
  if (!CreateCache(cacheSize_)) {
    file_.Close();
    SetLastError(GTFILE_ERR_CACHE);
    return 0;
  }
  InitCacheParameters();
  fileLength_ = static_cast<std::int32_t>(file_.GetLength());
  return 1;
}

int GTFILE::fclose() {
  if (!file_.Close()) {
    SetLastError(GTFILE_ERR_CLOSE);
    return 0;
  }
  DeleteCache();
  return 1;
}

int GTFILE::IsCacheSizeOk(std::int32_t size) { return size < kDefaultCacheSize; }

// Kept: 64000 itself is refused although it is the size a new stream starts with.
int GTFILE::SetCacheSize(std::int32_t size) {
  if (IsOpen()) {
    SetLastError(GTFILE_ERR_IS_OPEN);
    return 0;
  }
  if (!IsCacheSizeOk(size)) {
    SetLastError(GTFILE_ERR_CACHE_SIZE);
    return 0;
  }
  if (size == cacheSize_) return 0;
  cacheSize_ = size;
  return 1;
}

std::int32_t GTFILE::GetCacheSize() { return cacheSize_; }

char* GTFILE::GetCachePointer() { return cache_; }

// A cache of no byte could never hold a line, so it is refused like a failed allocation.
int GTFILE::CreateCache(std::int32_t size) {
  if (size < 1) return 0;
  cache_ = new (std::nothrow) char[static_cast<std::size_t>(size)];
  return cache_ != nullptr;
}

void GTFILE::DeleteCache() {
  delete[] cache_;
  cache_ = nullptr;
}

void GTFILE::InitCacheParameters() {
  cacheOffset_ = 0;
  cacheUsed_ = 0;
  readPosition_ = 0;
}

KVBinaryFile* GTFILE::FileHandle() { return &file_; }

void GTFILE::FileName(char* buffer) {
  if (buffer) std::strcpy(buffer, fileName_);
}

std::int32_t GTFILE::FileLength() { return static_cast<std::int32_t>(file_.GetLength()); }

int GTFILE::IsOpen() { return file_.IsOpen() ? 1 : 0; }
