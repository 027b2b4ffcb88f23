// One token of a VEXTOKENLIST, and the table that turns its 32-bit identifier into the link.
#pragma once

#include <cstdint>

class VEXTOKENLIST;

struct VEXTOKENLINK {
  VEXTOKENLINK* previous;
  VEXTOKENLINK* next;
  std::int32_t type;
  std::uint16_t size;
  unsigned char* data;  // owned; null when size is 0
  std::int32_t id;      // handle in the token table
  const VEXTOKENLIST* owner;
};

namespace vex::containers {

// Registers a link and returns its identifier (never 0), or 0 when the table cannot grow.
std::int32_t AcquireTokenId(VEXTOKENLINK* link);
// Forgets an identifier; the value may later be handed out again.
void ReleaseTokenId(std::int32_t id);
// The live link of an identifier, or null.
VEXTOKENLINK* FindTokenLink(std::int32_t id);

}  // namespace vex::containers
