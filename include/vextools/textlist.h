// Identifier lists and text lists.
//
// VEXTLIST<T> is a doubly linked list whose items are addressed by an identifier handed out at
// insertion (1, 2, 3, ... for the life of the object, never reused), not by position. How an item is
// copied in, released and compared is decided by the virtual NewItem, DeleteItem and GetComparison, so a
// subclass turns the list of raw pointers into a list that owns its items. The library instantiates
// and exports VEXTLIST<char*>.
//
// TEXTLIST owns a heap copy of each text, compares texts with StringCompare (option 1) and writes
// itself to, or reads itself from, a flat byte buffer:
//   format 1: every non-null item followed by one 0 byte, nothing else;
//   format 2: "item";"item";..."item" followed by one 0 byte (no escaping: an item must not contain
//             a quote, a semicolon and a quote in a row). Decod of format 2 returns 0 in every case.
#pragma once

#include <cstdint>

#include "export.h"

// Comparison codes of GetComparison(a, b).
enum : int { VEXTLIST_EQUAL = 1, VEXTLIST_BEFORE = 2, VEXTLIST_AFTER = 4 };
// Flag bit of SetFlags: AddItem refuses an item equal to one already present.
enum : std::int32_t { VEXTLIST_UNIQUE = 1 };

template <class T>
struct VEXTNODE {
  std::uint32_t id;
  T item;
  VEXTNODE* next;
  VEXTNODE* previous;
};

template <class T>
class VEXTOOLS_API VEXTLIST {
 public:
  VEXTLIST();
  // Copies memberwise: the nodes are then shared, so callers do not copy live lists.
  VEXTLIST(const VEXTLIST&) = default;
  VEXTLIST& operator=(const VEXTLIST&) = default;

  // Identifiers are 32-bit; 0 means none or failure. The virtual slots keep this order.
  virtual std::int32_t InsertItemBefore(T& item, std::int32_t id);
  virtual std::int32_t InsertItemAfter(T& item, std::int32_t id);
  virtual int DeleteItem(T& item);
  virtual int NewItem(T& source, T& target);
  virtual ~VEXTLIST();
  virtual std::int32_t AddItem(T& item);
  virtual int GetComparison(T& a, T& b);

  std::int32_t InsertItemBefore(T& item, VEXTNODE<T>* node);
  std::int32_t InsertItemAfter(T& item, VEXTNODE<T>* node);
  int RemoveItem(std::int32_t id);
  void Reset();
  std::int32_t IsYetInList(T& item);
  void SetFlags(std::int32_t flags);
  std::uint32_t GetNewID();

  VEXTNODE<T>* FindItemNode(std::int32_t id);
  T* GetItemFromID(std::int32_t id);
  T* GetItemFromPos(std::int32_t pos);
  std::int32_t GetFirstItem();
  std::int32_t GetNextItem(std::int32_t id);

  VEXTNODE<T>* FindFirstNode();
  VEXTNODE<T>* FindLastNode();
  VEXTNODE<T>* FindNextNode(VEXTNODE<T>* node);
  VEXTNODE<T>* FindPrevNode(VEXTNODE<T>* node);
  T& GetNodeValue(VEXTNODE<T>* node);

 protected:
  VEXTNODE<T>* MakeNode(T& item);
  void LinkBefore(VEXTNODE<T>* node, VEXTNODE<T>* before);
  void LinkAfter(VEXTNODE<T>* node, VEXTNODE<T>* after);

  std::int32_t count_;
  std::uint32_t last_id_;
  std::int32_t flags_;
  VEXTNODE<T>* first_;
  VEXTNODE<T>* last_;
};

extern template class VEXTOOLS_API VEXTLIST<char*>;

class VEXTOOLS_API TEXTLIST : public VEXTLIST<char*> {
 public:
  TEXTLIST();
  ~TEXTLIST() override;

  // Writes the list in format 1 or 2 and returns its size in bytes (0 for another format). A null
  // buffer only measures. The buffer form trusts the caller for room; the handle form writes only into
  // a movable block large enough for the whole text, else writes nothing and returns 0.
  std::int32_t Encod(char* buffer, std::int32_t format);
  std::int32_t Encod(void* handle, std::int32_t format);
  // Empties the list, then adds the items of the buffer through AddItem (so the unique flag applies).
  // Format 1 reads size bytes and returns the last AddItem result (1 for size 0). Format 2 reads up to
  // the text's 0 byte (size is not used) and returns 0. The handle form never reads past the block.
  int Decod(char* buffer, std::int32_t size, std::int32_t format);
  int Decod(void* handle, std::int32_t size, std::int32_t format);

  int DeleteItem(char*& item) override;
  int NewItem(char*& source, char*& target) override;

 protected:
  int GetComparison(char*& a, char*& b) override;
  std::int32_t EncodOnlyTextList(char* buffer);
  std::int32_t DecodOnlyTextList(char* buffer, std::int32_t size);

 private:
  std::int32_t EncodQuoted(char* buffer);
  int DecodQuoted(char* text, std::size_t extent);
};
