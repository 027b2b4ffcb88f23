#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "vextools/tokenlist.h"
#include "vextools/types.h"

namespace {

using Image = std::vector<unsigned char>;

Image GetImage(VEXTOKENLIST& list) {
  Image image(static_cast<std::size_t>(list.GetSize()));
  EXPECT_EQ(list.Get(static_cast<std::int32_t>(image.size()), reinterpret_cast<char*>(image.data())),
            static_cast<std::int32_t>(image.size()));
  return image;
}

Image Header(std::uint32_t length, std::uint32_t count, std::uint16_t version = 1) {
  Image image(40, 0);
  for (int i = 0; i < 4; ++i) image[i] = static_cast<unsigned char>(length >> (8 * i));
  for (int i = 0; i < 4; ++i) image[4 + i] = static_cast<unsigned char>(count >> (8 * i));
  image[8] = static_cast<unsigned char>(version);
  image[9] = static_cast<unsigned char>(version >> 8);
  return image;
}

std::vector<std::int32_t> Types(VEXTOKENLIST& list) {
  std::vector<std::int32_t> types;
  for (std::int32_t id = list.GetFirstToken(0); id; id = list.GetNextToken(id, 0)) {
    std::int32_t type = 0;
    std::uint16_t size = 0;
    void* data = nullptr;
    list.GetTokenInfo(id, type, size, data);
    types.push_back(type);
  }
  return types;
}

}  // namespace

TEST(TokenList, ImageBytes) {
  VEXTOKENLIST list;
  EXPECT_EQ(GetImage(list), Header(40, 0));

  char abc[] = "abc";
  ASSERT_NE(list.AddToken(0, 0x01020304, 3, abc), 0);
  ASSERT_NE(list.AddToken(0, -2, 0, nullptr), 0);
  Image expected = Header(55, 2);
  for (int byte : std::initializer_list<int>{0x04, 0x03, 0x02, 0x01, 0x03, 0x00, 'a', 'b', 'c', 0xFE, 0xFF, 0xFF, 0xFF, 0x00, 0x00}) {
    expected.push_back(byte);
  }
  EXPECT_EQ(list.GetSize(), 55);
  EXPECT_EQ(GetImage(list), expected);

  HGLOBAL block = GlobalAlloc(GHND, 55);
  EXPECT_EQ(list.Get(39, block), 55);  // too small a size: nothing written
  EXPECT_EQ(static_cast<unsigned char*>(GlobalLock(block))[0], 0);
  GlobalUnlock(block);
  EXPECT_EQ(list.Get(55, block), 55);
  EXPECT_EQ(std::memcmp(GlobalLock(block), expected.data(), 55), 0);
  GlobalUnlock(block);

  VEXTOKENLIST copy;
  EXPECT_EQ(copy.Set(55, block), 55);
  EXPECT_EQ(GetImage(copy), expected);
  std::int32_t type;
  std::uint16_t size = 1;
  void* data = &type;
  ASSERT_EQ(copy.GetTokenInfo(copy.GetNextToken(copy.GetFirstToken(0), 0), type, size, data), 1);
  EXPECT_EQ(type, -2);
  EXPECT_EQ(size, 0);
  EXPECT_EQ(data, nullptr);
  GlobalFree(block);
}

TEST(TokenList, ShortBufferGetsThePrefixOfTheImage) {
  VEXTOKENLIST list;
  char data[100] = {};
  list.AddToken(0, 7, 100, data);
  std::vector<char> buffer(50, '#');
  buffer.push_back('!');
  EXPECT_EQ(list.Get(50, buffer.data()), 146);
  EXPECT_EQ(static_cast<unsigned char>(buffer[0]), 146);
  EXPECT_EQ(buffer[50], '!');
}

TEST(TokenList, SetKeepsWholeTokensThatFitAndNeverReadsPastTheBlock) {
  Image image = Header(999, 5);  // promises 5 tokens and a length it does not have
  for (int byte : std::initializer_list<int>{1, 0, 0, 0, 2, 0, 'x', 'y', 2, 0, 0, 0, 9, 0, 'z'}) image.push_back(byte);
  VEXTOKENLIST list;
  EXPECT_EQ(list.Set(static_cast<std::int32_t>(image.size()), reinterpret_cast<char*>(image.data())), 48);
  EXPECT_EQ(Types(list), (std::vector<std::int32_t>{1}));

  HGLOBAL block = GlobalAlloc(GHND, image.size());
  std::memcpy(GlobalLock(block), image.data(), image.size());
  GlobalUnlock(block);
  EXPECT_EQ(list.Set(100000, block), 48);  // the block bounds a size that claims more
  EXPECT_EQ(list.Set(-1, block), 48);      // a negative size passes the header test
  EXPECT_EQ(list.Set(39, block), 0);
  EXPECT_EQ(Types(list), (std::vector<std::int32_t>{1}));  // left alone

  static_cast<unsigned char*>(GlobalLock(block))[8] = 2;
  GlobalUnlock(block);
  EXPECT_EQ(list.Set(100, block), 0);
  EXPECT_TRUE(Types(list).empty());  // reset before the version was checked
  GlobalFree(block);

  Image empty = Header(40, 0);
  EXPECT_EQ(list.Set(40, reinterpret_cast<char*>(empty.data())), 40);
  EXPECT_EQ(list.Set(0, reinterpret_cast<char*>(empty.data())), 0);
}

TEST(TokenList, WalksFiltersAndRetrieval) {
  VEXTOKENLIST list;
  std::int32_t values[] = {10, 20, 30, 40};
  const std::int32_t a = list.AddToken(0, 1, 4, &values[0]);
  const std::int32_t b = list.AddToken(0, 2, 4, &values[1]);
  const std::int32_t c = list.AddToken(0, 1, 4, &values[2]);
  const std::int32_t d = list.AddToken(0, 2, 2, &values[3]);
  EXPECT_EQ(list.GetFirstToken(2), b);
  EXPECT_EQ(list.GetNextToken(a, 1), c);
  EXPECT_EQ(list.GetNextToken(a, 0), b);
  EXPECT_EQ(list.GetPreviousToken(d, 1), c);
  EXPECT_EQ(list.GetPreviousToken(a, 0), 0);
  EXPECT_EQ(list.RetrieveToken(0, 30), c);
  EXPECT_EQ(list.RetrieveToken(2, 30), 0);
  EXPECT_EQ(list.RetrieveToken(2, 40), 0);  // d holds only 2 bytes
  std::int16_t low = 40;
  EXPECT_EQ(list.RetrieveToken(2, &low, 2), d);

  EXPECT_EQ(list.RemoveToken(b), 1);
  EXPECT_EQ(list.RemoveToken(b), 0);
  EXPECT_EQ(list.GetNextToken(a, 0), c);
  VEXTOKENLIST other;
  EXPECT_EQ(other.RemoveToken(c), 0);  // another list's token
  EXPECT_EQ(other.AddToken(c, 5, 0, nullptr), 0);
  EXPECT_EQ(Types(list), (std::vector<std::int32_t>{1, 1, 2}));
}

TEST(TokenList, AddAndModifyLimits) {
  VEXTOKENLIST list;
  std::vector<char> big(65000, 'q');
  EXPECT_EQ(list.AddToken(0, 1, 65000, big.data()), 0);
  const std::int32_t id = list.AddToken(0, 1, 64999, big.data());
  ASSERT_NE(id, 0);
  EXPECT_EQ(list.AddToken(id, 3, 65000, big.data()), 0);
  char text[] = "hello";
  EXPECT_EQ(list.AddToken(id, 3, 5, text), id);
  std::int32_t type;
  std::uint16_t size;
  void* data;
  list.GetTokenInfo(id, type, size, data);
  EXPECT_EQ(type, 3);
  EXPECT_EQ(size, 5);
  EXPECT_EQ(std::memcmp(data, "hello", 5), 0);
  EXPECT_EQ(list.AddToken(id, 4, 3, static_cast<char*>(data) + 2), id);  // from its own buffer
  list.GetTokenInfo(id, type, size, data);
  EXPECT_EQ(std::memcmp(data, "llo", 3), 0);
  EXPECT_EQ(list.GetTokenInfo(0, type, size, data), 0);
}
