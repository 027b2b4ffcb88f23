// XPQUEUE: the min-heap with position tracking.
#include <cstdint>
#include <cstdlib>

#include "containers/pqueue_growth.h"
#include "vextools/pqueue.h"

namespace {
constexpr std::int32_t kDefaultIncrement = 100;
constexpr std::int64_t kCellBytes = 12;  // the size limit counts cells as on the 32-bit build
constexpr std::int32_t kMaxBytes = 0x7FFFFFFF;
}  // namespace

XPQUEUE::XPQUEUE() : XPQUEUE(kDefaultIncrement) {}

XPQUEUE::XPQUEUE(std::int32_t increment)
    : increment_(increment), capacity_(0), size_(0), cells_(nullptr), last_(nullptr), tracked_(0) {
  CreateIncrementArray(increment);
}

XPQUEUE::~XPQUEUE() {
  std::free(cells_);
}

int XPQUEUE::CreateIncrementArray(std::int32_t n) {
  const std::int64_t cells = vex::containers::PQueueCellsAfterGrowth(cells_ != nullptr, capacity_, n);
  if (cells < 1 || cells * kCellBytes >= kMaxBytes || std::int64_t(capacity_) + n > 0x7FFFFFFF) return 0;
  void* grown = std::realloc(cells_, static_cast<std::size_t>(cells) * sizeof(tagPQCELL));
  if (!grown) return 0;
  cells_ = static_cast<tagPQCELL*>(grown);
  capacity_ += n;  // kept: only the increment, even when the array grew by half
  last_ = cells_ + size_;
  return 1;
}

void XPQUEUE::IncrementSize() {
  ++size_;
  ++last_;
}

void XPQUEUE::DecrementSize() {
  --size_;
  --last_;
}

void XPQUEUE::SetCell(std::int32_t i, tagPQCELL& cell) {
  cells_[i] = cell;
  if (cell.position) *cell.position = i;
}

void XPQUEUE::UpHeap(std::int32_t i) {
  tagPQCELL* const cells = cells_;
  tagPQCELL cell = cells[i];
  cells[0].key = INT32_MIN;  // the sentinel stops the climb at the root
  if (!tracked_) {  // no cell has a position variable: plain moves
    while (cells[i >> 1].key > cell.key) {
      cells[i] = cells[i >> 1];
      i >>= 1;
    }
    cells[i] = cell;
    return;
  }
  while (cells[i >> 1].key > cell.key) {
    SetCell(i, cells[i >> 1]);
    i >>= 1;
  }
  SetCell(i, cell);
}

// The classic sift-down (the smaller child moves up while the saved key is strictly greater; the right
// child on a tie), done bottom-up: the hole first goes down to a leaf along the smaller children, then
// climbs back while the parent's key is not below the saved key. Both leave every cell in the same
// place; this one makes one comparison a level instead of two. Positions are written once at the end.
void XPQUEUE::DownHeap(std::int32_t i) {
  tagPQCELL* const cells = cells_;
  const std::int32_t size = size_;
  const std::int32_t start = i;
  const tagPQCELL cell = cells[i];
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
  if (!tracked_) return;
  for (std::int32_t j = i; j >= start; j >>= 1) {  // the cells that ended one level up, and the saved one
    if (std::int32_t* position = cells[j].position) *position = j;
    if (j == 0) break;
  }
}

int XPQUEUE::AddValue(std::int32_t key, std::int32_t value, std::int32_t* position) {
  if (size_ >= capacity_) {
    if (capacity_ >= 0x7FFFFFFF || !CreateIncrementArray(increment_)) return 0;
    if (size_ >= capacity_) return 0;
  }
  IncrementSize();
  last_->key = key;
  last_->value = value;
  last_->position = position;
  if (position) ++tracked_;
  UpHeap(size_);
  return 1;
}

std::int16_t XPQUEUE::ReadHead(std::int32_t& key, std::int32_t& value) {
  if (size_ <= 0) return 0;
  key = cells_[1].key;
  value = cells_[1].value;
  return -1;
}

std::int16_t XPQUEUE::RemoveHead(std::int32_t& key, std::int32_t& value) {
  if (size_ <= 0) return -1;
  key = cells_[1].key;
  value = cells_[1].value;
  if (cells_[1].position) --tracked_;
  cells_[1] = *last_;
  DecrementSize();
  if (size_ > 0) DownHeap(1);  // the removed cell's variable is left alone
  return 0;
}

std::int16_t XPQUEUE::RemoveAddHead(std::int32_t& key, std::int32_t& value, std::int32_t newKey,
                                    std::int32_t newValue, std::int32_t* newPosition) {
  if (size_ <= 0) return -1;
  key = cells_[1].key;
  value = cells_[1].value;
  tracked_ += (newPosition != nullptr) - (cells_[1].position != nullptr);
  cells_[1].key = newKey;
  cells_[1].value = newValue;
  cells_[1].position = newPosition;
  DownHeap(1);
  return 0;
}

std::int16_t XPQUEUE::RemoveCell(std::int32_t position) {
  if (position > size_ || position < 1) return -1;
  if (cells_[position].position) --tracked_;
  if (position == size_) {  // the last cell is dropped and nothing else moves
    DecrementSize();
    return 0;
  }
  SetCell(position, *last_);
  DecrementSize();
  DownHeap(position);
  UpHeap(position);
  return 0;
}

void XPQUEUE::ChangeValue(std::int32_t position, std::int32_t newKey) {
  if (position < 1 || position > size_) return;
  const std::int32_t old = cells_[position].key;
  cells_[position].key = newKey;
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
  capacity_ = 0;
  size_ = 0;
  tracked_ = 0;
}

int XPQUEUE::TestFree() {
  if (!cells_) return 1;
  cells_[0].key = INT32_MIN;
  int result = 1;
  for (std::int32_t i = 1; i <= size_; ++i) {
    if (cells_[i >> 1].key > cells_[i].key) result = 0;
    if (cells_[i].position && *cells_[i].position != i) result = 1;  // kept: hides an earlier order fault
  }
  return result;
}

void XPQUEUE::PrintTree() {}
