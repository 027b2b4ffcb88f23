// Small containers: BITFIELD (a fixed-range set of bits), the LongsStore_ functions (a growable array
// of 32-bit values behind an opaque handle), FLAGMANAGER (two opaque byte blobs; its named-flag
// interface is reserved and gives fixed answers) and CGlobalHandle (an owner-less wrapper of one
// movable global memory handle).
#pragma once

#include <cstdint>

#include "export.h"
#include "types.h"

// Bit i is bit i % 32 of word i / 32, least significant first. The array always has n / 32 + 1 words.
// Filling and copying count n / 32 * 4 + 4 bytes truncated to 16 bits, so beyond 65,535 bytes only the
// first (count mod 65,536) bytes are filled or copied; kept as callers know it.
class VEXTOOLS_API BITFIELD {
 public:
  explicit BITFIELD(std::int32_t n);
  BITFIELD(const BITFIELD&) = default;
  BITFIELD& operator=(const BITFIELD&) = default;
  virtual ~BITFIELD();

  // 0 at once when n is the current range (the bits are kept); else 1, or 0 when memory fails.
  int SetRange(std::int32_t n);
  int operator[](std::int32_t i);
  void SetValue(std::int32_t i, int on);
  void SetValue(int on);
  int IsOneSet();
  // 0 when invalid, else n / 32 * 4 + 8.
  std::int32_t GetSize();
  void Copy(std::int32_t n, std::int32_t* words);

 protected:
  std::int32_t valid_;
  std::int32_t range_;
  std::uint32_t* words_;
};

// LongsStore: positions are 1-based; a null store makes every call return 0.
VEXTOOLS_API void* LongsStore_Create(std::int32_t step);
VEXTOOLS_API int LongsStore_Destroy(void* store);
VEXTOOLS_API std::uint32_t LongsStore_Count(void* store);
VEXTOOLS_API int LongsStore_Add(void* store, std::int32_t value);
VEXTOOLS_API int LongsStore_Remove(void* store, std::uint32_t position);
VEXTOOLS_API int LongsStore_Get(void* store, std::uint32_t position, std::int32_t* value);
VEXTOOLS_API int LongsStore_Set(void* store, std::uint32_t position, std::int32_t value);

typedef struct FLAGID__* FLAGID;
enum FLAGVALUES : std::int32_t { FLAGVALUE_OFF = 0, FLAGVALUE_ON = 1 };

class VEXTOOLS_API FLAGMANAGER {
 public:
  FLAGMANAGER();
  FLAGMANAGER(const FLAGMANAGER&) = default;
  FLAGMANAGER& operator=(const FLAGMANAGER&) = default;
  virtual ~FLAGMANAGER();

  // Keep a copy of a blob: 1 (also for size 0, which only discards), 0 for null data or no memory.
  int SetFlagsInfo(std::int32_t size, void* data);
  std::int32_t GetFlagsInfo(void* buffer);
  int SetFieldFlag(std::int32_t size, void* data);
  // The field-flag blob's size for a null buffer; else copies the blob and returns its size.
  std::int32_t GetFieldFlag(void* buffer);

  // Reserved: fixed answers.
  FLAGID GetFlagID(char* name);
  FLAGID GetFirstFlag();
  FLAGID GetNextFlag(const FLAGID* flag);
  FLAGID AddFlag(char* name);
  int RemoveFlag(const FLAGID* flag);
  int RenameFlag(const FLAGID* flag, char* name);
  int GetFlagName(const FLAGID* flag, char* buffer, std::uint16_t size);
  FLAGVALUES GetFlagValue(const FLAGID* flag);
  FLAGVALUES SetFlagValue(const FLAGID* flag, FLAGVALUES value);

 protected:
  void* flags_info_;
  std::int32_t field_flag_size_;
  void* field_flag_;
};

// No destructor: the handle is freed only by FreeHandle. Copies share the handle.
class VEXTOOLS_API CGlobalHandle {
 public:
  CGlobalHandle();
  explicit CGlobalHandle(HGLOBAL handle);
  CGlobalHandle(SIZE_T size, UINT flags);

  // A movable block (null for size 0); a previous handle is not freed.
  HGLOBAL Allocate(SIZE_T size, UINT flags);
  // Null on failure, keeping the old handle.
  HGLOBAL Reallocate(SIZE_T size, UINT flags);
  void FreeHandle();
  void SetHandle(HGLOBAL handle);
  HGLOBAL& GetRefHandle();
  SIZE_T GetSize();
  UINT GetFlags();
  void* Lock();
  int Unlock();

 protected:
  HGLOBAL handle_;
};
