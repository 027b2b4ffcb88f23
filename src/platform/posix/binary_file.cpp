// KVBinaryFile over POSIX descriptors. Sharing flags have no POSIX meaning and are accepted as given.
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "vextools/binaryfile.h"

namespace {

std::uint32_t ErrorCode(int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return KVBinaryFile::kErrorNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
      return KVBinaryFile::kErrorAccess;
    default:
      return KVBinaryFile::kErrorOther;
  }
}

int AccessFlags(std::uint32_t flags) {
  const bool read = flags & KVBF_READ, write = flags & KVBF_WRITE;
  return read && write ? O_RDWR : write ? O_WRONLY : O_RDONLY;
}

}  // namespace

bool KVBinaryFile::OpenHandle(const char* name, std::uint32_t flags, bool create) {
  Close();
  // A file created read-only or without any access bit still has to be written to be made; reads and
  // writes are then refused through flags_.
  int access = AccessFlags(flags);
  if (create && access == O_RDONLY) access = (flags & KVBF_READ) ? O_RDWR : O_WRONLY;
  int mode = access | O_CLOEXEC;
  if (create) mode |= O_CREAT | O_TRUNC;
  else if (flags & KVBF_OPEN_ALWAYS) mode |= O_CREAT;
  if (!name || !*name) {
    last_error_ = kErrorNotFound;
    return false;
  }
  int fd;
  do fd = ::open(name, mode, 0666);
  while (fd < 0 && errno == EINTR);
  if (fd < 0) {
    last_error_ = ErrorCode(errno);
    return false;
  }
  struct stat info;
  if (::fstat(fd, &info) == 0 && S_ISDIR(info.st_mode)) {
    ::close(fd);
    last_error_ = kErrorAccess;
    return false;
  }
  handle_ = fd;
  flags_ = flags;
  last_error_ = kErrorNone;
  return true;
}

bool KVBinaryFile::Close() {
  if (handle_ < 0) return false;
  const bool ok = ::close(static_cast<int>(handle_)) == 0;
  handle_ = -1;
  return ok;
}

// Writes go straight to the system, so there is nothing of ours to flush; the data outlives the process.
bool KVBinaryFile::Flush() { return handle_ >= 0; }

bool KVBinaryFile::IsOpen() const { return handle_ >= 0; }

std::int32_t KVBinaryFile::Read(void* buffer, std::int32_t count) {
  if (handle_ < 0 || count < 0 || (count > 0 && !buffer) || !(flags_ & KVBF_READ)) {
    last_error_ = kErrorOther;
    return -1;
  }
  auto* out = static_cast<char*>(buffer);
  std::int32_t done = 0;
  while (done < count) {
    const ssize_t n = ::read(static_cast<int>(handle_), out + done, static_cast<size_t>(count - done));
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) {
      last_error_ = ErrorCode(errno);
      return -1;
    }
    if (n == 0) break;
    done += static_cast<std::int32_t>(n);
  }
  return done;
}

std::int32_t KVBinaryFile::Write(const void* buffer, std::int32_t count) {
  if (handle_ < 0 || count <= 0 || !buffer || !(flags_ & KVBF_WRITE)) return 0;
  const auto* in = static_cast<const char*>(buffer);
  std::int32_t done = 0;
  while (done < count) {
    const ssize_t n = ::write(static_cast<int>(handle_), in + done, static_cast<size_t>(count - done));
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) {
      last_error_ = n < 0 ? ErrorCode(errno) : kErrorOther;
      break;
    }
    done += static_cast<std::int32_t>(n);
  }
  return done;
}

std::int64_t KVBinaryFile::Seek(std::int64_t offset, int origin) {
  static const int kOrigins[3] = {SEEK_SET, SEEK_CUR, SEEK_END};
  if (handle_ < 0) return -1;
  const off_t at = ::lseek(static_cast<int>(handle_), static_cast<off_t>(offset), kOrigins[origin]);
  if (at < 0) {
    last_error_ = ErrorCode(errno);
    return -1;
  }
  return at;
}

std::uint32_t KVBinaryFile::GetLength() const {
  struct stat info;
  if (handle_ < 0 || ::fstat(static_cast<int>(handle_), &info) != 0) return 0;
  return static_cast<std::uint32_t>(info.st_size);
}
