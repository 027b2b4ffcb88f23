#include "host_settings.h"

#include <algorithm>
#include <cctype>
#include <fstream>

namespace vexhost {
namespace {

std::string Trim(const std::string& text) {
  const auto first = text.find_first_not_of(" \t\r\n");
  if (first == std::string::npos) return {};
  const auto last = text.find_last_not_of(" \t\r\n");
  return text.substr(first, last - first + 1);
}

}  // namespace

bool Settings::NoCase::operator()(const std::string& a, const std::string& b) const {
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
    return std::tolower(static_cast<unsigned char>(x)) < std::tolower(static_cast<unsigned char>(y));
  });
}

bool Settings::Load(const std::string& path) {
  path_ = path;
  sections_.clear();
  std::ifstream in(path);
  if (!in) return false;
  std::string line, section;
  while (std::getline(in, line)) {
    line = Trim(line);
    if (line.empty() || line[0] == ';' || line[0] == '#') continue;
    if (line.front() == '[' && line.back() == ']') {
      section = Trim(line.substr(1, line.size() - 2));
      continue;
    }
    const auto equals = line.find('=');
    if (equals != std::string::npos) sections_[section][Trim(line.substr(0, equals))] = Trim(line.substr(equals + 1));
  }
  return true;
}

bool Settings::Save() const {
  if (path_.empty()) return false;
  std::ofstream out(path_, std::ios::trunc);
  for (const auto& [name, keys] : sections_) {
    out << '[' << name << "]\n";
    for (const auto& [key, value] : keys) out << key << '=' << value << '\n';
    out << '\n';
  }
  return static_cast<bool>(out);
}

std::optional<std::string> Settings::Get(const std::string& section, const std::string& key) const {
  const auto s = sections_.find(section);
  if (s == sections_.end()) return std::nullopt;
  const auto k = s->second.find(key);
  if (k == s->second.end()) return std::nullopt;
  return k->second;
}

void Settings::Set(const std::string& section, const std::string& key, const std::string& value) {
  sections_[section][key] = value;
}

Settings& HostSettings() {
  static Settings settings;
  return settings;
}

}  // namespace vexhost
