// XPQUEUE: a binary min-heap of (key, value) pairs with optional position tracking. A cell may carry a
// pointer to a caller's 32-bit variable in which the queue keeps writing the cell's heap position, so
// that the caller can later change the key of, or remove, that very cell. The smallest key is at the
// head; a new cell stays below an equal parent and a sift-down between equal children takes the right.
//
// Growth: the first array has increment + 1 cells (position 0 is a sentinel) and a capacity of
// increment. Each later growth makes ((capacity + 1) * 3) / 2 cells when that is more than
// capacity + increment + 1, else capacity + increment + 1 cells; the capacity always grows by the
// increment only. The array is never larger than 0x7FFFFFFF bytes counted at 12 bytes a cell.
// Until a cell with a position variable arrives the cells are kept as bare (key, value) pairs; the
// first such cell widens the array to whole cells, so a queue that tracks nothing moves 8-byte cells.
#pragma once

#include <cstdint>

#include "export.h"

struct tagPQCELL {
  std::int32_t key;
  std::int32_t* position;  // caller's variable, may be null
  std::int32_t value;
};

class VEXTOOLS_API XPQUEUE {
 public:
  XPQUEUE();
  explicit XPQUEUE(std::int32_t increment);
  // Copies the members as they stand: the array is then shared, so callers do not copy live queues.
  XPQUEUE(const XPQUEUE&) = default;
  XPQUEUE& operator=(const XPQUEUE&) = default;
  ~XPQUEUE();

  // 1, or 0 when the array cannot grow (or, for the first cell with a variable, cannot be widened).
  int AddValue(std::int32_t key, std::int32_t value, std::int32_t* position);
  // -1 (true) with the head's key and value, 0 when empty.
  std::int16_t ReadHead(std::int32_t& key, std::int32_t& value);
  // The opposite convention, kept: 0 after removing the head, -1 when empty.
  std::int16_t RemoveHead(std::int32_t& key, std::int32_t& value);
  // -1 also when the new cell's variable needs the array widened and it cannot be.
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
  bool TrackPositions();
  std::int32_t KeyAt(std::int32_t i) const;
  std::int32_t ValueAt(std::int32_t i) const;

  std::int32_t increment_;
  std::int32_t capacity_;
  std::int32_t size_;
  void* cells_;              // position 0 is the sentinel; bare pairs, or whole cells once tracked_
  void* last_;               // the cell at size_
  std::int32_t allocated_;   // cells allocated
  bool tracked_;             // the cells carry their position variables
};
