// VEXGENERALINDEX: a sortable, searchable array of entries, each pointing to a record of a fixed
// number of variable-length fields, and the field kinds that say how two values of a field compare.
//
// Entry record layout (built by the caller): the fields one after the other, each a 32-bit
// little-endian length n followed by n bytes of value; no padding, no count, no terminator.
//
// Sorting is a quicksort over entry positions with a Hoare partition that compares against whatever
// entry currently stands at the first position of the range, and every swap goes through the virtual
// PermutEntries. The resulting order of equal entries follows from those exact steps.
// Cost: the first entry of a range is the pivot, so input that is already sorted (or nearly so), and
// input in reverse order, takes quadratic time (about n * n / 2 comparisons): 20,000 sorted two-field
// entries take about 5 s where 20,000 random ones take about 12 ms (bench/containers.cpp, IndexSort).
// Sorting an index that is already sorted is the common trap: sort once, or shuffle large sorted input.
// Many equal keys are not a problem (n log n).
// FindEntry is a binary search that returns the first of a run of equal entries; it walks back over
// the run one entry at a time, so a search on a few leading fields that many entries share costs the
// length of the run.
#pragma once

#include <cstdint>

#include "export.h"
#include "types.h"

// Built-in kinds of field value.
enum : std::int32_t {
  KVFIELDKIND_UNSORTABLE = 0,  // never separates two entries
  KVFIELDKIND_LONG = 1,        // signed 32-bit integer, 4 bytes little-endian
  KVFIELDKIND_DOUBLE = 2,      // IEEE double, 8 bytes little-endian; NaN after every number
  KVFIELDKIND_TEXT = 3,        // bytes up to the first 0 byte or the length, compared as unsigned bytes
  KVFIELDKIND_BYTES = 4,       // raw bytes compared as unsigned, a shorter prefix first
};

// How the values of one field compare. A host supplies its own kind by deriving from this class and
// overriding IsCanSort and CompareValues. For the fixed-size kinds a value shorter than the kind's
// size is missing: it sorts before every present value, and two missing values are equal.
class VEXTOOLS_API KVFieldKindInfo {
 public:
  explicit KVFieldKindInfo(std::int32_t kind = KVFIELDKIND_BYTES);
  virtual ~KVFieldKindInfo();

  std::int32_t GetKind() const;
  virtual bool IsCanSort() const;
  // Negative when value A comes first, positive when value B does, 0 when equal. The index passes 0
  // for options and for the two reserved arguments of each value.
  virtual std::int16_t CompareValues(std::int32_t options, const char* valueA, std::int32_t lengthA,
                                     std::int32_t reservedA1, std::int32_t reservedA2, const char* valueB,
                                     std::int32_t lengthB, std::int32_t reservedB1,
                                     std::int32_t reservedB2) const;

 protected:
  std::int32_t kind_;
};

struct tagINDEXFIELDINFO {
  std::int32_t value;       // the caller's; the index does not interpret it
  KVFieldKindInfo* kind;    // may be null: the field then never separates two entries
};

struct tagFIELDVALUE {
  std::int32_t capacity;    // bytes available at buffer
  char* buffer;
};

// Allocator of the records the index allocates itself (AllocForEntry, RemoveAndFreeEntry).
class VEXTOOLS_API VEXINDEXMEM {
 public:
  VEXINDEXMEM();
  ~VEXINDEXMEM();
  char* AllocPtr(std::int32_t size);
  void FreePtr(char* pointer);
};

// Entries are numbered from 1; 0 means none or, for the field calls, the current entry. The index owns
// its two arrays (movable global memory) but not the records. Record pointers are intptr_t so they fit
// on every build. Entry numbers outside the allocated array are ignored (0 / null / nothing done).
class VEXTOOLS_API VEXGENERALINDEX {
 public:
  VEXGENERALINDEX();
  // Copies every member as it stands: the arrays are then shared, so callers do not copy live indexes.
  VEXGENERALINDEX(const VEXGENERALINDEX&) = default;
  VEXGENERALINDEX& operator=(const VEXGENERALINDEX&) = default;
  virtual ~VEXGENERALINDEX();

  virtual std::int32_t AddEntry();
  virtual int RemoveLastEntry();
  virtual void PermutEntries(std::int32_t a, std::int32_t b);
  // k is 0-based. 0 when the field has no kind or an unsortable one, else the kind's comparison.
  virtual std::int32_t CompareFields(std::int32_t k, std::int32_t lengthA, char* dataA, std::int32_t lengthB,
                                     char* dataB);

  std::int32_t AddFields(std::int32_t count, tagINDEXFIELDINFO* infos);
  std::int32_t GetNumberOfFields();
  tagINDEXFIELDINFO* GetFieldInfoAt(std::int32_t i);  // 0-based; null outside 0 ... fields - 1
  std::int32_t GetNumberOfEntries();
  std::int32_t GetCurrentEntry();
  int CheckEntry(std::int32_t e);

  int RemoveEntry(std::int32_t e);
  int RemoveAndFreeEntry(std::int32_t e);
  char* AllocForEntry(std::int32_t e, std::int32_t size);
  std::intptr_t GetValueFromEntry(std::int32_t e);
  void SetValueAtEntry(std::int32_t e, std::intptr_t value);
  std::int32_t GetFieldSize(std::int32_t e, std::int32_t k);
  int GetFieldValue(std::int32_t e, std::int32_t k, tagFIELDVALUE* value);

  std::int32_t CompareFieldsTo(std::int32_t n, char* recordA, char* recordB);
  std::int32_t CompareEntries(std::int32_t a, std::int32_t b);
  int SortIndex();
  std::int32_t FindEntry(std::int32_t n, char* key, std::int32_t* found);

  std::int32_t GetFirstEntry();
  std::int32_t GetLastEntry();
  std::int32_t GetNextEntry();
  std::int32_t GetPreviousEntry();
  void PrintIndex(char* title);

 protected:
  std::int32_t Partition(std::int32_t lo, std::int32_t hi);
  char* RecordAt(std::int32_t e);
  const char* FindField(std::int32_t e, std::int32_t k, std::int32_t* length);

  std::int32_t fields_;
  std::int32_t capacity_;
  std::int32_t entries_;
  HGLOBAL field_block_;
  tagINDEXFIELDINFO* field_infos_;  // field_block_, locked
  HGLOBAL entry_block_;
  std::intptr_t* records_;          // entry_block_, locked; records_[e - 1] is entry e's record
  VEXINDEXMEM memory_;
  std::int32_t current_;
};
