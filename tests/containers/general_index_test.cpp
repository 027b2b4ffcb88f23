#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "vextools/generalindex.h"
#include "vextools/types.h"

namespace {

// Records of (key as a signed 32-bit field, tag as an unsortable field).
std::vector<char> Record(std::int32_t key, std::int32_t tag) {
  std::vector<char> record(16);
  const std::int32_t parts[] = {4, key, 4, tag};
  for (int p = 0; p < 4; ++p) {
    for (int b = 0; b < 4; ++b) record[p * 4 + b] = static_cast<char>(static_cast<std::uint32_t>(parts[p]) >> (8 * b));
  }
  return record;
}

class RecordingIndex : public VEXGENERALINDEX {
 public:
  explicit RecordingIndex(KVFieldKindInfo* keyKind) {
    tagINDEXFIELDINFO infos[] = {{7, keyKind}, {8, &unsortable_}};
    AddFields(2, infos);
  }
  void PermutEntries(std::int32_t a, std::int32_t b) override {
    swaps.emplace_back(a, b);
    VEXGENERALINDEX::PermutEntries(a, b);
  }
  std::int32_t CompareFields(std::int32_t k, std::int32_t la, char* a, std::int32_t lb, char* b) override {
    ++comparisons;
    return VEXGENERALINDEX::CompareFields(k, la, a, lb, b);
  }
  void Fill(const std::vector<std::int32_t>& keys) {
    for (std::size_t i = 0; i < keys.size(); ++i) {
      records_.push_back(Record(keys[i], static_cast<std::int32_t>(i)));
      SetValueAtEntry(AddEntry(), reinterpret_cast<std::intptr_t>(records_.back().data()));
    }
    swaps.clear();
  }
  std::vector<std::int32_t> Tags() {
    std::vector<std::int32_t> tags;
    for (std::int32_t e = 1; e <= GetNumberOfEntries(); ++e) {
      std::int32_t tag = -1;
      tagFIELDVALUE value{4, reinterpret_cast<char*>(&tag)};
      EXPECT_EQ(GetFieldValue(e, 2, &value), 1);
      tags.push_back(tag);
    }
    return tags;
  }
  std::int32_t Capacity() const { return capacity_; }
  std::size_t EntryBlockBytes() const { return GlobalSize(entry_block_); }

  std::vector<std::pair<std::int32_t, std::int32_t>> swaps;
  int comparisons = 0;

 private:
  KVFieldKindInfo unsortable_{KVFIELDKIND_UNSORTABLE};
  std::vector<std::vector<char>> records_{};
};

using Swaps = std::vector<std::pair<std::int32_t, std::int32_t>>;

}  // namespace

TEST(GeneralIndex, SortFollowsThePartitionStepsWithEqualKeys) {
  KVFieldKindInfo longs(KVFIELDKIND_LONG);
  RecordingIndex index(&longs);
  // The pivot is whatever stands at the first position: these keys order differently with a saved one.
  index.Fill({2, 2, 1, 1, 3, 2, 1});
  EXPECT_EQ(index.SortIndex(), 1);
  EXPECT_EQ(index.Tags(), (std::vector<std::int32_t>{3, 2, 6, 5, 0, 1, 4}));
  EXPECT_EQ(index.swaps, (Swaps{{1, 1}, {1, 7}, {2, 4}, {1, 1}, {1, 3}, {1, 1}, {1, 2}, {4, 4}, {4, 7}, {5, 6},
                                {4, 4}, {4, 5}, {6, 6}, {6, 7}}));

  std::int32_t found = 0;
  std::vector<char> key = Record(2, 99);
  EXPECT_EQ(index.FindEntry(1, key.data(), &found), 1);
  EXPECT_EQ(found, 4);  // the first of the three 2s
  EXPECT_EQ(index.GetCurrentEntry(), 4);
  key = Record(0, 0);
  found = -5;
  EXPECT_EQ(index.FindEntry(1, key.data(), &found), 0);
  EXPECT_EQ(found, -5);
}

TEST(GeneralIndex, UnsortableFieldsLeaveTheOrderToTheSwaps) {
  KVFieldKindInfo unsortable(KVFIELDKIND_UNSORTABLE);
  RecordingIndex index(&unsortable);
  index.Fill({5, 1, 9, 3});
  index.SortIndex();
  EXPECT_EQ(index.Tags(), (std::vector<std::int32_t>{2, 3, 0, 1}));
  EXPECT_EQ(index.swaps, (Swaps{{1, 1}, {1, 4}, {2, 3}, {1, 1}, {1, 2}, {3, 3}, {3, 4}}));
  std::int32_t found = 0;
  std::vector<char> key = Record(42, 0);
  EXPECT_EQ(index.FindEntry(2, key.data(), &found), 1);
  EXPECT_EQ(found, 1);

  RecordingIndex nullKind(nullptr);
  nullKind.Fill({3, 2, 1});
  nullKind.SortIndex();
  EXPECT_EQ(nullKind.Tags(), (std::vector<std::int32_t>{1, 2, 0}));
}

TEST(GeneralIndex, SmallSortsAndRemoval) {
  KVFieldKindInfo longs(KVFIELDKIND_LONG);
  RecordingIndex index(&longs);
  EXPECT_EQ(index.SortIndex(), 1);
  index.Fill({4});
  EXPECT_EQ(index.SortIndex(), 1);
  EXPECT_EQ(index.comparisons, 0);
  EXPECT_TRUE(index.swaps.empty());

  index.Fill({3, 2, 1});  // tags 0 (key 3), 0, 1, 2 as entries 1..4
  EXPECT_EQ(index.RemoveEntry(2), 1);  // the last entry moves into its place
  EXPECT_EQ(index.Tags(), (std::vector<std::int32_t>{0, 2, 1}));
  EXPECT_EQ(index.GetCurrentEntry(), 4);
  EXPECT_EQ(index.RemoveEntry(4), 0);
  EXPECT_EQ(index.RemoveEntry(0), 0);

  const std::intptr_t third = index.GetValueFromEntry(3);
  EXPECT_EQ(index.RemoveLastEntry(), 1);
  EXPECT_EQ(index.AddEntry(), 3);
  EXPECT_EQ(index.GetValueFromEntry(3), third);  // the slot was not cleared
}

TEST(GeneralIndex, FieldAccessAndCursor) {
  KVFieldKindInfo longs(KVFIELDKIND_LONG);
  RecordingIndex index(&longs);
  std::vector<char> record = {3, 0, 0, 0, 'a', 'b', 'c', 2, 0, 0, 0, 'd', 'e'};
  index.SetValueAtEntry(index.AddEntry(), reinterpret_cast<std::intptr_t>(record.data()));
  index.AddEntry();
  index.SetValueAtEntry(2, 0);
  EXPECT_EQ(index.GetFieldSize(1, 2), 2);
  EXPECT_EQ(index.GetFieldSize(1, 3), 0);
  EXPECT_EQ(index.GetFieldSize(2, 1), 0);  // no record
  EXPECT_EQ(index.GetFieldSize(0, 1), 0);  // no current entry
  char buffer[4] = {};
  tagFIELDVALUE small{2, buffer};
  EXPECT_EQ(index.GetFieldValue(1, 1, &small), 0);
  tagFIELDVALUE enough{3, buffer};
  EXPECT_EQ(index.GetFieldValue(1, 1, &enough), 1);
  EXPECT_EQ(std::string(buffer, 3), "abc");

  EXPECT_EQ(index.GetFirstEntry(), 1);
  EXPECT_EQ(index.GetFieldSize(0, 1), 3);
  EXPECT_EQ(index.GetNextEntry(), 2);
  EXPECT_EQ(index.GetNextEntry(), 0);
  EXPECT_EQ(index.GetNextEntry(), 0);
  EXPECT_EQ(index.GetLastEntry(), 2);
  EXPECT_EQ(index.GetPreviousEntry(), 1);
  EXPECT_EQ(index.GetPreviousEntry(), 0);
  EXPECT_EQ(index.CheckEntry(-3), 1);
  EXPECT_EQ(index.CheckEntry(3), 0);

  EXPECT_EQ(index.GetFieldInfoAt(1)->value, 8);
  EXPECT_EQ(index.GetFieldInfoAt(2), nullptr);
  EXPECT_EQ(index.AddFields(1, index.GetFieldInfoAt(0)), 3);  // from its own array
  EXPECT_EQ(index.GetFieldInfoAt(2)->value, 7);
  EXPECT_EQ(index.AddFields(1, nullptr), 3);
}

TEST(GeneralIndex, EntryArrayGrowsByAHundred) {
  RecordingIndex index(nullptr);
  for (int i = 0; i < 100; ++i) index.AddEntry();
  EXPECT_EQ(index.Capacity(), 100);
  EXPECT_EQ(index.EntryBlockBytes(), 100 * sizeof(std::intptr_t));
  EXPECT_EQ(index.AddEntry(), 101);
  EXPECT_EQ(index.Capacity(), 200);
  EXPECT_EQ(index.EntryBlockBytes(), 200 * sizeof(std::intptr_t));
  EXPECT_EQ(index.GetValueFromEntry(150), 0);
}

TEST(GeneralIndex, FieldKinds) {
  const auto compare = [](std::int32_t kind, const void* a, std::int32_t la, const void* b, std::int32_t lb) {
    KVFieldKindInfo info(kind);
    return info.CompareValues(0, static_cast<const char*>(a), la, 0, 0, static_cast<const char*>(b), lb, 0, 0);
  };
  const std::int32_t minus = -5;
  const std::int32_t plus = 3;
  EXPECT_LT(compare(KVFIELDKIND_LONG, &minus, 4, &plus, 4), 0);
  EXPECT_GT(compare(KVFIELDKIND_LONG, &minus, 4, &plus, 2), 0);  // a short value is missing, so first
  const double nan = std::nan("");
  const double one = 1.0;
  EXPECT_GT(compare(KVFIELDKIND_DOUBLE, &nan, 8, &one, 8), 0);
  EXPECT_EQ(compare(KVFIELDKIND_DOUBLE, &nan, 8, &nan, 8), 0);
  EXPECT_EQ(compare(KVFIELDKIND_TEXT, "ab\0x", 4, "ab", 2), 0);
  EXPECT_LT(compare(KVFIELDKIND_TEXT, "ab", 2, "\xE9", 1), 0);
  EXPECT_LT(compare(KVFIELDKIND_BYTES, "ab", 2, "ab\0", 3), 0);
  EXPECT_FALSE(KVFieldKindInfo(KVFIELDKIND_UNSORTABLE).IsCanSort());
  EXPECT_TRUE(KVFieldKindInfo(KVFIELDKIND_BYTES).IsCanSort());
}

TEST(GeneralIndex, HostKindOverridesTheComparison) {
  struct Descending : KVFieldKindInfo {
    std::int16_t CompareValues(std::int32_t, const char* a, std::int32_t, std::int32_t, std::int32_t,
                               const char* b, std::int32_t, std::int32_t, std::int32_t) const override {
      return static_cast<std::int16_t>(static_cast<unsigned char>(*b) - static_cast<unsigned char>(*a));
    }
  } descending;
  RecordingIndex index(&descending);
  index.Fill({1, 3, 2});
  index.SortIndex();
  EXPECT_EQ(index.Tags(), (std::vector<std::int32_t>{1, 2, 0}));
}
