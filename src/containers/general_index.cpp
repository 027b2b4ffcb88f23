// VEXGENERALINDEX: entries, fields and the cursor. Sorting and searching are in general_index_sort.cpp.
#include <cstring>
#include <vector>

#include "containers/byte_order.h"
#include "vextools/generalindex.h"

namespace {

constexpr std::int32_t kEntryStep = 100;

// Grows (or first allocates, zero-filled) a locked movable block to bytes. On failure the old block
// stays as it was and false is returned.
bool GrowLockedBlock(HGLOBAL* block, void** data, std::size_t bytes) {
  if (!*block) {
    HGLOBAL fresh = GlobalAlloc(GHND, bytes);
    if (!fresh) return false;
    void* locked = GlobalLock(fresh);
    if (!locked) {
      GlobalFree(fresh);
      return false;
    }
    *block = fresh;
    *data = locked;
    return true;
  }
  GlobalUnlock(*block);
  HGLOBAL grown = GlobalReAlloc(*block, bytes, GMEM_MOVEABLE | GMEM_ZEROINIT);
  if (grown) *block = grown;
  *data = GlobalLock(*block);
  return grown != nullptr;
}

void FreeLockedBlock(HGLOBAL block) {
  if (!block) return;
  GlobalUnlock(block);
  GlobalFree(block);
}

}  // namespace

VEXGENERALINDEX::VEXGENERALINDEX()
    : fields_(0),
      capacity_(0),
      entries_(0),
      field_block_(nullptr),
      field_infos_(nullptr),
      entry_block_(nullptr),
      records_(nullptr),
      current_(0) {}

VEXGENERALINDEX::~VEXGENERALINDEX() {
  FreeLockedBlock(field_block_);
  FreeLockedBlock(entry_block_);
}

std::int32_t VEXGENERALINDEX::AddFields(std::int32_t count, tagINDEXFIELDINFO* infos) {
  if (!infos || count <= 0 || count > 0x7FFFFFFF - fields_) return fields_;
  const std::vector<tagINDEXFIELDINFO> added(infos, infos + count);  // infos may point into our array
  void* data = field_infos_;
  const std::size_t bytes = static_cast<std::size_t>(fields_ + count) * sizeof(tagINDEXFIELDINFO);
  const bool grown = GrowLockedBlock(&field_block_, &data, bytes);
  field_infos_ = static_cast<tagINDEXFIELDINFO*>(data);
  if (!grown) return fields_;
  std::memcpy(field_infos_ + fields_, added.data(), added.size() * sizeof(tagINDEXFIELDINFO));
  fields_ += count;
  return fields_;
}

std::int32_t VEXGENERALINDEX::GetNumberOfFields() {
  return fields_;
}

tagINDEXFIELDINFO* VEXGENERALINDEX::GetFieldInfoAt(std::int32_t i) {
  return i >= 0 && i < fields_ ? field_infos_ + i : nullptr;
}

std::int32_t VEXGENERALINDEX::GetNumberOfEntries() {
  return entries_;
}

std::int32_t VEXGENERALINDEX::GetCurrentEntry() {
  return current_;
}

int VEXGENERALINDEX::CheckEntry(std::int32_t e) {
  return e <= entries_;  // kept: no lower bound
}

std::int32_t VEXGENERALINDEX::AddEntry() {
  if (entries_ >= capacity_ && capacity_ <= 0x7FFFFFFF - kEntryStep) {
    void* data = records_;
    const std::size_t bytes = static_cast<std::size_t>(capacity_ + kEntryStep) * sizeof(std::intptr_t);
    const bool grown = GrowLockedBlock(&entry_block_, &data, bytes);
    records_ = static_cast<std::intptr_t*>(data);
    if (grown) capacity_ += kEntryStep;
  }
  if (entries_ >= capacity_) return 0;
  return ++entries_;  // the slot keeps whatever pointer it last held
}

int VEXGENERALINDEX::RemoveLastEntry() {
  if (entries_ <= 0) return 0;
  --entries_;
  return 1;
}

int VEXGENERALINDEX::RemoveEntry(std::int32_t e) {
  if (e > entries_ || e < 1) return 0;
  const std::int32_t last = GetLastEntry();
  const bool swapped = e != last;
  if (swapped) PermutEntries(e, last);
  const int removed = RemoveLastEntry();
  if (!removed && swapped) PermutEntries(e, last);
  return removed;
}

int VEXGENERALINDEX::RemoveAndFreeEntry(std::int32_t e) {
  char* record = RecordAt(e);
  const int removed = RemoveEntry(e);
  if (removed && record) memory_.FreePtr(record);
  return removed;
}

char* VEXGENERALINDEX::AllocForEntry(std::int32_t e, std::int32_t size) {
  if (e < 1 || e > capacity_) return nullptr;
  char* record = memory_.AllocPtr(size);
  SetValueAtEntry(e, reinterpret_cast<std::intptr_t>(record));
  return record;
}

std::intptr_t VEXGENERALINDEX::GetValueFromEntry(std::int32_t e) {
  return e >= 1 && e <= capacity_ ? records_[e - 1] : 0;
}

void VEXGENERALINDEX::SetValueAtEntry(std::int32_t e, std::intptr_t value) {
  if (e >= 1 && e <= capacity_) records_[e - 1] = value;
}

char* VEXGENERALINDEX::RecordAt(std::int32_t e) {
  return reinterpret_cast<char*>(GetValueFromEntry(e));
}

void VEXGENERALINDEX::PermutEntries(std::int32_t a, std::int32_t b) {
  if (a < 1 || b < 1 || a > capacity_ || b > capacity_) return;
  const std::intptr_t record = records_[a - 1];
  records_[a - 1] = records_[b - 1];
  records_[b - 1] = record;
}

// The value of field k (1-based) of entry e (0: the current entry) and its length, or null.
const char* VEXGENERALINDEX::FindField(std::int32_t e, std::int32_t k, std::int32_t* length) {
  if (e == 0) e = current_;
  const char* record = RecordAt(e);
  if (!record || k < 1 || k > fields_) return nullptr;
  for (std::int32_t i = 1; i < k; ++i) {
    record += 4 + vex::containers::GetLE32(reinterpret_cast<const unsigned char*>(record));
  }
  *length = static_cast<std::int32_t>(vex::containers::GetLE32(reinterpret_cast<const unsigned char*>(record)));
  return record + 4;
}

std::int32_t VEXGENERALINDEX::GetFieldSize(std::int32_t e, std::int32_t k) {
  std::int32_t length = 0;
  return FindField(e, k, &length) ? length : 0;
}

int VEXGENERALINDEX::GetFieldValue(std::int32_t e, std::int32_t k, tagFIELDVALUE* value) {
  std::int32_t length = 0;
  const char* data = value ? FindField(e, k, &length) : nullptr;
  if (!data || length < 0 || value->capacity < length) return 0;
  if (length > 0) {
    if (!value->buffer) return 0;
    std::memcpy(value->buffer, data, static_cast<std::size_t>(length));
  }
  return 1;
}

std::int32_t VEXGENERALINDEX::GetFirstEntry() {
  current_ = entries_ > 0 ? 1 : 0;
  return current_;
}

std::int32_t VEXGENERALINDEX::GetLastEntry() {
  current_ = entries_;
  return current_;
}

std::int32_t VEXGENERALINDEX::GetNextEntry() {
  current_ = current_ == 0 || current_ + 1 > entries_ ? 0 : current_ + 1;
  return current_;
}

std::int32_t VEXGENERALINDEX::GetPreviousEntry() {
  current_ = current_ >= 1 && current_ <= entries_ ? current_ - 1 : 0;
  return current_;
}

void VEXGENERALINDEX::PrintIndex(char*) {}
