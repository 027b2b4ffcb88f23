// A fresh directory for one test, made the current directory while the test runs.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vex::test {

class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::string file(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
  std::filesystem::path previous_;
};

std::vector<char> ReadAll(const std::string& name);
inline std::string AsText(const std::vector<char>& bytes) { return std::string(bytes.begin(), bytes.end()); }

// The library's older entries take names as char*.
inline char* Name(const char* text) { return const_cast<char*>(text); }
void WriteAll(const std::string& name, const std::string& bytes);

}  // namespace vex::test
