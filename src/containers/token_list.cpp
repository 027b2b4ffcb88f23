// VEXTOKENLIST: the list of typed binary tokens.
#include <cstdlib>
#include <cstring>
#include <vector>

#include "containers/token_link.h"
#include "vextools/tokenlist.h"

using vex::containers::AcquireTokenId;
using vex::containers::FindTokenLink;
using vex::containers::ReleaseTokenId;

VEXTOKENLIST::VEXTOKENLIST() : count_(0), first_(nullptr), last_(nullptr) {}

VEXTOKENLIST::~VEXTOKENLIST() {
  Reset();
}

VEXTOKENLINK* VEXTOKENLIST::CreateToken(std::int32_t type, std::uint16_t size, const void* data) {
  if (size > 0 && !data) return nullptr;
  auto* link = static_cast<VEXTOKENLINK*>(std::calloc(1, sizeof(VEXTOKENLINK)));
  if (!link) return nullptr;
  if (size > 0) {
    link->data = static_cast<unsigned char*>(std::malloc(size));
    if (!link->data) {
      std::free(link);
      return nullptr;
    }
    std::memcpy(link->data, data, size);
  }
  link->id = AcquireTokenId(link);
  if (!link->id) {
    std::free(link->data);
    std::free(link);
    return nullptr;
  }
  link->type = type;
  link->size = size;
  link->owner = this;
  return link;
}

void VEXTOKENLIST::EraseToken(VEXTOKENLINK* link) {
  ReleaseTokenId(link->id);
  std::free(link->data);
  std::free(link);
}

void VEXTOKENLIST::Reset() {
  VEXTOKENLINK* link = first_;
  while (link) {
    VEXTOKENLINK* next = link->next;
    EraseToken(link);
    link = next;
  }
  first_ = last_ = nullptr;
  count_ = 0;
}

void VEXTOKENLIST::AddToken(VEXTOKENLINK* link) {
  link->previous = last_;
  link->next = nullptr;
  if (last_) last_->next = link;
  else first_ = link;
  last_ = link;
  ++count_;
}

int VEXTOKENLIST::ModifyToken(VEXTOKENLINK* link, std::int32_t type, std::uint16_t size, const void* data) {
  if (!link) return 0;
  if (size > 0) {
    if (!data) return 0;
    std::vector<unsigned char> own;  // the new data may be the token's own buffer, which may move
    const auto* from = static_cast<const unsigned char*>(data);
    if (link->data && from >= link->data && from < link->data + link->size) {
      own.assign(from, from + size);
      from = own.data();
    }
    if (size != link->size || !link->data) {
      void* grown = std::realloc(link->data, size);
      if (!grown) return 0;
      link->data = static_cast<unsigned char*>(grown);
    }
    link->size = size;
    std::memmove(link->data, from, size);
  } else {
    std::free(link->data);
    link->data = nullptr;
    link->size = 0;
  }
  link->type = type;
  return 1;
}

VEXTOKENLINK* VEXTOKENLIST::GetToken(std::int32_t id) {
  VEXTOKENLINK* link = FindTokenLink(id);
  return link && link->owner == this ? link : nullptr;
}

int VEXTOKENLIST::IsTokenExist(std::int32_t id) {
  return GetToken(id) != nullptr;
}

std::int32_t VEXTOKENLIST::AddToken(std::int32_t id, std::int32_t type, std::uint16_t size, void* data) {
  if (size > kMaxDataSize) return 0;
  if (id != 0) {
    VEXTOKENLINK* link = GetToken(id);
    if (!link) return 0;
    ModifyToken(link, type, size, data);  // kept: id is returned even when the data could not change
    return id;
  }
  VEXTOKENLINK* link = CreateToken(type, size, data);
  if (!link) return 0;
  AddToken(link);
  return link->id;
}

int VEXTOKENLIST::RemoveToken(std::int32_t id) {
  VEXTOKENLINK* link = GetToken(id);
  if (!link) return 0;
  if (link->previous) link->previous->next = link->next;
  else first_ = link->next;
  if (link->next) link->next->previous = link->previous;
  else last_ = link->previous;
  EraseToken(link);
  --count_;
  return 1;
}

namespace {

bool Matches(const VEXTOKENLINK* link, std::int32_t type) {
  return type == 0 || link->type == type;
}

}  // namespace

std::int32_t VEXTOKENLIST::GetFirstToken(std::int32_t type) {
  for (VEXTOKENLINK* link = first_; link; link = link->next) {
    if (Matches(link, type)) return link->id;
  }
  return 0;
}

// The walks only read, so they accept any live token (a shallow copy of a list walks the same tokens).
std::int32_t VEXTOKENLIST::GetNextToken(std::int32_t id, std::int32_t type) {
  const VEXTOKENLINK* from = FindTokenLink(id);
  if (!from) return 0;
  for (VEXTOKENLINK* link = from->next; link; link = link->next) {
    if (Matches(link, type)) return link->id;
  }
  return 0;
}

std::int32_t VEXTOKENLIST::GetPreviousToken(std::int32_t id, std::int32_t type) {
  const VEXTOKENLINK* from = FindTokenLink(id);
  if (!from) return 0;
  for (VEXTOKENLINK* link = from->previous; link; link = link->previous) {
    if (Matches(link, type)) return link->id;
  }
  return 0;
}

std::int32_t VEXTOKENLIST::RetrieveToken(std::int32_t type, void* key, std::uint16_t length) {
  if (length > 0 && !key) return 0;
  for (VEXTOKENLINK* link = first_; link; link = link->next) {
    if (!Matches(link, type) || link->size < length) continue;
    if (length == 0 || std::memcmp(link->data, key, length) == 0) return link->id;
  }
  return 0;
}

std::int32_t VEXTOKENLIST::RetrieveToken(std::int32_t type, std::int32_t value) {
  unsigned char bytes[4];
  for (int i = 0; i < 4; ++i) bytes[i] = static_cast<unsigned char>(static_cast<std::uint32_t>(value) >> (8 * i));
  return RetrieveToken(type, bytes, 4);
}

int VEXTOKENLIST::GetTokenInfo(std::int32_t id, std::int32_t& type, std::uint16_t& size, void*& data) {
  const VEXTOKENLINK* link = FindTokenLink(id);
  if (!link) return 0;
  type = link->type;
  size = link->size;
  data = link->data;
  return 1;
}
