// KVBinaryFile: the binary-file class every file class of the library sits on, and _SS<char>, the small
// string class that passes file names to it.
#pragma once

#include <cstdint>
#include <string>

#include "export.h"

template <class T>
class _SS {
 public:
  _SS() = default;
  _SS(const T* text) : text_(text ? text : std::basic_string<T>()) {}
  _SS(const std::basic_string<T>& text) : text_(text) {}
  const T* c_str() const { return text_.c_str(); }
  operator const T*() const { return text_.c_str(); }
  std::size_t GetLength() const { return text_.size(); }
  bool IsEmpty() const { return text_.empty(); }

 private:
  std::basic_string<T> text_;
};

// Opening flags. Open fails on a missing file unless 0x40 is given; Create always makes a new empty file.
// Others may always read a file that is open here; 0x08 and 0x40 let them write too. See
// docs/platforms.md.
enum : std::uint32_t {
  KVBF_READ = 0x01,         // read access
  KVBF_WRITE = 0x02,        // write access
  KVBF_SHARE_WRITE = 0x08,  // others may write while it is open
  KVBF_SHARE_READ = 0x20,   // others may read while it is open (always granted)
  KVBF_OPEN_ALWAYS = 0x40,  // a shared log: Open creates the file when it is missing, others may write
};

class VEXTOOLS_API KVBinaryFile {
 public:
  enum : std::uint32_t { kErrorNone = 0, kErrorNotFound = 1, kErrorAccess = 2, kErrorOther = 3 };

  KVBinaryFile();
  KVBinaryFile(const _SS<char>& name, std::uint32_t flags);
  virtual ~KVBinaryFile();
  KVBinaryFile(const KVBinaryFile&) = delete;
  KVBinaryFile& operator=(const KVBinaryFile&) = delete;

  bool Open(const _SS<char>& name, std::uint32_t flags, bool unused = false);
  bool Create(const _SS<char>& name, std::uint32_t flags, bool unused = false);
  bool Close();
  bool Flush();
  bool IsOpen() const;
  std::int32_t Read(void* buffer, std::int32_t count);
  std::int32_t Write(const void* buffer, std::int32_t count);
  std::int64_t SeekFromBegin(std::int64_t offset);
  std::int64_t SeekFromCurrent(std::int64_t offset);
  std::int64_t SeekFromEnd(std::int64_t offset);
  std::uint32_t GetLength() const;
  std::uint32_t GetLastError() const;

 private:
  bool OpenHandle(const char* name, std::uint32_t flags, bool create);
  std::int64_t Seek(std::int64_t offset, int origin);

  std::intptr_t handle_;      // descriptor or HANDLE; -1 when closed
  std::uint32_t flags_;       // flags of the last open
  std::uint32_t last_error_;  // one of the kError codes
};
