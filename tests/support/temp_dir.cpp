#include "support/temp_dir.h"

#include <atomic>
#include <chrono>
#include <fstream>
#include <iterator>

namespace vex::test {

TempDir::TempDir() : previous_(std::filesystem::current_path()) {
  static std::atomic<unsigned> counter{0};
  const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
  path_ = std::filesystem::temp_directory_path() /
          ("vextools-test-" + std::to_string(stamp) + "-" + std::to_string(counter++));
  std::filesystem::create_directories(path_);
  std::filesystem::current_path(path_);
}

TempDir::~TempDir() {
  std::error_code ignored;
  std::filesystem::current_path(previous_, ignored);
  std::filesystem::remove_all(path_, ignored);
}

std::vector<char> ReadAll(const std::string& name) {
  std::ifstream in(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void WriteAll(const std::string& name, const std::string& bytes) {
  std::ofstream out(name, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace vex::test
