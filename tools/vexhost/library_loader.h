// Loads the library at run time from the host's own folder and finds its entries by name.
#pragma once

#include <string>

namespace vexhost {

class Library {
 public:
  bool Load(std::string& error);
  void* Find(const char* name) const;
  const std::string& path() const { return path_; }

  template <class Function>
  Function Entry(const char* name) const {
    return reinterpret_cast<Function>(Find(name));
  }

 private:
  void* handle_ = nullptr;
  std::string path_;
};

}  // namespace vexhost
