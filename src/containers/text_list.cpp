// TEXTLIST: a VEXTLIST<char*> that owns a heap copy of each text and orders texts like StringCompare.
#include <cstdlib>
#include <cstring>

#include "containers/text_order.h"
#include "vextools/textlist.h"

TEXTLIST::TEXTLIST() = default;

TEXTLIST::~TEXTLIST() {
  Reset();  // the base destructor would call the base DeleteItem, which frees nothing
}

int TEXTLIST::NewItem(char*& source, char*& target) {
  if (!source) {  // kept as a null item: the encoders skip it
    target = nullptr;
    return 1;
  }
  const std::size_t length = std::strlen(source);
  auto* copy = static_cast<char*>(std::malloc(length + 1));
  if (!copy) return 0;
  std::memcpy(copy, source, length + 1);
  target = copy;
  return 1;
}

int TEXTLIST::DeleteItem(char*& item) {
  std::free(item);
  item = nullptr;
  return 1;
}

int TEXTLIST::GetComparison(char*& a, char*& b) {
  const int order = vex::containers::CompareListTexts(a, b);
  if (order < 0) return VEXTLIST_BEFORE;
  return order > 0 ? VEXTLIST_AFTER : VEXTLIST_EQUAL;
}
