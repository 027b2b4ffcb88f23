// VEXGENERALINDEX: comparing, sorting and searching. The steps of the partition are the contract:
// subclasses see every swap through PermutEntries, and the order of equal entries follows from them.
#include <utility>
#include <vector>

#include "containers/byte_order.h"
#include "vextools/generalindex.h"

std::int32_t VEXGENERALINDEX::CompareFields(std::int32_t k, std::int32_t lengthA, char* dataA,
                                            std::int32_t lengthB, char* dataB) {
  if (k < 0 || k >= fields_) return 0;
  const KVFieldKindInfo* kind = field_infos_[k].kind;
  if (!kind || !kind->IsCanSort()) return 0;
  return kind->CompareValues(0, dataA, lengthA, 0, 0, dataB, lengthB, 0, 0);
}

// Fields beyond the index's own count are never read. A null record reads as empty fields.
std::int32_t VEXGENERALINDEX::CompareFieldsTo(std::int32_t n, char* recordA, char* recordB) {
  if (n > fields_) n = fields_;
  for (std::int32_t k = 0; k < n; ++k) {
    std::int32_t lengthA = 0;
    std::int32_t lengthB = 0;
    char* dataA = nullptr;
    char* dataB = nullptr;
    if (recordA) {
      lengthA = static_cast<std::int32_t>(vex::containers::GetLE32(reinterpret_cast<unsigned char*>(recordA)));
      dataA = recordA + 4;
      recordA = dataA + static_cast<std::uint32_t>(lengthA);
    }
    if (recordB) {
      lengthB = static_cast<std::int32_t>(vex::containers::GetLE32(reinterpret_cast<unsigned char*>(recordB)));
      dataB = recordB + 4;
      recordB = dataB + static_cast<std::uint32_t>(lengthB);
    }
    if (const std::int32_t order = CompareFields(k, lengthA, dataA, lengthB, dataB)) return order;
  }
  return 0;
}

std::int32_t VEXGENERALINDEX::CompareEntries(std::int32_t a, std::int32_t b) {
  return CompareFieldsTo(fields_, RecordAt(a), RecordAt(b));
}

// Hoare partition of positions lo..hi (entry = position + 1), comparing against whatever entry stands
// at lo at the time (kept: a swap that moves it changes the pivot). The bounds checks only matter for
// a comparison that is not consistent; with a consistent one the scans stop inside the range anyway.
std::int32_t VEXGENERALINDEX::Partition(std::int32_t lo, std::int32_t hi) {
  PermutEntries(lo + 1, lo + 1);  // kept: the pivot is swapped with itself
  std::int32_t i = lo - 1;
  std::int32_t j = hi + 1;
  for (;;) {
    do {
      --j;
    } while (CompareEntries(j + 1, lo + 1) > 0 && j > lo);
    do {
      ++i;
    } while (CompareEntries(i + 1, lo + 1) < 0 && i < hi);
    if (i >= j) return j < hi ? j : hi - 1;
    PermutEntries(i + 1, j + 1);
  }
}

// Quicksort: partition, sort the left part, then go on with the right part. The pending right parts
// are kept on a heap stack, so the order of the steps is that of the recursive form without its depth.
int VEXGENERALINDEX::SortIndex() {
  if (entries_ < 2) return 1;
  try {
    std::vector<std::pair<std::int32_t, std::int32_t>> pending;
    std::int32_t lo = 0;
    std::int32_t hi = entries_ - 1;
    for (;;) {
      while (lo < hi) {
        const std::int32_t m = Partition(lo, hi);
        if (m + 1 < hi) pending.emplace_back(m + 1, hi);
        hi = m;
      }
      if (pending.empty()) break;
      lo = pending.back().first;
      hi = pending.back().second;
      pending.pop_back();
    }
  } catch (...) {  // out of memory for the stack: the index stays a permutation of itself
  }
  return 1;
}

std::int32_t VEXGENERALINDEX::FindEntry(std::int32_t n, char* key, std::int32_t* found) {
  if (entries_ <= 0) return 0;
  std::int32_t lo = 0;
  std::int32_t hi = entries_ - 1;
  for (;;) {
    std::int32_t mid = lo + (hi - lo) / 2;
    const std::int32_t order = CompareFieldsTo(n, key, RecordAt(mid + 1));
    if (order != 0) {
      if (order > 0) lo = mid + 1;
      else hi = mid - 1;
      if (hi < lo) return 0;
      continue;
    }
    while (mid > 0 && CompareFieldsTo(n, key, RecordAt(mid)) == 0) --mid;
    if (found) *found = mid + 1;
    current_ = mid + 1;
    return 1;
  }
}
