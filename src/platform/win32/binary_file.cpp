// KVBinaryFile over Win32 file handles.
#include "vextools/types.h"
#include "vextools/binaryfile.h"

namespace {

HANDLE AsHandle(std::intptr_t h) { return reinterpret_cast<HANDLE>(h); }

std::uint32_t ErrorCode(DWORD error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
      return KVBinaryFile::kErrorNotFound;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_WRITE_PROTECT:
      return KVBinaryFile::kErrorAccess;
    default:
      return KVBinaryFile::kErrorOther;
  }
}

}  // namespace

bool KVBinaryFile::OpenHandle(const char* name, std::uint32_t flags, bool create) {
  Close();
  if (!name || !*name) {
    last_error_ = kErrorNotFound;
    return false;
  }
  DWORD access = 0;
  if (flags & KVBF_READ) access |= GENERIC_READ;
  if (flags & KVBF_WRITE) access |= GENERIC_WRITE;
  // Others may always read what we have open (a trace or a log is looked at while it grows).
  DWORD share = FILE_SHARE_READ;
  if (flags & (KVBF_SHARE_WRITE | KVBF_OPEN_ALWAYS)) share |= FILE_SHARE_WRITE;
  const DWORD disposition = create ? CREATE_ALWAYS : (flags & KVBF_OPEN_ALWAYS) ? OPEN_ALWAYS : OPEN_EXISTING;
  HANDLE h = ::CreateFileA(name, access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (h == INVALID_HANDLE_VALUE) {
    last_error_ = ErrorCode(::GetLastError());
    return false;
  }
  handle_ = reinterpret_cast<std::intptr_t>(h);
  flags_ = flags;
  last_error_ = kErrorNone;
  return true;
}

bool KVBinaryFile::Close() {
  if (handle_ == -1) return false;
  const bool ok = ::CloseHandle(AsHandle(handle_)) != 0;
  handle_ = -1;
  return ok;
}

// Written data is in the system's hands and outlives the process; as on POSIX, nothing more is forced.
bool KVBinaryFile::Flush() { return handle_ != -1; }

bool KVBinaryFile::IsOpen() const { return handle_ != -1; }

std::int32_t KVBinaryFile::Read(void* buffer, std::int32_t count) {
  if (handle_ == -1 || count < 0 || (count > 0 && !buffer)) {
    last_error_ = kErrorOther;
    return -1;
  }
  DWORD done = 0;
  if (!::ReadFile(AsHandle(handle_), buffer, static_cast<DWORD>(count), &done, nullptr)) {
    last_error_ = ErrorCode(::GetLastError());
    return -1;
  }
  return static_cast<std::int32_t>(done);
}

std::int32_t KVBinaryFile::Write(const void* buffer, std::int32_t count) {
  if (handle_ == -1 || count <= 0 || !buffer) return 0;
  DWORD done = 0;
  if (!::WriteFile(AsHandle(handle_), buffer, static_cast<DWORD>(count), &done, nullptr)) {
    last_error_ = ErrorCode(::GetLastError());
    return 0;
  }
  return static_cast<std::int32_t>(done);
}

std::int64_t KVBinaryFile::Seek(std::int64_t offset, int origin) {
  static const int kOrigins[3] = {FILE_BEGIN, FILE_CURRENT, FILE_END};
  if (handle_ == -1) return -1;
  LARGE_INTEGER distance, at;
  distance.QuadPart = offset;
  if (!::SetFilePointerEx(AsHandle(handle_), distance, &at, static_cast<DWORD>(kOrigins[origin]))) {
    last_error_ = ErrorCode(::GetLastError());
    return -1;
  }
  return at.QuadPart;
}

std::uint32_t KVBinaryFile::GetLength() const {
  LARGE_INTEGER size;
  if (handle_ == -1 || !::GetFileSizeEx(AsHandle(handle_), &size)) return 0;
  return static_cast<std::uint32_t>(size.QuadPart);
}
