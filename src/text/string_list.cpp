#include <cstring>

#include "vextools/mbstring.h"
#include "vextools/strings.h"

KVStringList::KVStringList(char separator) : separator_('\0') { SetSeparator(separator); }

KVStringList::KVStringList(const char* text, char separator) : separator_('\0') {
  SetSeparator(separator);
  SetStringList(text);
}

KVStringList::KVStringList(const KVStringList& other) = default;
KVStringList& KVStringList::operator=(const KVStringList& other) = default;
KVStringList::~KVStringList() = default;

void KVStringList::Clear() { items_.clear(); }

std::uint32_t KVStringList::Count() const { return static_cast<std::uint32_t>(items_.size()); }

const char* KVStringList::Item(std::uint32_t index) const {
  return index < items_.size() ? items_[index].c_str() : nullptr;
}

const char* KVStringList::operator[](std::uint32_t index) const { return Item(index); }

bool KVStringList::HoldsSeparator(const char* text) const {
  return separator_ != '\0' && std::strchr(text, separator_) != nullptr;
}

bool KVStringList::Add(const char* text) {
  if (!text || !*text || HoldsSeparator(text)) return false;
  const std::size_t before = items_.size();
  items_.emplace_back(text);
  return items_.size() == before + 1;
}

bool KVStringList::GetStringList(std::string& out) const {
  out.clear();
  for (std::size_t i = 0; i < items_.size(); ++i) {
    if (HoldsSeparator(items_[i].c_str())) continue;  // only after the separator was changed
    out += items_[i];
    if (i + 1 < items_.size()) out += separator_;
  }
  return true;
}

bool KVStringList::SetStringList(const char* text) {
  Clear();
  if (!text || !*text) return true;
  bool all = true;
  std::string piece;
  for (const char* p = text;; ++p) {
    if (*p == '\0' || (*p == separator_ && separator_ != '\0')) {
      all = Add(piece.c_str()) && all;
      piece.clear();
      if (*p == '\0') break;
    } else {
      piece += *p;
    }
  }
  return all;
}

bool KVStringList::GetStringPos(const char* text, std::uint32_t& index, bool case_sensitive) const {
  if (!text) return false;
  for (std::size_t i = 0; i < items_.size(); ++i) {
    if (VexStringCompare(items_[i].c_str(), text, -1, case_sensitive ? 0 : 1) == 0) {
      index = static_cast<std::uint32_t>(i);
      return true;
    }
  }
  return false;
}

bool KVStringList::RemoveString(std::uint32_t index) {
  if (index >= items_.size()) return false;
  const std::size_t before = items_.size();
  items_.erase(items_.begin() + index);
  return items_.size() + 1 == before;
}

bool KVStringList::HasString(const char* text, bool case_sensitive) const {
  std::uint32_t index = 0;
  return GetStringPos(text, index, case_sensitive);
}

char KVStringList::SetSeparator(char separator) {
  const char previous = separator_;
  if (separator != '\0') separator_ = separator;
  return previous;
}

char KVStringList::GetSeparator() const { return separator_; }
