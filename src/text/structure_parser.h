// CParser: the tokenizer of the structure text.
#pragma once

#include <cstddef>
#include <string>

namespace vex::text {

class CParser {
 public:
  // The text is prepared first: TAB, LF and CR become the two characters \t, \n, \r.
  explicit CParser(const std::string& text);

  // Reads one token of characters from allowed (null: any) and at most maxLength of them (-1: no
  // limit). Skips white space before and after. A backslash takes the next character with it; a
  // backslash at the very end fails. May succeed with an empty token.
  bool ReadToken(const char* allowed, int maxLength);

  // Token classes. Each rewinds to the token start when the token is not of its class.
  bool Punctuation(char c);
  bool Identifier();
  bool Number(bool& isReal);  // digits with at most one '.', no sign
  bool Boolean();
  bool String();  // between double quotes; Token() is then the text without them

  const std::string& Token() const { return token_; }
  bool AtEnd() const { return position_ >= text_.size(); }
  std::size_t Position() const { return position_; }
  void Rewind(std::size_t position) { position_ = position; }

 private:
  void SkipSpace();
  bool Fail();

  std::string text_;
  std::size_t position_ = 0;
  std::size_t start_ = 0;
  std::string token_;
};

}  // namespace vex::text
