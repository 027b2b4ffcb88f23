// GTFILE: a sequential stream over one file in the manner of the standard stream functions, with one
// read cache (64000 bytes unless set otherwise while closed). Lines end at a carriage return, optionally
// followed by a line feed; a derived class changes that through the virtual line primitives.
#pragma once

#include <cstdarg>
#include <cstdint>

#include "binaryfile.h"
#include "export.h"

// A saved cache state (see GTFILE::SaveCache and RestoreCache).
struct GTCACHEPARAMS {
  char* data = nullptr;  // copy of the used part of the cache, or null
  std::int32_t size = 0;
  std::int32_t offset = 0;
  std::int32_t used = 0;
  std::int32_t readPosition = 0;
};

// Last-error codes of GTFILE. The class never clears them; callers reset with SetLastError(0).
enum : std::int32_t {
  GTFILE_ERR_NOT_OPEN = 1,       // fputs on a closed file
  GTFILE_ERR_CACHE = 3,          // fopen/fcreate: the cache could not be created
  GTFILE_ERR_CACHE_SIZE = 4,     // SetCacheSize: size refused
  GTFILE_ERR_CLOSE = 5,          // fclose failed
  GTFILE_ERR_NOT_FOUND = 6,      // fopen/fcreate: the binary file reported error 1
  GTFILE_ERR_OPEN = 7,           // fopen/fcreate: any other open failure
  GTFILE_ERR_IS_OPEN = 8,        // SetCacheSize on an open file; or the previous file would not close
  GTFILE_ERR_FORMAT = 9,         // vfprintf produced nothing
  GTFILE_ERR_WRITE = 11,         // fputs, vfprintf: nothing written
  GTFILE_ERR_EMPTY_TEXT = 12,    // fputs of an empty text
  GTFILE_ERR_NO_LINE = 14,       // fgets found no line
};

class VEXTOOLS_API GTFILE {
 public:
  enum : std::uint32_t {
    kLineCut = 1,     // the last line stopped at the cache end and continues in the file
    kLinePushed = 2,  // the last line was pushed back by frewind
  };
  enum : std::int32_t { kDefaultCacheSize = 64000 };

  GTFILE();
  // Copies every field; the cache pointer is shared (shallow), so the copy must not outlive the
  // original. The binary file's handle cannot be shared, so the copy's binary file is closed.
  GTFILE(const GTFILE& other);
  GTFILE& operator=(const GTFILE& other);

  // Virtual operations, in this order.
  virtual int IsCacheSizeOk(std::int32_t size);
  virtual char* GetCachePointer();
  virtual int CreateCache(std::int32_t size);
  virtual void DeleteCache();
  virtual void InitCacheParameters();
  virtual std::int32_t SearchEndOfLine(char* text, std::int32_t size);
  virtual std::int32_t EndOfLineLength(char* text);
  virtual int IsLineEmpty(char* text, std::int32_t size);
  virtual ~GTFILE();
  virtual void SetLastError(std::int32_t error);
  virtual std::int32_t GetLastError();

  int fopen(const char* name, unsigned int flags);
  int fcreate(const char* name, unsigned int flags);
  int fclose();
  char* fgets(char* buffer, std::int32_t max);
  int fputs(const char* text, std::int32_t length);
  std::int32_t fprintf(const char* format, ...);
  std::int32_t vfprintf(const char* format, va_list args);
  int fseek(std::int32_t offset, int origin);
  std::int32_t ftell();
  void frewind(std::int32_t count);
  int feof();
  int feol();

  std::int32_t Read(void* buffer, std::int32_t size);
  std::int32_t Write(const void* buffer, std::int32_t size);
  std::int32_t LineLength();

  int SetCacheSize(std::int32_t size);
  std::int32_t GetCacheSize();

  KVBinaryFile* FileHandle();
  void FileName(char* buffer);
  std::int32_t FileLength();
  int IsOpen();

 protected:
  char* GetNextLineInCache(std::int32_t& length, int advance);
  void SaveCache(GTCACHEPARAMS& params, int copyData);
  void RestoreCache(GTCACHEPARAMS& params);
  std::int32_t UpdateCache();
  std::int32_t UpdateCache(std::int32_t position);
  void SetCacheOffset(std::int32_t position);
  void SeekInCache(std::int32_t offset, int origin);
  void CopyToCache(std::int32_t position, const void* buffer, std::int32_t size);
  int IsCacheEmpty();
  int IsCacheReady();
  char* GetUnreadCachePointer();
  std::int32_t GetUnreadCacheSize();
  std::int32_t GetReadCacheSize();
  int IsFilePosInCache(std::int32_t position);
  int IsFilePosInUsedCache(std::int32_t position);
  int NoMoreToRead();

 private:
  int OpenFile(const char* name, unsigned int flags, bool create);
  void CopyFields(const GTFILE& other);

  std::uint32_t flags_;
  std::int32_t lastError_;
  KVBinaryFile file_;
  std::int32_t fileLength_;
  std::int32_t lastLineLength_;
  std::int32_t lastEolLength_;
  std::int32_t lastReturnedLength_;
  char* cache_;
  std::int32_t cacheSize_;
  std::int32_t cacheOffset_;
  std::int32_t cacheUsed_;
  std::int32_t readPosition_;
  char fileName_[260];
};
