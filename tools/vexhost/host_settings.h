// The host's settings: an INI file of [sections] and key=value lines, names case-insensitive.
#pragma once

#include <map>
#include <optional>
#include <string>

namespace vexhost {

class Settings {
 public:
  bool Load(const std::string& path);
  bool Save() const;
  std::optional<std::string> Get(const std::string& section, const std::string& key) const;
  void Set(const std::string& section, const std::string& key, const std::string& value);
  const std::string& path() const { return path_; }

 private:
  struct NoCase {
    bool operator()(const std::string& a, const std::string& b) const;
  };
  using Section = std::map<std::string, std::string, NoCase>;
  std::map<std::string, Section, NoCase> sections_;
  std::string path_;
};

// The settings the host entries answer from.
Settings& HostSettings();

}  // namespace vexhost
