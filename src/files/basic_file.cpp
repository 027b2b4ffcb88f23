// KARBASICFILE: every operation is delegated to the one KVBinaryFile the object owns.
#include "vextools/basicfile.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <string>

#include "files/file_arith.h"
#include "vextools/types.h"

namespace {

constexpr std::int32_t kCopyChunk = 10000;

struct Access {
  std::int32_t mode;    // what the object stores
  std::uint32_t flags;  // what the binary file is opened with
};

// Only a word of exactly 0 is read-only: a word holding nothing but the create bit stores no access
// mode and opens with no access flags. Callers rely on it, so it stays.
Access DecodeMode(unsigned short mode) {
  if (mode == 0) return {1, 0x21};
  if (mode & 0x0001) return {2, 0x0A};
  if (mode & 0x0002) return {3, 0x0B};
  return {0, 0};
}

}  // namespace

KARBASICFILE::KARBASICFILE()
    : file_name_{}, physical_length_(0), access_mode_(0), user_data_(0),
      binary_file_(new (std::nothrow) KVBinaryFile), shares_(new (std::nothrow) std::int32_t(1)) {
  if (!shares_) {  // memory exhausted: behave as a file that can never open
    delete binary_file_;
    binary_file_ = nullptr;
  }
}

KARBASICFILE::KARBASICFILE(const KARBASICFILE& other)
    : physical_length_(other.physical_length_), access_mode_(other.access_mode_),
      user_data_(other.user_data_), binary_file_(other.binary_file_), shares_(other.shares_) {
  std::memcpy(file_name_, other.file_name_, sizeof file_name_);
  if (shares_) ++*shares_;
}

KARBASICFILE& KARBASICFILE::operator=(const KARBASICFILE& other) {
  if (this == &other) return *this;
  if (other.shares_) ++*other.shares_;
  Release();
  std::memcpy(file_name_, other.file_name_, sizeof file_name_);
  physical_length_ = other.physical_length_;
  access_mode_ = other.access_mode_;
  user_data_ = other.user_data_;
  binary_file_ = other.binary_file_;
  shares_ = other.shares_;
  return *this;
}

KARBASICFILE::~KARBASICFILE() {
  // Qualified: a derived part is already gone when this runs.
  if (IsFileOpened()) KARBASICFILE::Close(1);
  Release();
}

void KARBASICFILE::Release() {
  if (shares_ && --*shares_ == 0) {
    delete binary_file_;
    delete shares_;
  }
  binary_file_ = nullptr;
  shares_ = nullptr;
}

std::int32_t KARBASICFILE::Open(char* name, unsigned short mode) {
  if (IsFileOpened()) Close(1);
  SetFileName(name);
  return OpenInternal(mode);
}

std::int32_t KARBASICFILE::ReOpen(unsigned short mode) {
  if (file_name_[0] == '\0') return IsFileOpened() ? 0 : -1;
  return OpenInternal(mode);
}

std::int32_t KARBASICFILE::OpenInternal(unsigned short mode) {
  access_mode_ = 0;
  if (!binary_file_) return -1;
  const Access access = DecodeMode(mode);
  access_mode_ = access.mode;
  // The name field may be a full 260 characters without a terminator.
  const _SS<char> name(std::string(file_name_, ::strnlen(file_name_, sizeof file_name_)));
  const bool ok = (mode & 0x1000) ? binary_file_->Create(name, access.flags, false)
                                  : binary_file_->Open(name, access.flags, false);
  if (!ok) return binary_file_->GetLastError() == 1 ? -9 : -1;
  physical_length_ = static_cast<std::int32_t>(binary_file_->GetLength());
  SetPosition(0, 0);
  return 0;
}

std::int32_t KARBASICFILE::Close(int) {
  if (IsFileOpened()) {
    binary_file_->Close();
    physical_length_ = 0;
  }
  return -3;
}

std::int32_t KARBASICFILE::SetPosition(std::int32_t offset, unsigned short origin) {
  if (!IsFileOpened()) return -3;
  std::int64_t at;
  if (offset < 0) {
    at = binary_file_->SeekFromEnd(0);
  } else {
    switch (origin) {
      case 0: at = binary_file_->SeekFromBegin(offset); break;
      case 1: at = binary_file_->SeekFromCurrent(offset); break;
      case 2: at = binary_file_->SeekFromEnd(offset); break;
      default: return -3;
    }
  }
  return at == -1 ? -7 : static_cast<std::int32_t>(at);
}

std::int32_t KARBASICFILE::GetPosition() {
  if (!IsFileOpened()) return -1;
  const std::int64_t at = binary_file_->SeekFromCurrent(0);
  return at < 0 ? -1 : static_cast<std::int32_t>(at);
}

std::int32_t KARBASICFILE::FileLength() { return physical_length_; }

std::int32_t KARBASICFILE::GetPhysicalLength() { return physical_length_; }

std::int32_t KARBASICFILE::ReadDirect(char* buffer, std::int32_t size, std::int32_t position) {
  if (!IsFileOpened()) return -3;
  SetPosition(position, 0);
  const std::int32_t got = binary_file_->Read(buffer, size);
  return got < 0 ? -5 : got;
}

std::int32_t KARBASICFILE::WriteDirect(char* buffer, std::int32_t size, std::int32_t position) {
  if (!IsFileOpened()) return -3;
  SetPosition(position, 0);
  const std::int32_t put = binary_file_->Write(buffer, size);
  if (put == 0) return -4;
  // Measured from the position given, so a negative one (the end) under-states the length; kept.
  physical_length_ = std::max(physical_length_, vex::files::AddWrap(position, size));
  return put;
}

std::int32_t KARBASICFILE::ReadData(char* buffer, std::int32_t size, std::int32_t position) {
  return ReadDirect(buffer, size, position);
}

std::int32_t KARBASICFILE::WriteData(char* buffer, std::int32_t size, std::int32_t position) {
  return WriteDirect(buffer, size, position);
}

std::int32_t KARBASICFILE::Copy(std::int32_t position, std::int32_t count, char* destinationName,
                                unsigned int mode) {
  if (!IsFileOpened()) return 0;
  KARBASICFILE destination;
  destination.Open(destinationName, static_cast<unsigned short>(mode | 1));
  if (!destination.IsFileOpened()) return 0;
  std::int32_t target = (mode & 0x1000) ? 0 : destination.GetPhysicalLength();
  const std::int32_t chunk = std::min(count, kCopyChunk);
  std::int32_t total = 0;
  HGLOBAL memory = chunk > 0 ? GlobalAlloc(GMEM_MOVEABLE, static_cast<SIZE_T>(chunk)) : nullptr;
  char* buffer = memory ? static_cast<char*>(GlobalLock(memory)) : nullptr;
  if (buffer) {
    std::int32_t source = position, remaining = count;
    while (remaining >= 1) {
      const std::int32_t got = ReadDirect(buffer, std::min(remaining, chunk), source);
      if (got < 1) break;
      const std::int32_t put = destination.WriteDirect(buffer, std::min(got, chunk), target);
      if (put < 1) break;
      source = vex::files::AddWrap(source, put);
      target = vex::files::AddWrap(target, put);
      total = vex::files::AddWrap(total, put);
      remaining -= put;
    }
    GlobalUnlock(memory);
  }
  if (memory) GlobalFree(memory);
  destination.Close(1);
  return total;
}

int KARBASICFILE::IsFileOpened() { return binary_file_ && binary_file_->IsOpen() ? 1 : 0; }

void KARBASICFILE::SetFileName(char* name) {
  // Bounded by the field, as Open does: an unbounded copy would overrun the object.
  std::strncpy(file_name_, name ? name : "", sizeof file_name_);
}

void KARBASICFILE::GetFileName(char* buffer) {
  if (!buffer) return;
  const std::size_t length = ::strnlen(file_name_, sizeof file_name_);
  std::memcpy(buffer, file_name_, length);
  buffer[length] = '\0';
}

std::int32_t KARBASICFILE::GetUserData() { return user_data_; }

void KARBASICFILE::SetUserData(std::int32_t value) { user_data_ = value; }
