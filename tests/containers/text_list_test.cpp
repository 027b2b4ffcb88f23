#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "vextools/textlist.h"
#include "vextools/types.h"

namespace {

std::vector<std::string> Items(TEXTLIST& list) {
  std::vector<std::string> items;
  for (VEXTNODE<char*>* node = list.FindFirstNode(); node; node = list.FindNextNode(node)) {
    items.emplace_back(list.GetNodeValue(node) ? list.GetNodeValue(node) : "<null>");
  }
  return items;
}

std::int32_t Add(TEXTLIST& list, const char* text) {
  char* item = const_cast<char*>(text);
  return list.AddItem(item);
}

std::string Bytes(const char* data, std::size_t size) {
  return std::string(data, size);
}

}  // namespace

TEST(TextList, IdentifiersGrowAcrossResetAndUniqueFlagReturnsTheFirst) {
  TEXTLIST list;
  EXPECT_EQ(Add(list, "b"), 1);
  EXPECT_EQ(Add(list, "a"), 2);
  EXPECT_EQ(Add(list, "b"), 3);  // not unique yet
  list.SetFlags(VEXTLIST_UNIQUE);
  EXPECT_EQ(Add(list, "a"), 2);
  EXPECT_EQ(Add(list, "A"), 4);  // case counts
  EXPECT_EQ(Items(list), (std::vector<std::string>{"b", "a", "b", "A"}));
  list.Reset();
  EXPECT_EQ(list.GetFirstItem(), 0);
  EXPECT_EQ(Add(list, "c"), 5);  // identifiers are never rewound
}

TEST(TextList, InsertRemoveAndLookups) {
  TEXTLIST list;
  const std::int32_t b = Add(list, "b");
  char* a = const_cast<char*>("a");
  const std::int32_t first = list.InsertItemBefore(a, b);
  EXPECT_EQ(list.FindFirstNode()->id, static_cast<std::uint32_t>(first));
  char* c = const_cast<char*>("c");
  const std::int32_t last = list.InsertItemAfter(c, b);
  EXPECT_EQ(list.FindLastNode()->id, static_cast<std::uint32_t>(last));
  EXPECT_EQ(list.InsertItemAfter(c, 999), 0);
  EXPECT_EQ(Items(list), (std::vector<std::string>{"a", "b", "c"}));
  EXPECT_STREQ(*list.GetItemFromPos(2), "c");
  EXPECT_EQ(list.GetItemFromPos(3), nullptr);
  EXPECT_EQ(list.GetNextItem(first), b);
  EXPECT_EQ(list.GetNextItem(last), 0);
  EXPECT_EQ(list.RemoveItem(b), 1);
  EXPECT_EQ(list.RemoveItem(b), 0);
  EXPECT_EQ(list.GetItemFromID(b), nullptr);
  EXPECT_EQ(Items(list), (std::vector<std::string>{"a", "c"}));
  EXPECT_EQ(list.FindPrevNode(list.FindLastNode()), list.FindFirstNode());
}

TEST(TextList, PointerListComparesAddressesAndOwnsNothing) {
  VEXTLIST<char*> list;
  char text[] = "same";
  char copy[] = "same";
  char* p = text;
  char* q = copy;
  list.SetFlags(VEXTLIST_UNIQUE);
  const std::int32_t id = list.AddItem(p);
  EXPECT_NE(list.AddItem(q), id);  // equal texts, different pointers
  EXPECT_EQ(list.AddItem(p), id);
  EXPECT_EQ(*list.GetItemFromID(id), text);
}

TEST(TextList, PlainFormatBytesAndRoundTrip) {
  TEXTLIST list;
  Add(list, "ab");
  Add(list, "");
  Add(list, nullptr);  // a null item is kept but not written
  Add(list, "c");
  ASSERT_EQ(list.Encod(static_cast<char*>(nullptr), 1), 6);
  char buffer[6];
  ASSERT_EQ(list.Encod(buffer, 1), 6);
  EXPECT_EQ(Bytes(buffer, 6), Bytes("ab\0\0c\0", 6));

  TEXTLIST decoded;
  EXPECT_EQ(decoded.Decod(buffer, 6, 1), 3);  // the last identifier
  EXPECT_EQ(Items(decoded), (std::vector<std::string>{"ab", "", "c"}));
  EXPECT_EQ(decoded.Decod(buffer, 0, 1), 1);
  EXPECT_TRUE(Items(decoded).empty());
  EXPECT_EQ(decoded.Decod(buffer, 6, 3), 0);
  EXPECT_EQ(decoded.Encod(buffer, 7), 0);
}

TEST(TextList, PlainFormatStopsAtSizeAndHonoursUniqueFlag) {
  char buffer[] = {'x', 0, 'x', 0, 'y', 'z'};  // the last item has no 0 byte within the size
  TEXTLIST list;
  list.SetFlags(VEXTLIST_UNIQUE);
  list.Decod(buffer, 6, 1);
  EXPECT_EQ(Items(list), (std::vector<std::string>{"x", "yz"}));
}

TEST(TextList, QuotedFormatBytesAndDecoding) {
  TEXTLIST list;
  Add(list, "ab");
  Add(list, "c");
  char buffer[16];
  std::memset(buffer, '#', sizeof buffer);
  ASSERT_EQ(list.Encod(buffer, 2), 9);
  EXPECT_EQ(Bytes(buffer, 10), Bytes("\"ab\";\"c\"\0#", 10));

  TEXTLIST decoded;
  EXPECT_EQ(decoded.Decod(buffer, 0, 2), 0);  // success shows in the contents only
  EXPECT_EQ(Items(decoded), (std::vector<std::string>{"ab", "c"}));
  EXPECT_EQ(Bytes(buffer, 9), Bytes("\"ab\";\"c\"\0", 9));  // restored

  char embedded[] = "junk\"a\"b\";\"\";\"c";  // inner quotes stay; an item without a closing quote is lost
  decoded.Decod(embedded, 0, 2);
  EXPECT_EQ(Items(decoded), (std::vector<std::string>{"a\"b", ""}));
  char none[] = "no quote here";
  EXPECT_EQ(decoded.Decod(none, 0, 2), 0);
  EXPECT_TRUE(Items(decoded).empty());
}

TEST(TextList, HandleFormsStayInsideTheBlock) {
  TEXTLIST list;
  Add(list, "abc");
  Add(list, "d");
  HGLOBAL small = GlobalAlloc(GHND, 8);
  EXPECT_EQ(list.Encod(small, 2), 0);  // 10 bytes needed
  HGLOBAL block = GlobalAlloc(GHND, 10);
  EXPECT_EQ(list.Encod(block, 2), 10);
  EXPECT_EQ(list.Encod(static_cast<void*>(nullptr), 1), 6);

  TEXTLIST decoded;
  decoded.Decod(block, 10, 2);
  EXPECT_EQ(Items(decoded), (std::vector<std::string>{"abc", "d"}));

  std::memcpy(GlobalLock(small), "\"abcdefg", 8);  // no 0 byte and no closing quote in the block
  GlobalUnlock(small);
  decoded.Decod(small, 0, 2);
  EXPECT_TRUE(Items(decoded).empty());
  std::memcpy(GlobalLock(small), "ab\0cdefg", 8);
  GlobalUnlock(small);
  decoded.Decod(small, 1000, 1);  // the block, not the size, bounds the reading
  EXPECT_EQ(Items(decoded), (std::vector<std::string>{"ab", "cdefg"}));
  GlobalFree(small);
  GlobalFree(block);
}
