// VEXTOKENLIST: an ordered list of typed binary tokens (a 32-bit type and up to 64,999 bytes of data),
// found by type or by their leading data bytes, and written to / rebuilt from a flat byte image.
//
// A token's identifier is a non-zero 32-bit handle, valid until the token is removed or the list is
// reset or rebuilt (a later token may then get the same value). Identifiers are checked: one that is
// unknown or belongs to another list gives 0.
//
// Byte image (little-endian): 0 total length (4), 4 token count (4), 8 version = 1 (2), 10 reserved
// (30 zero bytes), 40 the tokens in order, each as type (4), data size n (2), n data bytes.
#pragma once

#include <cstddef>
#include <cstdint>

#include "export.h"

struct VEXTOKENLINK;

class VEXTOOLS_API VEXTOKENLIST {
 public:
  enum : std::int32_t { kHeaderSize = 40, kMaxDataSize = 64999 };

  VEXTOKENLIST();
  // Copies the members as they stand: the tokens are then shared, so callers do not copy live lists.
  VEXTOKENLIST(const VEXTOKENLIST&) = default;
  VEXTOKENLIST& operator=(const VEXTOKENLIST&) = default;
  virtual ~VEXTOKENLIST();

  // id 0 appends a new token and returns its identifier; a non-zero id replaces that token's type and
  // data and returns id (also when the new data could not be allocated: the token is then unchanged).
  // Sizes of 65,000 and more are refused with 0.
  std::int32_t AddToken(std::int32_t id, std::int32_t type, std::uint16_t size, void* data);
  int RemoveToken(std::int32_t id);
  // Walks; a type of 0 matches every token.
  std::int32_t GetFirstToken(std::int32_t type);
  std::int32_t GetNextToken(std::int32_t id, std::int32_t type);
  std::int32_t GetPreviousToken(std::int32_t id, std::int32_t type);
  // First token (of that type, any when 0) whose data starts with the length bytes of key. A token
  // with fewer than length bytes does not match.
  std::int32_t RetrieveToken(std::int32_t type, void* key, std::uint16_t length);
  std::int32_t RetrieveToken(std::int32_t type, std::int32_t value);
  // The token's own data buffer, not a copy.
  int GetTokenInfo(std::int32_t id, std::int32_t& type, std::uint16_t& size, void*& data);

  std::int32_t GetSize();
  // Writes the image into a movable block and returns the image size. Nothing is written for a null
  // handle or a size below 40; only as many bytes as the block holds are written.
  std::int32_t Get(std::int32_t size, void* handle);
  std::int32_t Get(std::int32_t size, char* buffer);
  // Rebuilds the list from an image of size bytes (a negative size means the whole block) and returns
  // the bytes used, or 0 for a size of 0 ... 39 or a version other than 1 (the list is then empty).
  // Never reads past the block, whatever the header says.
  std::int32_t Set(std::int32_t size, void* handle);
  std::int32_t Set(std::int32_t size, char* buffer);

 private:
  VEXTOKENLINK* CreateToken(std::int32_t type, std::uint16_t size, const void* data);
  void EraseToken(VEXTOKENLINK* link);
  void Reset();
  void AddToken(VEXTOKENLINK* link);
  int ModifyToken(VEXTOKENLINK* link, std::int32_t type, std::uint16_t size, const void* data);
  int IsTokenExist(std::int32_t id);
  VEXTOKENLINK* GetToken(std::int32_t id);
  std::int32_t ReadImage(const unsigned char* image, std::uint32_t extent);
  std::size_t WriteImage(unsigned char* out, std::size_t capacity);

  std::int32_t count_;
  VEXTOKENLINK* first_;
  VEXTOKENLINK* last_;
};
