// XPQUEUE: the min-heap with position tracking. The heap steps are written once, as templates over the
// two cell layouts: bare (key, value) pairs while no cell has a position variable, whole cells after.
#include <cstdint>
#include <cstdlib>
#include <type_traits>

#include "containers/pqueue_growth.h"
#include "vextools/pqueue.h"

namespace {

constexpr std::int32_t kDefaultIncrement = 100;
constexpr std::int64_t kCellBytes = 12;  // the size limit counts cells as on the 32-bit build
constexpr std::int32_t kMaxBytes = 0x7FFFFFFF;

struct BareCell {
  std::int32_t key;
  std::int32_t value;
};

struct TrackedCell {
  std::int32_t key;
  std::int32_t value;
  std::int32_t* position;
};

template <class Cell>
inline void Note(Cell& cell, std::int32_t i) {
  if constexpr (std::is_same_v<Cell, TrackedCell>) {
    if (cell.position) *cell.position = i;
  }
}

template <class Cell>
void SiftUp(Cell* cells, std::int32_t i) {
  const Cell cell = cells[i];
  cells[0].key = INT32_MIN;  // the sentinel stops the climb at the root
  while (cells[i >> 1].key > cell.key) {
    cells[i] = cells[i >> 1];
    Note(cells[i], i);
    i >>= 1;
  }
  cells[i] = cell;
  Note(cells[i], i);
}

// The classic sift-down (the smaller child moves up while the saved key is strictly greater; the right
// child on a tie), done bottom-up: the hole first goes down to a leaf along the smaller children, then
// climbs back while the parent's key is not below the saved key. Both leave every cell in the same
// place; this one makes one comparison a level instead of two. Positions are written once at the end.
template <class Cell>
void SiftDown(Cell* cells, std::int32_t size, std::int32_t i) {
  const std::int32_t start = i;
  const Cell cell = cells[i];
  const std::int32_t half = size / 2;
  while (i <= half) {
    std::int32_t child = 2 * i;
    if (child < size && cells[child + 1].key <= cells[child].key) ++child;
    cells[i] = cells[child];
    i = child;
  }
  while (i > start && cells[i >> 1].key >= cell.key) {
    cells[i] = cells[i >> 1];
    i >>= 1;
  }
  cells[i] = cell;
  if constexpr (std::is_same_v<Cell, TrackedCell>) {
    for (std::int32_t j = i; j >= start && j > 0; j >>= 1) Note(cells[j], j);  // moved up, and this one
  }
}

BareCell* Bare(void* cells) {
  return static_cast<BareCell*>(cells);
}

TrackedCell* Tracked(void* cells) {
  return static_cast<TrackedCell*>(cells);
}

}  // namespace

XPQUEUE::XPQUEUE() : XPQUEUE(kDefaultIncrement) {}

XPQUEUE::XPQUEUE(std::int32_t increment)
    : increment_(increment),
      capacity_(0),
      size_(0),
      cells_(nullptr),
      last_(nullptr),
      allocated_(0),
      tracked_(false) {
  CreateIncrementArray(increment);
}

XPQUEUE::~XPQUEUE() {
  std::free(cells_);
}

std::int32_t XPQUEUE::KeyAt(std::int32_t i) const {
  return tracked_ ? Tracked(cells_)[i].key : Bare(cells_)[i].key;
}

std::int32_t XPQUEUE::ValueAt(std::int32_t i) const {
  return tracked_ ? Tracked(cells_)[i].value : Bare(cells_)[i].value;
}

int XPQUEUE::CreateIncrementArray(std::int32_t n) {
  const std::int64_t cells = vex::containers::PQueueCellsAfterGrowth(cells_ != nullptr, capacity_, n);
  if (cells < 1 || cells * kCellBytes >= kMaxBytes || std::int64_t(capacity_) + n > 0x7FFFFFFF) return 0;
  const std::size_t cellSize = tracked_ ? sizeof(TrackedCell) : sizeof(BareCell);
  void* grown = std::realloc(cells_, static_cast<std::size_t>(cells) * cellSize);
  if (!grown) return 0;
  cells_ = grown;
  allocated_ = static_cast<std::int32_t>(cells);
  capacity_ += n;  // kept: only the increment, even when the array grew by half
  last_ = static_cast<char*>(cells_) + std::size_t(size_) * cellSize;
  return 1;
}

// Widens the bare pairs to whole cells without a position variable, from the end so nothing is
// overwritten before it is read.
bool XPQUEUE::TrackPositions() {
  if (tracked_) return true;
  if (!cells_) return false;
  void* wide = std::realloc(cells_, static_cast<std::size_t>(allocated_) * sizeof(TrackedCell));
  if (!wide) return false;
  for (std::int32_t i = size_; i >= 0; --i) {
    const BareCell bare = Bare(wide)[i];
    Tracked(wide)[i] = TrackedCell{bare.key, bare.value, nullptr};
  }
  cells_ = wide;
  tracked_ = true;
  last_ = Tracked(cells_) + size_;
  return true;
}

void XPQUEUE::IncrementSize() {
  ++size_;
  last_ = static_cast<char*>(last_) + (tracked_ ? sizeof(TrackedCell) : sizeof(BareCell));
}

void XPQUEUE::DecrementSize() {
  --size_;
  last_ = static_cast<char*>(last_) - (tracked_ ? sizeof(TrackedCell) : sizeof(BareCell));
}

void XPQUEUE::SetCell(std::int32_t i, tagPQCELL& cell) {
  if (tracked_) {
    Tracked(cells_)[i] = TrackedCell{cell.key, cell.value, cell.position};
  } else {
    Bare(cells_)[i] = BareCell{cell.key, cell.value};
  }
  if (cell.position) *cell.position = i;
}

void XPQUEUE::UpHeap(std::int32_t i) {
  if (tracked_) SiftUp(Tracked(cells_), i);
  else SiftUp(Bare(cells_), i);
}

void XPQUEUE::DownHeap(std::int32_t i) {
  if (tracked_) SiftDown(Tracked(cells_), size_, i);
  else SiftDown(Bare(cells_), size_, i);
}

int XPQUEUE::AddValue(std::int32_t key, std::int32_t value, std::int32_t* position) {
  if (size_ >= capacity_) {
    if (capacity_ >= 0x7FFFFFFF || !CreateIncrementArray(increment_)) return 0;
    if (size_ >= capacity_) return 0;
  }
  if (position && !TrackPositions()) return 0;
  IncrementSize();
  tagPQCELL cell{key, position, value};
  SetCell(size_, cell);
  UpHeap(size_);
  return 1;
}

std::int16_t XPQUEUE::ReadHead(std::int32_t& key, std::int32_t& value) {
  if (size_ <= 0) return 0;
  key = KeyAt(1);
  value = ValueAt(1);
  return -1;
}

std::int16_t XPQUEUE::RemoveHead(std::int32_t& key, std::int32_t& value) {
  if (size_ <= 0) return -1;
  key = KeyAt(1);
  value = ValueAt(1);
  if (tracked_) Tracked(cells_)[1] = Tracked(cells_)[size_];
  else Bare(cells_)[1] = Bare(cells_)[size_];
  DecrementSize();
  if (size_ > 0) DownHeap(1);  // the removed cell's variable is left alone
  return 0;
}

std::int16_t XPQUEUE::RemoveAddHead(std::int32_t& key, std::int32_t& value, std::int32_t newKey,
                                    std::int32_t newValue, std::int32_t* newPosition) {
  if (size_ <= 0 || (newPosition && !TrackPositions())) return -1;
  key = KeyAt(1);
  value = ValueAt(1);
  if (tracked_) Tracked(cells_)[1] = TrackedCell{newKey, newValue, newPosition};
  else Bare(cells_)[1] = BareCell{newKey, newValue};
  DownHeap(1);
  return 0;
}

std::int16_t XPQUEUE::RemoveCell(std::int32_t position) {
  if (position > size_ || position < 1) return -1;
  if (position == size_) {  // the last cell is dropped and nothing else moves
    DecrementSize();
    return 0;
  }
  if (tracked_) {
    TrackedCell& moved = Tracked(cells_)[position];
    moved = Tracked(cells_)[size_];
    Note(moved, position);
  } else {
    Bare(cells_)[position] = Bare(cells_)[size_];
  }
  DecrementSize();
  DownHeap(position);
  UpHeap(position);
  return 0;
}

void XPQUEUE::ChangeValue(std::int32_t position, std::int32_t newKey) {
  if (position < 1 || position > size_) return;
  std::int32_t& key = tracked_ ? Tracked(cells_)[position].key : Bare(cells_)[position].key;
  const std::int32_t old = key;
  key = newKey;
  if (newKey > old) DownHeap(position);
  else UpHeap(position);
}

std::int16_t XPQUEUE::IsEmpty() {
  return size_ == 0;
}

void XPQUEUE::ReInit() {
  std::free(cells_);
  cells_ = nullptr;
  last_ = nullptr;
  allocated_ = 0;
  capacity_ = 0;
  size_ = 0;
  tracked_ = false;
}

int XPQUEUE::TestFree() {
  if (!cells_) return 1;
  if (tracked_) Tracked(cells_)[0].key = INT32_MIN;
  else Bare(cells_)[0].key = INT32_MIN;
  int result = 1;
  for (std::int32_t i = 1; i <= size_; ++i) {
    if (KeyAt(i >> 1) > KeyAt(i)) result = 0;
    if (tracked_) {
      const std::int32_t* position = Tracked(cells_)[i].position;
      if (position && *position != i) result = 1;  // kept: hides an earlier order fault
    }
  }
  return result;
}

void XPQUEUE::PrintTree() {}
