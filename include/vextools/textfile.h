// KARTEXTFILE: reads a text file of lines and, within lines, fields. The file is read in large blocks;
// lines are cut in place (a zero over the line separator) and handed out as pointers into the block. An
// index of line starts gives access by line number. Lines ending in a line feed alone (UNIX text) are
// read as well. The FileTxt functions give the same service through an opaque handle.
#pragma once

#include <cstdint>

#include "basicfile.h"
#include "export.h"
#include "types.h"

// The line record handed to callers; each object has one and accepts no other.
struct tagFILELINE {
  char* data;               // the line inside the object's block, zero-terminated at its separator
  std::int32_t size;        // bytes including the separator; one more when the block cut the line
  std::int32_t fieldCount;  // set by MakeIndexField
  std::int32_t* fieldIndex; // start offset of each field within the line
  char* copy;               // a copy of the line's first bytes, where GetFieldData cuts its fields
  std::int32_t position;    // file position of the line's start
  std::int32_t spanStart;   // offset in the line of the part held in the copy
  std::int32_t fieldOffset; // offset in the line of the next field for GetFieldData
  std::int32_t chunkOffset; // offset inside the copy of the next field
};
typedef tagFILELINE FILELINE;

class VEXTOOLS_API KARTEXTFILE : public KARBASICFILE {
 public:
  enum : std::int32_t {
    kBlockSize = 300000,      // bytes read at a time
    kUnixBlockSize = 1000,    // bytes read at a time after SwitchToUNIXMode
    kBlockAllocation = kBlockSize + 1 + 32,  // the terminator's slot, then zeros a field scan may read
    kLineIndexStep = 5000,    // entries the line index starts with
    kFieldIndexStep = 1000,   // entries the field index grows by
  };

  KARTEXTFILE();
  explicit KARTEXTFILE(const char* name);
  ~KARTEXTFILE() override;
  KARTEXTFILE(const KARTEXTFILE&) = delete;
  KARTEXTFILE& operator=(const KARTEXTFILE&) = delete;

  // "\r\n" or exactly one character; the field separator is exactly one character. 0 when refused.
  int SetLineSeparator(const char* separator);
  int SetFieldSeparator(const char* separator);
  char* GetLineSeparator();
  char* GetFieldSeparator();

  tagFILELINE* GetLine();
  tagFILELINE* GetLineNr(std::int32_t n);  // 1-based, after MakeIndexLine
  std::int32_t GetLineSize(tagFILELINE* line);
  std::int32_t GetLineData(tagFILELINE* line, std::int32_t start, std::int32_t count, char*& data);
  std::int32_t GetFieldData(tagFILELINE* line, char*& field);  // 0 at the end of the line
  int GetFieldNr(tagFILELINE* line, std::int32_t n, char* destination);

  std::int32_t MakeIndexLine();
  std::int32_t GetLineCount();  // always rebuilds the index
  std::int32_t MakeIndexField(tagFILELINE* line);
  std::int32_t GetFieldCount();  // of the first line that is neither short nor a "//" comment

  std::int32_t SetPosition(std::int32_t position);
  std::int32_t GetPosition();
  int IsEof();
  std::int32_t GetLineSize();
  std::int32_t GetFieldSize();
  using KARBASICFILE::GetFileName;
  char* GetFileName();

  int IsUNIXTextFile();
  void SwitchToUNIXMode();

 protected:
  // A heap buffer that grows in steps of 100 bytes.
  struct GrowBuffer {
    char* data;
    std::int32_t capacity;
    std::int32_t length;
    int owns;
  };

  char name_[260];
  char lineSeparator_[10];
  char fieldSeparator_[10];
  std::int32_t lineCount_;
  HGLOBAL lineIndex_;               // movable block of 32-bit line starts
  std::int32_t* lineIndexData_;     // lineIndex_ locked
  std::int32_t currentLine_;
  std::int32_t currentField_;
  std::int32_t lineSize_;
  std::int32_t fieldSize_;
  std::int32_t linePosition_;
  std::int32_t bufferSize_;         // bytes asked for by the next block read
  std::int32_t maxBufferSize_;
  char* buffer_;                    // maxBufferSize_ bytes and a terminator slot
  char* current_;                   // next unread byte of the block, null when no block is loaded
  std::int32_t offsetInBuffer_;
  std::int32_t filePosition_;       // file position of current_
  std::int32_t spanStart_;
  std::int32_t spanSize_;
  int eof_;
  tagFILELINE line_;
  GrowBuffer copyBuffer_;
  GrowBuffer fieldBuffer_;
  int readingStarted_;

  // Bookkeeping of the block reader, which keeps reading linear.
  std::int32_t blockBytes_;         // bytes of the loaded block, a terminator slot included at the end
  std::int32_t blockPosition_;      // file position of the block's first byte
  const char* memoFrom_;            // the first separator character between memoFrom_ and memoEnd_
  const char* memoEnd_;             // is at memoFound_ (null: there is none)
  const char* memoFound_;
  int lineCut_;                     // the last line ended at the block end, not at a separator
  int skipChar_;                    // a separator byte that may open the next block, or -1
  std::int32_t copyLimit_;          // bytes of the copy that GetFieldData may use

 private:
  void Init();
  bool AllocateBuffer();
  std::int32_t ReadInBuffer();
  std::int32_t LoadBlock(std::int32_t position, std::int32_t size);
  void ForgetBlock();
  const char* FindSeparator(const char* from, std::int32_t size, bool& unix);
  const char* FindFirstSeparatorChar(const char* from, const char* end);
  char* StepOverSeparator(char* end, bool unix);
  bool BlockReachesEnd();
  char* ReadLine();
  char* ReadLineNr(std::int32_t n);
  tagFILELINE* GetFileLine(char* line);
  std::int32_t NextField(tagFILELINE* line, char*& field);
  std::int32_t GetFieldDataSlowly(tagFILELINE* line, char*& field);
  friend std::int32_t FileTxtGetFieldData(void* handle, tagFILELINE* line, char** field);
  char* ReadFieldInLine(char* cursor, std::int32_t available, bool copyLimited);
  bool GrowLineIndex();
  bool IndexBlock(std::int32_t& count, std::int32_t& capacity);
  std::int32_t LineIndexCapacity();
  void Rewind();
};

// Flat interface: a null handle gives 0 or does nothing.
VEXTOOLS_API void* FileTxtOpen(const char* name);
VEXTOOLS_API void FileTxtClose(void* handle);
VEXTOOLS_API int FileTxtIsEOF(void* handle);
VEXTOOLS_API std::int32_t FileTxtLength(void* handle);
VEXTOOLS_API int FileTxtSetLineSeparator(void* handle, const char* separator);
VEXTOOLS_API int FileTxtSetFieldSeparator(void* handle, const char* separator);
VEXTOOLS_API tagFILELINE* FileTxtGetLine(void* handle);
VEXTOOLS_API tagFILELINE* FileTxtGetLineNr(void* handle, std::int32_t n);
VEXTOOLS_API std::int32_t FileTxtGetLineSize(void* handle, tagFILELINE* line);
VEXTOOLS_API std::int32_t FileTxtGetLineData(void* handle, tagFILELINE* line, std::int32_t start,
                                             std::int32_t count, char** data);
VEXTOOLS_API std::int32_t FileTxtGetFieldData(void* handle, tagFILELINE* line, char** field);
VEXTOOLS_API int FileTxtGetFieldNr(void* handle, tagFILELINE* line, std::int32_t n, char* destination);
VEXTOOLS_API std::int32_t FileTxtSetPosition(void* handle, std::int32_t position);
VEXTOOLS_API std::int32_t FileTxtGetPosition(void* handle);
VEXTOOLS_API std::int32_t FileTxtMakeIndexLine(void* handle);
VEXTOOLS_API std::int32_t FileTxtMakeIndexField(void* handle, tagFILELINE* line);
VEXTOOLS_API std::int32_t FileTxtGetLineCount(void* handle);
VEXTOOLS_API std::int32_t FileTxtGetFieldCount(void* handle);
VEXTOOLS_API int FileTxtIsUNIXFile(void* handle);
VEXTOOLS_API void FileTxtSetUNIXMode(void* handle);
