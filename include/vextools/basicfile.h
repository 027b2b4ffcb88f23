// KARBASICFILE: a named random-access binary file with positioned reads and writes, a copy of the
// file's physical length, a caller-owned user value and uniform negative error codes. The root of the
// library's file classes.
#pragma once

#include <cstdint>

#include "binaryfile.h"
#include "export.h"

// Results shared by the file classes.
enum : std::int32_t {
  KARFILE_OK = 0,
  KARFILE_ERR_OPEN = -1,         // open failed; also "no position" from GetPosition
  KARFILE_ERR_NOT_OPEN = -3,     // not open or invalid seek origin; also what Close always returns
  KARFILE_ERR_WRITE = -4,        // a write wrote nothing
  KARFILE_ERR_READ = -5,         // a read failed
  KARFILE_ERR_SEEK = -7,         // a seek failed
  KARFILE_ERR_NOT_FOUND = -9,    // open failed because the binary file reported its error 1
  KARFILE_ERR_CACHE_ALLOC = -14, // a cache buffer could not be allocated
};

// Open-mode word: no access bit = read only, 0x0001 write, 0x0002 read and write (bit 0 wins over bit 1),
// 0x1000 create (truncate or make new) instead of opening an existing file.
enum : unsigned short {
  KARFILE_MODE_READ = 0x0000,
  KARFILE_MODE_WRITE = 0x0001,
  KARFILE_MODE_READWRITE = 0x0002,
  KARFILE_MODE_CREATE = 0x1000,
};

// Access-mode values stored by an open.
enum : std::int32_t { KARFILE_ACCESS_READ = 1, KARFILE_ACCESS_WRITE = 2 };

enum : std::int32_t { KARFILE_NAME_SIZE = 260 };

class VEXTOOLS_API KARBASICFILE {
 public:
  KARBASICFILE();
  // Copies are shallow: they share the one binary file (and so its position and open state). The copy
  // must not outlive the object it was copied from; the binary file itself is released by the last one.
  KARBASICFILE(const KARBASICFILE& other);
  KARBASICFILE& operator=(const KARBASICFILE& other);
  virtual ~KARBASICFILE();

  // Always -3; the argument is for derived classes.
  virtual std::int32_t Close(int release);
  virtual std::int32_t FileLength();
  virtual std::int32_t ReadDirect(char* buffer, std::int32_t size, std::int32_t position);
  virtual std::int32_t WriteDirect(char* buffer, std::int32_t size, std::int32_t position);
  virtual std::int32_t ReadData(char* buffer, std::int32_t size, std::int32_t position);
  virtual std::int32_t WriteData(char* buffer, std::int32_t size, std::int32_t position);

  std::int32_t Open(char* name, unsigned short mode);
  std::int32_t ReOpen(unsigned short mode);
  // Origin 0 start, 1 current, 2 end; a negative offset goes to the end whatever the origin.
  std::int32_t SetPosition(std::int32_t offset, unsigned short origin);
  std::int32_t GetPosition();
  std::int32_t GetPhysicalLength();
  // Copies count bytes from position into the named file (appended unless mode has 0x1000).
  std::int32_t Copy(std::int32_t position, std::int32_t count, char* destinationName, unsigned int mode);
  int IsFileOpened();
  void SetFileName(char* name);
  void GetFileName(char* buffer);  // buffer holds 260 bytes (261 for a name of 260 characters)
  std::int32_t GetUserData();
  void SetUserData(std::int32_t value);

 protected:
  char file_name_[KARFILE_NAME_SIZE];  // not terminated when the name has 260 characters
  std::int32_t physical_length_;
  std::int32_t access_mode_;  // 1 read, 2 write, 3 both; derived classes add bits above
  std::int32_t user_data_;
  KVBinaryFile* binary_file_;  // shared by shallow copies; null only if memory ran out

 private:
  std::int32_t OpenInternal(unsigned short mode);
  void Release();

  std::int32_t* shares_;  // how many objects share binary_file_
};
