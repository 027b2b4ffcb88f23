#include "text/structure_parser.h"

#include <cstring>

#include "text/structure_text.h"

namespace vex::text {
namespace {

constexpr const char kIdentifierChars[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_-0123456789";

bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

CParser::CParser(const std::string& text) : text_(EscapeLineBreaks(text)) {}

void CParser::SkipSpace() {
  while (position_ < text_.size() && IsSpace(text_[position_])) ++position_;
}

bool CParser::Fail() {
  position_ = start_;
  return false;
}

bool CParser::ReadToken(const char* allowed, int maxLength) {
  SkipSpace();
  start_ = position_;
  token_.clear();
  bool quoted = false;
  while (position_ < text_.size()) {
    const char c = text_[position_];
    if (allowed && (c == '\0' || !std::strchr(allowed, c))) break;
    if (IsSpace(c) && !quoted) break;
    bool last = false;
    if (token_.empty()) {
      quoted = c == '"';
    } else if (c == '"') {
      last = true;  // a quote after the first character ends the token, itself included
    }
    if (c == '\\') {
      if (position_ + 1 >= text_.size()) return Fail();
      token_ += c;
      ++position_;
      token_ += text_[position_];  // escaped: never a terminator
    } else {
      token_ += c;
    }
    ++position_;
    if (last) break;
    if (maxLength >= 0 && token_.size() >= static_cast<std::size_t>(maxLength)) break;
  }
  SkipSpace();
  return true;
}

bool CParser::Punctuation(char c) {
  const char set[2] = {c, '\0'};
  if (!ReadToken(set, 1)) return false;
  if (token_.size() != 1 || token_[0] != c) return Fail();
  return true;
}

bool CParser::Identifier() {
  if (!ReadToken(kIdentifierChars, -1)) return false;
  if (token_.empty() || !IsLetter(token_.front())) return Fail();
  if (token_.back() == '_' || token_.back() == '-') return Fail();
  return true;
}

bool CParser::Number(bool& isReal) {
  if (!ReadToken("0123456789.", -1)) return false;
  if (token_.empty()) return Fail();
  int points = 0;
  for (char c : token_) {
    if (c == '.') ++points;
    else if (!IsDigit(c)) return Fail();
  }
  if (points > 1) return Fail();
  isReal = points == 1;
  if (isReal) TrimRealText(token_);
  return true;
}

bool CParser::Boolean() {
  if (!ReadToken("truefals", -1)) return false;
  if (token_ != "true" && token_ != "false") return Fail();
  return true;
}

bool CParser::String() {
  if (!ReadToken(nullptr, -1)) return false;
  if (token_.size() < 2 || token_.front() != '"' || token_.back() != '"') return Fail();
  token_.pop_back();
  token_.erase(0, 1);
  return true;
}

}  // namespace vex::text
