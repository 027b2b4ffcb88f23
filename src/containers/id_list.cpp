// VEXTLIST: the identifier list. The template's own item operations treat items as plain values
// (copied, never released, compared as unsigned numbers), so it does not own what it holds.
#include <cstdint>
#include <new>

#include "vextools/textlist.h"

template <class T>
VEXTLIST<T>::VEXTLIST() : count_(0), last_id_(0), flags_(0), first_(nullptr), last_(nullptr) {}

template <class T>
VEXTLIST<T>::~VEXTLIST() {
  Reset();
}

template <class T>
int VEXTLIST<T>::DeleteItem(T&) {
  return 1;
}

template <class T>
int VEXTLIST<T>::NewItem(T& source, T& target) {
  target = source;
  return 1;
}

template <class T>
int VEXTLIST<T>::GetComparison(T& a, T& b) {
  const auto x = reinterpret_cast<std::uintptr_t>(a);
  const auto y = reinterpret_cast<std::uintptr_t>(b);
  if (x == y) return VEXTLIST_EQUAL;
  return x < y ? VEXTLIST_BEFORE : VEXTLIST_AFTER;
}

template <class T>
std::uint32_t VEXTLIST<T>::GetNewID() {
  return ++last_id_;
}

template <class T>
void VEXTLIST<T>::SetFlags(std::int32_t flags) {
  flags_ = flags;
}

// A node with its own copy of the item and the next identifier, or null when either fails.
template <class T>
VEXTNODE<T>* VEXTLIST<T>::MakeNode(T& item) {
  auto* node = new (std::nothrow) VEXTNODE<T>{0, T(), nullptr, nullptr};
  if (!node) return nullptr;
  if (!NewItem(item, node->item)) {
    delete node;
    return nullptr;
  }
  node->id = GetNewID();
  return node;
}

template <class T>
void VEXTLIST<T>::LinkBefore(VEXTNODE<T>* node, VEXTNODE<T>* before) {
  node->next = before;
  node->previous = before->previous;
  if (before->previous) before->previous->next = node;
  else first_ = node;
  before->previous = node;
  ++count_;
}

template <class T>
void VEXTLIST<T>::LinkAfter(VEXTNODE<T>* node, VEXTNODE<T>* after) {
  node->previous = after;
  node->next = after->next;
  if (after->next) after->next->previous = node;
  else last_ = node;
  after->next = node;
  ++count_;
}

template <class T>
std::int32_t VEXTLIST<T>::AddItem(T& item) {
  if (flags_ & VEXTLIST_UNIQUE) {
    if (const std::int32_t found = IsYetInList(item)) return found;
  }
  VEXTNODE<T>* node = MakeNode(item);
  if (!node) return 0;
  if (last_) {
    LinkAfter(node, last_);
  } else {
    first_ = last_ = node;
    ++count_;
  }
  return static_cast<std::int32_t>(node->id);
}

template <class T>
std::int32_t VEXTLIST<T>::InsertItemBefore(T& item, std::int32_t id) {
  return InsertItemBefore(item, FindItemNode(id));
}

template <class T>
std::int32_t VEXTLIST<T>::InsertItemAfter(T& item, std::int32_t id) {
  return InsertItemAfter(item, FindItemNode(id));
}

template <class T>
std::int32_t VEXTLIST<T>::InsertItemBefore(T& item, VEXTNODE<T>* before) {
  if (!before) return 0;
  VEXTNODE<T>* node = MakeNode(item);
  if (!node) return 0;
  LinkBefore(node, before);
  return static_cast<std::int32_t>(node->id);
}

template <class T>
std::int32_t VEXTLIST<T>::InsertItemAfter(T& item, VEXTNODE<T>* after) {
  if (!after) return 0;
  VEXTNODE<T>* node = MakeNode(item);
  if (!node) return 0;
  LinkAfter(node, after);
  return static_cast<std::int32_t>(node->id);
}

template <class T>
int VEXTLIST<T>::RemoveItem(std::int32_t id) {
  VEXTNODE<T>* node = FindItemNode(id);
  if (!node) return 0;
  if (node->previous) node->previous->next = node->next;
  else first_ = node->next;
  if (node->next) node->next->previous = node->previous;
  else last_ = node->previous;
  DeleteItem(node->item);
  delete node;
  --count_;
  return 1;
}

template <class T>
void VEXTLIST<T>::Reset() {
  VEXTNODE<T>* node = first_;
  while (node) {
    VEXTNODE<T>* next = node->next;
    DeleteItem(node->item);
    delete node;
    node = next;
  }
  first_ = last_ = nullptr;
  count_ = 0;
}

template <class T>
std::int32_t VEXTLIST<T>::IsYetInList(T& item) {
  for (VEXTNODE<T>* node = first_; node; node = node->next) {
    if (GetComparison(item, node->item) == VEXTLIST_EQUAL) return static_cast<std::int32_t>(node->id);
  }
  return 0;
}

template <class T>
VEXTNODE<T>* VEXTLIST<T>::FindItemNode(std::int32_t id) {
  if (id == 0) return nullptr;
  for (VEXTNODE<T>* node = first_; node; node = node->next) {
    if (node->id == static_cast<std::uint32_t>(id)) return node;
  }
  return nullptr;
}

template <class T>
T* VEXTLIST<T>::GetItemFromID(std::int32_t id) {
  VEXTNODE<T>* node = FindItemNode(id);
  return node ? &node->item : nullptr;
}

template <class T>
T* VEXTLIST<T>::GetItemFromPos(std::int32_t pos) {
  if (pos < 0) return nullptr;
  VEXTNODE<T>* node = first_;
  for (; node && pos > 0; --pos) node = node->next;
  return node ? &node->item : nullptr;
}

template <class T>
std::int32_t VEXTLIST<T>::GetFirstItem() {
  return first_ ? static_cast<std::int32_t>(first_->id) : 0;
}

template <class T>
std::int32_t VEXTLIST<T>::GetNextItem(std::int32_t id) {
  VEXTNODE<T>* node = FindItemNode(id);
  return node && node->next ? static_cast<std::int32_t>(node->next->id) : 0;
}

template <class T>
VEXTNODE<T>* VEXTLIST<T>::FindFirstNode() {
  return first_;
}

template <class T>
VEXTNODE<T>* VEXTLIST<T>::FindLastNode() {
  return last_;
}

template <class T>
VEXTNODE<T>* VEXTLIST<T>::FindNextNode(VEXTNODE<T>* node) {
  return node ? node->next : nullptr;
}

template <class T>
VEXTNODE<T>* VEXTLIST<T>::FindPrevNode(VEXTNODE<T>* node) {
  return node ? node->previous : nullptr;
}

template <class T>
T& VEXTLIST<T>::GetNodeValue(VEXTNODE<T>* node) {
  return node->item;
}

template class VEXTLIST<char*>;
