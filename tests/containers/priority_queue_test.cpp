#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "containers/pqueue_growth.h"
#include "vextools/pqueue.h"

namespace {

using Cells = std::vector<std::pair<std::int32_t, std::int32_t>>;  // (key, value) by heap position

struct PeekQueue : XPQUEUE {
  using XPQUEUE::XPQUEUE;
  Cells Heap() const {
    Cells cells;
    for (std::int32_t i = 1; i <= size_; ++i) cells.emplace_back(KeyAt(i), ValueAt(i));
    return cells;
  }
  std::int32_t Capacity() const { return capacity_; }
};

}  // namespace

TEST(PriorityQueue, TiesAndPositionsAfterMixedOperations) {
  PeekQueue queue;
  std::int32_t where[8] = {-1, -1, -1, -1, -1, -1, -1, -1};
  const std::pair<std::int32_t, std::int32_t> added[] = {{4, 0}, {2, 1}, {4, 2}, {2, 3}, {3, 4}, {2, 5}, {4, 6}};
  for (auto [key, value] : added) ASSERT_EQ(queue.AddValue(key, value, &where[value]), 1);
  // Equal keys stay below their parent.
  EXPECT_EQ(queue.Heap(), (Cells{{2, 1}, {2, 3}, {2, 5}, {4, 0}, {3, 4}, {4, 2}, {4, 6}}));

  queue.ChangeValue(where[2], 2);  // up, but an equal parent stops it
  queue.ChangeValue(where[1], 2);  // unchanged key: no move
  EXPECT_EQ(queue.RemoveCell(where[3]), 0);
  EXPECT_EQ(queue.Heap(), (Cells{{2, 1}, {3, 4}, {2, 5}, {4, 0}, {4, 6}, {2, 2}}));

  std::int32_t key = 0;
  std::int32_t value = 0;
  EXPECT_EQ(queue.RemoveAddHead(key, value, 3, 7, &where[7]), 0);
  EXPECT_EQ(std::make_pair(key, value), std::make_pair(2, 1));
  EXPECT_EQ(queue.Heap(), (Cells{{2, 5}, {3, 4}, {2, 2}, {4, 0}, {4, 6}, {3, 7}}));  // right child on a tie

  queue.ChangeValue(where[5], 5);
  EXPECT_EQ(queue.RemoveHead(key, value), 0);
  EXPECT_EQ(std::make_pair(key, value), std::make_pair(2, 2));
  EXPECT_EQ(queue.Heap(), (Cells{{3, 7}, {3, 4}, {5, 5}, {4, 0}, {4, 6}}));
  // Live cells hold their positions; removed ones keep the last position written.
  EXPECT_EQ(std::vector<std::int32_t>(where, where + 8), (std::vector<std::int32_t>{4, 1, 1, 2, 2, 3, 5, 1}));
  EXPECT_EQ(queue.TestFree(), 1);
}

TEST(PriorityQueue, ReturnConventionsAndLastCellRemoval) {
  PeekQueue queue;
  std::int32_t key = 9;
  std::int32_t value = 9;
  EXPECT_EQ(queue.ReadHead(key, value), 0);
  EXPECT_EQ(queue.RemoveHead(key, value), -1);
  EXPECT_EQ(queue.RemoveAddHead(key, value, 1, 1, nullptr), -1);
  EXPECT_EQ(queue.IsEmpty(), 1);
  EXPECT_EQ(std::make_pair(key, value), std::make_pair(9, 9));

  std::int32_t last = 0;
  queue.AddValue(1, 10, nullptr);
  queue.AddValue(5, 50, nullptr);
  queue.AddValue(3, 30, &last);
  EXPECT_EQ(queue.RemoveCell(4), -1);
  last = 77;
  EXPECT_EQ(queue.RemoveCell(3), 0);
  EXPECT_EQ(last, 77);  // the dropped cell's variable is left alone
  EXPECT_EQ(queue.Heap(), (Cells{{1, 10}, {5, 50}}));
  EXPECT_EQ(queue.ReadHead(key, value), -1);
  EXPECT_EQ(std::make_pair(key, value), std::make_pair(1, 10));
  EXPECT_EQ(queue.RemoveCell(0), -1);
  EXPECT_EQ(queue.IsEmpty(), 0);
}

TEST(PriorityQueue, GrowthRule) {
  using vex::containers::PQueueCellsAfterGrowth;
  EXPECT_EQ(PQueueCellsAfterGrowth(false, 0, 100), 101);
  EXPECT_EQ(PQueueCellsAfterGrowth(true, 100, 100), 201);  // 151 is not more than 201
  EXPECT_EQ(PQueueCellsAfterGrowth(true, 200, 100), 301);  // 301 is not more than 301
  EXPECT_EQ(PQueueCellsAfterGrowth(true, 300, 100), 451);

  PeekQueue queue;
  EXPECT_EQ(queue.Capacity(), 100);
  for (std::int32_t i = 0; i < 301; ++i) ASSERT_EQ(queue.AddValue(1000 - i, i, nullptr), 1);
  EXPECT_EQ(queue.Capacity(), 400);  // 451 cells, yet only the increment is added
  std::int32_t key;
  std::int32_t value;
  queue.ReadHead(key, value);
  EXPECT_EQ(key, 700);

  queue.ReInit();
  EXPECT_EQ(queue.Capacity(), 0);
  EXPECT_EQ(queue.AddValue(5, 5, nullptr), 1);
  EXPECT_EQ(queue.Capacity(), 100);

  PeekQueue stuck(0);  // a zero increment never makes room
  EXPECT_EQ(stuck.AddValue(1, 1, nullptr), 0);
}

TEST(PriorityQueue, SelfCheckKeepsItsQuirk) {
  PeekQueue queue;
  std::int32_t a = 0;
  queue.AddValue(1, 1, nullptr);
  queue.AddValue(2, 2, &a);
  EXPECT_EQ(queue.TestFree(), 1);
  a = 5;  // a position mismatch sets the result back to 1, deliberately
  EXPECT_EQ(queue.TestFree(), 1);
}
