// Random operation sequences on a KARCACHEFILE: positions, sizes and cache IDs from the input, caller
// buffers always as large as the size given. Nothing may read or write outside a buffer.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "vextools/cachefile.h"

namespace {

class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}
  bool empty() const { return at_ >= size_; }
  std::uint8_t Byte() { return at_ < size_ ? data_[at_++] : 0; }
  // Mostly small values, sometimes extremes.
  std::int32_t Number(std::int32_t limit) {
    const std::uint8_t kind = Byte();
    const std::int32_t low = Byte() | (Byte() << 8);
    switch (kind % 16) {
      case 0: return -1;
      case 1: return -low;
      case 2: return INT32_MAX - low;
      case 3: return INT32_MIN + low;
      default: return low % (limit + 1);
    }
  }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
  std::size_t at_ = 0;
};

constexpr std::int32_t kBuffer = 8192;

std::int32_t Size(Input& in) {
  const std::int32_t n = in.Number(kBuffer);
  return n > kBuffer ? kBuffer : n;  // the caller's buffer holds what it asks for
}

std::int32_t CacheSize(Input& in) {
  const std::int32_t n = in.Number(300);
  return n > 5000 ? 300 : n;  // no huge allocations; negative sizes stay
}

std::int32_t Position(Input& in) { return in.Number(20000); }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string name =
      (std::filesystem::temp_directory_path() / ("vex_fuzz_cache_" + std::to_string(reinterpret_cast<std::uintptr_t>(&size) & 0xFFFFFF) + ".bin")).string();
  Input in(data, size);
  std::vector<char> buffer(kBuffer, 'x');
  {
    KARCACHEFILE file;
    std::vector<char> path(name.begin(), name.end());
    path.push_back('\0');
    file.Open(path.data(), 0x1002, CacheSize(in), CacheSize(in));
    for (int steps = 0; steps < 200 && !in.empty(); ++steps) {
      switch (in.Byte() % 20) {
        case 0: file.WriteData(buffer.data(), Size(in), Position(in)); break;
        case 1: file.WriteDirect(buffer.data(), Size(in), Position(in)); break;
        case 2: file.ReadData(buffer.data(), Size(in), Position(in)); break;
        case 3: file.ReadDirect(buffer.data(), Size(in), Position(in)); break;
        case 4: file.ReadAvailable(buffer.data(), Size(in), Position(in)); break;
        case 5: {
          const std::int32_t n = Size(in);
          if (char* p = file.BringData(n, Position(in))) *p ^= 1;
          break;
        }
        case 6: file.FlushFile(); break;
        case 7: file.CreateNewCache(in.Byte() % 8 == 0 ? -1 : CacheSize(in), nullptr); break;
        case 8: file.DestroyCache(static_cast<std::int16_t>(in.Byte() % 10 - 2)); break;
        case 9: file.ResetCache(static_cast<std::int16_t>(in.Byte() % 10 - 2)); break;
        case 10: file.SetReadCache(static_cast<std::int16_t>(in.Byte() % 10 - 2)); break;
        case 11: file.SetNextReadPos(Position(in)); break;
        case 12: file.SetNextWritePos(Position(in)); break;
        case 13: file.JumpReadSize(Position(in)); break;
        case 14: file.ReOpen(static_cast<unsigned short>(in.Byte() % 4)); break;
        case 15: file.Close(in.Byte() & 1); break;
        case 16: file.Open(path.data(), static_cast<unsigned short>(in.Byte() % 4), CacheSize(in), CacheSize(in)); break;
        case 17: {
          tagFILECACHE* cache = file.CacheFromID(static_cast<std::int16_t>(in.Byte() % 10 - 2));
          file.UpdateCache(cache, buffer.data(), Size(in), Position(in));
          break;
        }
        case 18: {
          tagFILECACHE* cache = file.CacheFromID(static_cast<std::int16_t>(in.Byte() % 10 - 2));
          file.ReadFromCache(cache, buffer.data(), Size(in), Position(in));
          break;
        }
        default: file.SetPosition(Position(in), static_cast<unsigned short>(in.Byte() % 4)); break;
      }
    }
  }
  std::error_code ignored;
  std::filesystem::remove(name, ignored);
  return 0;
}
