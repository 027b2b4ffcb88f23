#include <gtest/gtest.h>

#include <string>

#include "vextools/strings.h"

namespace {

TEST(KVStringList, SplitsAndJoins) {
  KVStringList list(';');
  EXPECT_FALSE(list.SetStringList("a;;b"));  // the empty piece is refused, the others kept
  ASSERT_EQ(list.Count(), 2u);
  EXPECT_STREQ(list.Item(0), "a");
  EXPECT_STREQ(list[1], "b");
  EXPECT_EQ(list.Item(2), nullptr);
  std::string joined;
  EXPECT_TRUE(list.GetStringList(joined));
  EXPECT_EQ(joined, "a;b");
  EXPECT_FALSE(list.SetStringList(";x;"));
  EXPECT_EQ(list.Count(), 1u);
  EXPECT_TRUE(list.SetStringList(nullptr));
  EXPECT_EQ(list.Count(), 0u);
  EXPECT_TRUE(list.SetStringList("one;two;two"));
  EXPECT_EQ(list.Count(), 3u);  // duplicates allowed
}

TEST(KVStringList, AddRefusesSeparatorsAndEmptyTexts) {
  KVStringList list("x", ';');
  EXPECT_FALSE(list.Add("a;b"));
  EXPECT_FALSE(list.Add(""));
  EXPECT_FALSE(list.Add(nullptr));
  EXPECT_TRUE(list.Add("y"));
  EXPECT_EQ(list.Count(), 2u);
}

TEST(KVStringList, ChangedSeparatorSkipsItemsThatHoldIt) {
  KVStringList list("a,b;c;d", ';');
  EXPECT_EQ(list.SetSeparator(','), ';');
  EXPECT_EQ(list.SetSeparator('\0'), ',');  // NUL keeps the separator
  EXPECT_EQ(list.GetSeparator(), ',');
  std::string joined;
  list.GetStringList(joined);
  EXPECT_EQ(joined, "c,d");
}

TEST(KVStringList, FindsAndRemoves) {
  KVStringList list("Alpha|beta|alpha", '|');
  std::uint32_t index = 99;
  EXPECT_TRUE(list.GetStringPos("alpha", index, true));
  EXPECT_EQ(index, 2u);
  EXPECT_TRUE(list.GetStringPos("ALPHA", index, false));
  EXPECT_EQ(index, 0u);
  EXPECT_FALSE(list.HasString("BETA", true));
  EXPECT_TRUE(list.HasString("BETA", false));
  EXPECT_FALSE(list.HasString(nullptr, false));
  EXPECT_FALSE(list.RemoveString(3));
  EXPECT_TRUE(list.RemoveString(0));
  EXPECT_STREQ(list.Item(0), "beta");
  KVStringList copy(list);
  list.Clear();
  EXPECT_EQ(copy.Count(), 2u);
  EXPECT_EQ(copy.GetSeparator(), '|');
}

}  // namespace
