// XPQUEUE: a binary min-heap of (key, value) pairs with optional position tracking. A cell may carry a
// pointer to a caller's 32-bit variable in which the queue keeps writing the cell's heap position, so
// that the caller can later change the key of, or remove, that very cell. The smallest key is at the
// head; a new cell stays below an equal parent and a sift-down between equal children takes the right.
//
// Growth: the first array has increment + 1 cells (position 0 is a sentinel) and a capacity of
// increment. Each later growth makes ((capacity + 1) * 3) / 2 cells when that is more than
// capacity + increment + 1, else capacity + increment + 1 cells; the capacity always grows by the
// increment only. The array is never larger than 0x7FFFFFFF bytes counted at 12 bytes a cell.
#pragma once

#include <cstdint>

#include "export.h"

// Packed to 4 bytes so that a cell is 12 bytes on 32-bit builds and 16 (not 24) on 64-bit ones.
#pragma pack(push, 4)
struct tagPQCELL {
  std::int32_t key;
  std::int32_t* position;  // caller's variable, may be null
  std::int32_t value;
};
#pragma pack(pop)

class VEXTOOLS_API XPQUEUE {
 public:
  XPQUEUE();
  explicit XPQUEUE(std::int32_t increment);
  // Copies the members as they stand: the array is then shared, so callers do not copy live queues.
  XPQUEUE(const XPQUEUE&) = default;
  XPQUEUE& operator=(const XPQUEUE&) = default;
  ~XPQUEUE();

  // 1, or 0 when the array cannot grow.
  int AddValue(std::int32_t key, std::int32_t value, std::int32_t* position);
  // -1 (true) with the head's key and value, 0 when empty.
  std::int16_t ReadHead(std::int32_t& key, std::int32_t& value);
  // The opposite convention, kept: 0 after removing the head, -1 when empty.
  std::int16_t RemoveHead(std::int32_t& key, std::int32_t& value);
  std::int16_t RemoveAddHead(std::int32_t& key, std::int32_t& value, std::int32_t newKey, std::int32_t newValue,
                             std::int32_t* newPosition);
  // 0, or -1 for a position outside 1 ... size. The removed cell's variable is not written.
  std::int16_t RemoveCell(std::int32_t position);
  // Sifts down when the key grows, else up. Positions outside 1 ... size are ignored.
  void ChangeValue(std::int32_t position, std::int32_t newKey);
  std::int16_t IsEmpty();
  void ReInit();
  int TestFree();
  void PrintTree();

 protected:
  void UpHeap(std::int32_t i);
  void DownHeap(std::int32_t i);
  int CreateIncrementArray(std::int32_t n);
  void SetCell(std::int32_t i, tagPQCELL& cell);
  void IncrementSize();
  void DecrementSize();

  std::int32_t increment_;
  std::int32_t capacity_;
  std::int32_t size_;
  tagPQCELL* cells_;
  tagPQCELL* last_;
  std::int32_t tracked_;  // cells in the heap with a position variable; none: no position writes
};
