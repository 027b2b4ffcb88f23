#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "support/temp_dir.h"
#include "vextools/cachefile.h"

using vex::test::AsText;
using vex::test::Name;
using vex::test::ReadAll;
using vex::test::TempDir;
using vex::test::WriteAll;

namespace {

std::string Pattern(std::size_t n, char base = 'a') {
  std::string s(n, '\0');
  for (std::size_t i = 0; i < n; ++i) s[i] = static_cast<char>(base + (i * 7 + i / 26) % 26);
  return s;
}

// What the file itself holds, read through the open object's own handle (on Windows the file is not
// shared for reading while it is open).
std::string OnDisk(KARCACHEFILE& file) {
  std::string bytes(1000, '\0');
  const std::int32_t got = file.KARBASICFILE::ReadDirect(bytes.data(), 1000, 0);
  return bytes.substr(0, got < 0 ? 0 : static_cast<std::size_t>(got));
}

class ProbeCache : public KARCACHEFILE {
 public:
  std::uint32_t Access() const { return static_cast<std::uint32_t>(access_mode_); }
  tagFILECACHE& Write() { return write_cache_; }
  tagFILECACHE* Read() { return CurrentReadCache(); }
};

constexpr unsigned short kCreateReadWrite = 0x1002;

}  // namespace

TEST(CacheFile, ExtraCacheIdsAreNeverReused) {
  KARCACHEFILE file;
  EXPECT_EQ(file.CreateNewCache(-1, nullptr), 1);
  EXPECT_EQ(file.CacheFromID(1)->size, 64000);
  char buffer[16];
  EXPECT_EQ(file.CreateNewCache(16, buffer), 2);
  EXPECT_EQ(file.CacheFromID(2)->data, buffer);
  EXPECT_EQ(file.CacheFromID(2)->memory, nullptr);
  EXPECT_EQ(file.CreateNewCache(0, nullptr), 3);
  EXPECT_EQ(file.CacheFromID(3)->data, nullptr);

  file.DestroyCache(1);
  EXPECT_EQ(file.CacheIndexFromID(1), 0);
  EXPECT_EQ(file.CacheIndexFromID(3), 1);  // the last record fills the hole
  EXPECT_EQ(file.CacheIndexFromID(2), 2);
  EXPECT_EQ(file.CacheFromID(1), nullptr);
  EXPECT_EQ(file.CacheFromIndex(1), file.CacheFromID(3));
  EXPECT_EQ(file.CacheFromIndex(3), nullptr);
  EXPECT_EQ(file.CacheFromID(0), file.CacheFromIndex(0));  // the default read cache
  EXPECT_EQ(file.CacheFromID(-4), file.CacheFromIndex(0));
  EXPECT_EQ(file.CreateNewCache(8, nullptr), 4);

  file.DestroyCache(2);
  file.DestroyCache(3);
  file.DestroyCache(4);
  file.DestroyCache(4);
  file.DestroyCache(0);
  EXPECT_EQ(file.CreateNewCache(8, nullptr), 5);
  file.ResetCache(5);
  EXPECT_EQ(file.CacheFromID(5)->size, 0);
}

TEST(CacheFile, IdsRunOutInsteadOfTurningNegative) {
  KARCACHEFILE file;
  for (int i = 1; i < INT16_MAX; ++i) file.DestroyCache(file.CreateNewCache(0, nullptr));
  EXPECT_EQ(file.CreateNewCache(0, nullptr), INT16_MAX);
  EXPECT_EQ(file.CreateNewCache(0, nullptr), 0);
}

TEST(CacheFile, CacheRangesIncludeTheirEnd) {
  KARCACHEFILE file;
  char data[100];
  tagFILECACHE cache{7, nullptr, data, 100, 0, 40, 0};
  EXPECT_FALSE(file.IsPosInUsedCache(&cache, 40));
  EXPECT_EQ(file.AvailableInCache(&cache, 40), 0);
  EXPECT_FALSE(file.IsDataIntersectCache(&cache, 10, 35));
  cache.used = 20;
  EXPECT_FALSE(file.IsPosInUsedCache(&cache, 39));
  EXPECT_TRUE(file.IsPosInUsedCache(&cache, 60));
  EXPECT_FALSE(file.IsPosInUsedCache(&cache, 61));
  EXPECT_TRUE(file.IsPosInCache(&cache, 140));
  EXPECT_FALSE(file.IsPosInCache(&cache, 141));
  EXPECT_TRUE(file.IsDataInCache(&cache, 20, 40));
  EXPECT_FALSE(file.IsDataInCache(&cache, 21, 40));
  EXPECT_TRUE(file.IsDataIntersectCache(&cache, 1, 59));
  EXPECT_FALSE(file.IsDataIntersectCache(&cache, 5, 35));
  EXPECT_TRUE(file.IsDataIntersectCache(&cache, 6, 35));
  EXPECT_FALSE(file.IsDataIntersectCache(&cache, 5, 60));
  EXPECT_EQ(file.OffsetInCache(&cache, 45), 5);
  EXPECT_EQ(file.CachePointer(&cache, 45), data + 5);
  EXPECT_EQ(file.AvailableInCache(&cache, 45), 15);
  EXPECT_FALSE(file.IsPosInUsedCache(nullptr, 0));
  EXPECT_EQ(file.ReadFromCache(nullptr, data, 1, 0), 0);
  file.InvalidateCache(&cache);
  EXPECT_EQ(cache.used, 0);
  EXPECT_EQ(cache.start, 0);
}

TEST(CacheFile, UpdateCacheMeasuresTheEndAsAPosition) {
  KARCACHEFILE file;
  char data[100] = {};
  char block[] = "0123456789";
  tagFILECACHE at0{1, nullptr, data, 100, 10, 0, 0};
  EXPECT_EQ(file.UpdateCache(&at0, block, 10, 5), 10);
  EXPECT_EQ(at0.used, 15);  // exact for a cache at 0
  EXPECT_EQ(std::string(data + 5, 10), "0123456789");

  tagFILECACHE at50{1, nullptr, data, 100, 10, 50, 0};
  EXPECT_EQ(file.UpdateCache(&at50, block, 5, 55), 5);
  EXPECT_EQ(at50.used, 60);  // 50 + 5 + 5: a position mixed into a length, as callers expect
  tagFILECACHE small{1, nullptr, data, 20, 10, 50, 0};
  EXPECT_EQ(file.UpdateCache(&small, block, 5, 55), 5);
  EXPECT_EQ(small.used, 20);  // but never more than the buffer holds

  // A block starting before the cache fills it from its first byte; one past the used end is ignored.
  tagFILECACHE later{1, nullptr, data, 4, 4, 100, 0};
  EXPECT_EQ(file.UpdateCache(&later, block, 10, 97), 4);
  EXPECT_EQ(std::string(data, 4), "3456");
  EXPECT_EQ(file.UpdateCache(&later, block, 10, 105), 0);
  EXPECT_EQ(file.UpdateCache(&later, block, 3, 90), 0);

  tagFILECACHE empty{1, nullptr, data, 100, 0, 0, 0};
  EXPECT_EQ(file.UpdateCache(&empty, block, 3, 30), 3);
  EXPECT_EQ(empty.start, 30);
  EXPECT_EQ(empty.next_position, 30);
  EXPECT_EQ(empty.used, 33);
}

TEST(CacheFile, OpenOverwritesTheAccessWordForZeroSizes) {
  TempDir dir;
  WriteAll("a.bin", "0123456789");
  ProbeCache file;
  EXPECT_EQ(file.Open(Name("a.bin"), 0, 0, 0), 0);
  EXPECT_EQ(file.Access(), 0xFFFFFDFFu);  // both overwrites happen
  EXPECT_EQ(file.Open(Name("a.bin"), 0, 100, 100), 0);
  EXPECT_EQ(file.Access(), 0x101u);
  EXPECT_EQ(file.Write().size, 0);  // no write access, no write cache
  EXPECT_EQ(file.Open(Name("a.bin"), 1, 100, 0), 0);
  EXPECT_EQ(file.Access(), 0xFFFFFDFFu);
  EXPECT_EQ(file.Open(Name("a.bin"), 2, 100, 50), 0);
  EXPECT_EQ(file.Access(), 0x303u);
  EXPECT_EQ(file.Write().size, 50);
  EXPECT_EQ(file.Read()->size, 100);

  EXPECT_EQ(file.Open(Name("a.bin"), 2, -5, 50), -14);
  EXPECT_TRUE(file.IsFileOpened());
  EXPECT_EQ(file.Read()->size, 0);

  file.Close(0);
  EXPECT_EQ(file.ReOpen(2), 0);  // the caching bits come back whatever the sizes
  EXPECT_EQ(file.Access(), 0x303u);
  EXPECT_EQ(file.Open(Name("missing.bin"), 0, 10, 10), -9);
}

TEST(CacheFile, CachedWriteStaysInMemoryUntilFlushed) {
  TempDir dir;
  ProbeCache file;
  ASSERT_EQ(file.Open(Name("a.bin"), kCreateReadWrite, 100, 100), 0);
  EXPECT_EQ(file.WriteData(Name("0123456789"), 10, 0), 10);
  EXPECT_EQ(file.GetPhysicalLength(), 0);
  EXPECT_EQ(file.FileLength(), 10);
  EXPECT_EQ(OnDisk(file), "");
  EXPECT_TRUE(file.Access() & KARCACHE_WRITE_PENDING);

  char buffer[10] = {};
  EXPECT_EQ(file.ReadData(buffer, 10, 0), 10);  // from the read cache, which the write updated
  EXPECT_EQ(std::string(buffer, 10), "0123456789");
  EXPECT_EQ(file.GetNextReadPos(), 10);
  EXPECT_EQ(file.ReadData(buffer, 1, 10), 0);  // at the logical end

  file.FlushFile();
  EXPECT_FALSE(file.Access() & KARCACHE_WRITE_PENDING);
  EXPECT_EQ(OnDisk(file), "0123456789");
  EXPECT_EQ(file.Write().used, 10);  // flushing keeps the content
  EXPECT_EQ(file.GetPhysicalLength(), 10);
}

TEST(CacheFile, BlockLargerThanTheRoomFlushesOnceAndKeepsTheTail) {
  TempDir dir;
  ProbeCache file;
  ASSERT_EQ(file.Open(Name("a.bin"), kCreateReadWrite, 0, 100), 0);
  const std::string data = Pattern(120);
  EXPECT_EQ(file.WriteData(const_cast<char*>(data.data()), 60, 0), 60);
  EXPECT_EQ(file.WriteData(const_cast<char*>(data.data()) + 60, 60, -1), 60);  // at the next write position
  EXPECT_EQ(OnDisk(file), data.substr(0, 100));
  EXPECT_EQ(file.Write().start, 100);
  EXPECT_EQ(file.Write().used, 20);
  EXPECT_EQ(file.GetNextWritePos(), 120);
  EXPECT_EQ(file.FileLength(), 120);

  // A block larger than the whole cache: the cache keeps its last bytes, the rest goes to the file.
  const std::string big = Pattern(250, 'A');
  EXPECT_EQ(file.WriteData(const_cast<char*>(big.data()), 250, 120), 250);
  EXPECT_EQ(file.Write().start, 270);
  EXPECT_EQ(file.Write().used, 100);
  file.Close(1);
  EXPECT_EQ(AsText(ReadAll("a.bin")), data + big);
}

TEST(CacheFile, WritePastTheCachedBytesNeverWritesTheGap) {
  TempDir dir;
  WriteAll("a.bin", std::string(100, '.'));
  KARCACHEFILE file;
  ASSERT_EQ(file.Open(Name("a.bin"), 2, 50, 50), 0);
  file.WriteData(Name("ab"), 2, 0);
  file.WriteData(Name("cd"), 2, 20);  // inside the cache's range, past its used bytes
  file.Close(1);
  EXPECT_EQ(AsText(ReadAll("a.bin")), "ab" + std::string(18, '.') + "cd" + std::string(78, '.'));
}

TEST(CacheFile, WriteDirectWithoutWriteCacheAppends) {
  TempDir dir;
  WriteAll("a.bin", "0123456789");
  KARCACHEFILE file;
  ASSERT_EQ(file.Open(Name("a.bin"), 2, 100, 0), 0);
  EXPECT_EQ(file.WriteDirect(Name("abc"), 3, 2), 0);
  EXPECT_EQ(file.WriteData(Name("XY"), 2, 0), 0);  // no write cache: the same append
  EXPECT_EQ(file.FileLength(), 15);
  file.Close(1);
  EXPECT_EQ(AsText(ReadAll("a.bin")), "0123456789abcXY");
}

TEST(CacheFile, WriteDirectWithWriteCacheWritesInPlace) {
  TempDir dir;
  WriteAll("a.bin", "0123456789");
  KARCACHEFILE file;
  ASSERT_EQ(file.Open(Name("a.bin"), 2, 100, 100), 0);
  EXPECT_EQ(file.WriteData(Name("abcd"), 4, 0), 4);
  EXPECT_EQ(file.WriteDirect(Name("XY"), 2, 2), 0);  // updates the write cache, written at once
  EXPECT_EQ(OnDisk(file), "01XY456789");
  char buffer[6] = {};
  EXPECT_EQ(file.ReadDirect(buffer, 6, 0), 6);
  EXPECT_EQ(std::string(buffer, 6), "abXY45");
  file.Close(1);
  EXPECT_EQ(AsText(ReadAll("a.bin")), "abXY456789");
}

TEST(CacheFile, ReadDirectMergesCachesAndFile) {
  TempDir dir;
  const std::string data = Pattern(300);
  WriteAll("a.bin", data);
  ProbeCache file;
  ASSERT_EQ(file.Open(Name("a.bin"), 2, 100, 100), 0);
  char buffer[200];
  EXPECT_EQ(file.ReadData(buffer, 10, 150), 10);  // the read cache now holds 150..250
  EXPECT_EQ(file.Read()->start, 150);
  EXPECT_EQ(file.WriteData(Name("WWWWW"), 5, 20), 5);

  // Write cache first (20..25), read cache second: the file piece between them lands at the start of
  // the buffer, over what the write cache gave; callers rely on this placement.
  std::memset(buffer, '#', sizeof buffer);
  EXPECT_EQ(file.ReadDirect(buffer, 200, 22), 200);
  EXPECT_EQ(std::string(buffer, 125), data.substr(25, 125));
  EXPECT_EQ(std::string(buffer + 125, 3), "###");
  EXPECT_EQ(std::string(buffer + 128, 72), data.substr(150, 72));

  // Ending inside the write cache: the file, then the cached bytes.
  std::memset(buffer, '#', sizeof buffer);
  EXPECT_EQ(file.ReadDirect(buffer, 5, 18), 5);
  EXPECT_EQ(std::string(buffer, 5), data.substr(18, 2) + "WWW");
}

TEST(CacheFile, ExtraReadCaches) {
  TempDir dir;
  const std::string data = Pattern(1000);
  WriteAll("a.bin", data);
  ProbeCache file;
  ASSERT_EQ(file.Open(Name("a.bin"), 0, 100, 0), 0);
  const std::int16_t index = file.CreateNewCache(50, nullptr);
  const std::int16_t records = file.CreateNewCache(50, nullptr);
  char buffer[20] = {};
  EXPECT_EQ(file.ReadData(buffer, 20, 0), 20);
  file.SetReadCache(records);
  EXPECT_EQ(file.ReadData(buffer, 20, 600), 20);
  EXPECT_EQ(std::string(buffer, 20), data.substr(600, 20));
  EXPECT_EQ(file.CacheFromID(records)->start, 600);
  EXPECT_EQ(file.CacheFromID(0)->start, 0);  // the default cache kept its region

  // BringData hands out the cache itself once a whole cache's worth is present.
  tagFILECACHE* cache = file.CacheFromID(records);
  EXPECT_EQ(file.BringData(5, 600), cache->data);
  EXPECT_EQ(file.BringData(5, 700), cache->data);
  EXPECT_EQ(std::string(cache->data, 50), data.substr(700, 50));
  EXPECT_EQ(file.BringData(1, 701), cache->data);  // one byte short of a whole cache: refilled
  EXPECT_EQ(cache->start, 701);
  EXPECT_EQ(file.SetNextReadPos(5), 701);
  EXPECT_EQ(file.JumpReadSize(10), 5);
  EXPECT_EQ(file.GetNextReadPos(), 15);

  std::memset(buffer, 0, sizeof buffer);
  EXPECT_EQ(file.ReadAvailable(buffer, 20, 741), 10);
  EXPECT_EQ(std::string(buffer, 10), data.substr(741, 10));

  // The current index survives destroying a cache below it; past the live caches the default serves.
  file.SetCurrentCache(records);
  file.DestroyCache(index);
  EXPECT_EQ(file.CacheIndexFromID(records), 1);
  EXPECT_EQ(file.Read(), file.CacheFromID(0));
  EXPECT_EQ(file.ReadData(buffer, 20, 300), 20);
  EXPECT_EQ(std::string(buffer, 20), data.substr(300, 20));
  file.SetWriteCache(records);  // recorded, no effect
  file.SetCurrentCache(99);
  EXPECT_EQ(file.Read(), file.CacheFromID(0));

  // Close(0) keeps the extra caches, Close(1) frees them; the IDs go on.
  file.Close(0);
  EXPECT_NE(file.CacheFromID(records), nullptr);
  EXPECT_EQ(file.ReadData(buffer, 1, 0), 0);
  ASSERT_EQ(file.Open(Name("a.bin"), 0, 100, 0), 0);
  file.Close(1);
  EXPECT_EQ(file.CacheFromID(records), nullptr);
  EXPECT_EQ(file.CreateNewCache(10, nullptr), 3);
}

TEST(CacheFile, ReadsNeedReadAccessAndAnOpenFile) {
  TempDir dir;
  WriteAll("a.bin", "0123456789");
  KARCACHEFILE file;
  char buffer[4];
  EXPECT_EQ(file.ReadData(buffer, 4, 0), 0);
  EXPECT_EQ(file.WriteData(buffer, 4, 0), 0);
  EXPECT_EQ(file.WriteDirect(buffer, 4, 0), 0);
  EXPECT_EQ(file.ReadAvailable(buffer, 4, 0), 0);
  ASSERT_EQ(file.Open(Name("a.bin"), 1, 100, 100), 0);
  EXPECT_EQ(file.ReadData(buffer, 4, 0), 0);
  EXPECT_EQ(file.ReadAvailable(buffer, 4, 0), 0);
  EXPECT_EQ(file.WriteData(nullptr, 4, 0), 0);
  EXPECT_EQ(file.WriteData(buffer, -4, 0), 0);
  EXPECT_EQ(file.Close(1), -3);
  EXPECT_EQ(AsText(ReadAll("a.bin")), "0123456789");
}

TEST(CacheFile, ReOpenDropsCachedContent) {
  TempDir dir;
  WriteAll("a.bin", "0123456789");
  ProbeCache file;
  ASSERT_EQ(file.Open(Name("a.bin"), 2, 20, 20), 0);
  char buffer[4];
  EXPECT_EQ(file.ReadData(buffer, 4, 0), 4);
  const std::int16_t extra = file.CreateNewCache(8, nullptr);
  file.SetReadCache(extra);
  EXPECT_EQ(file.ReadData(buffer, 4, 4), 4);
  EXPECT_EQ(file.ReOpen(2), 0);
  EXPECT_EQ(file.CacheFromID(0)->used, 0);
  EXPECT_EQ(file.CacheFromID(extra)->used, 0);
  EXPECT_EQ(file.Write().used, 0);
  EXPECT_EQ(file.FileLength(), 10);
}

TEST(CacheFile, CopiesDoNotFreeTheOriginalsBuffers) {
  TempDir dir;
  WriteAll("a.bin", "0123456789");
  KARCACHEFILE file;
  ASSERT_EQ(file.Open(Name("a.bin"), 0, 16, 0), 0);
  file.CreateNewCache(8, nullptr);
  char buffer[4];
  {
    KARCACHEFILE copy(file);
    EXPECT_EQ(copy.ReadData(buffer, 4, 0), 4);
    KARCACHEFILE other;
    other = copy;
  }
  // The copies closed the shared file; the original's caches are intact.
  EXPECT_EQ(file.CacheFromID(1)->size, 8);
  ASSERT_EQ(file.ReOpen(0), 0);
  EXPECT_EQ(file.ReadData(buffer, 4, 6), 4);
  EXPECT_EQ(std::string(buffer, 4), "6789");
}

// Random cached writes and reads against a plain in-memory copy of the file. Small caches so that
// cache boundaries are crossed all the time. Writes stay within or at the end of the data, and reads
// within it, which is where the caches are exact.
class CacheModel : public testing::TestWithParam<unsigned> {};

TEST_P(CacheModel, MatchesAPlainFile) {
  TempDir dir;
  std::mt19937 random(GetParam());
  auto draw = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(random); };
  const int readSize = draw(7, 40), writeSize = draw(5, 40);
  std::string model = Pattern(static_cast<std::size_t>(draw(0, 200)), 'A');
  WriteAll("m.bin", model);
  KARCACHEFILE file;
  ASSERT_EQ(file.Open(Name("m.bin"), 2, readSize, writeSize), 0);
  std::vector<char> buffer(200);
  if (!model.empty()) {
    ASSERT_EQ(file.ReadData(buffer.data(), 1, 0), 1);  // the read cache starts at 0
  }
  for (int step = 0; step < 600; ++step) {
    const int length = static_cast<int>(model.size());
    const int op = draw(0, 9);
    if (op < 5) {
      const int n = draw(0, 60);
      std::string block = Pattern(static_cast<std::size_t>(n), static_cast<char>('a' + step % 20));
      int at = draw(0, length);
      const bool next = draw(0, 3) == 0 && file.GetNextWritePos() <= length;
      if (next) at = file.GetNextWritePos();
      ASSERT_EQ(file.WriteData(block.data(), n, next ? -1 : at), n);
      if (model.size() < static_cast<std::size_t>(at + n)) model.resize(static_cast<std::size_t>(at + n));
      model.replace(static_cast<std::size_t>(at), static_cast<std::size_t>(n), block);
    } else if (op < 9 && length > 0) {
      int at = draw(0, length - 1);
      const int n = draw(1, std::min(60, length - at));
      const int next = file.GetNextReadPos();
      const bool useNext = draw(0, 3) == 0 && next >= 0 && next + n <= length;
      if (useNext) at = next;
      const int got = file.ReadData(buffer.data(), n, useNext ? -1 : at);
      ASSERT_GE(got, 1) << "step " << step;
      ASSERT_LE(got, n);
      if (n <= readSize) {
        ASSERT_EQ(got, n) << "step " << step;
      }
      ASSERT_EQ(std::string(buffer.data(), static_cast<std::size_t>(got)),
                model.substr(static_cast<std::size_t>(at), static_cast<std::size_t>(got)))
          << "step " << step << " at " << at;
    } else {
      file.FlushFile();
    }
    ASSERT_EQ(file.FileLength(), static_cast<std::int32_t>(model.size()));
  }
  file.Close(1);
  EXPECT_EQ(AsText(ReadAll("m.bin")), model);
}

INSTANTIATE_TEST_SUITE_P(Seeds, CacheModel, testing::Range(1u, 41u));
