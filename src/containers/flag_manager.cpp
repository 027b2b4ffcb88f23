// FLAGMANAGER: holds two opaque byte blobs; the named-flag interface is reserved and answers with
// fixed values.
#include <cstdlib>
#include <cstring>

#include "vextools/bitfield.h"

namespace {

// Replaces *blob with a copy of size bytes of data: 1, or 0 for null data or no memory (the old blob
// is discarded in every case).
int KeepCopy(void** blob, std::int32_t size, const void* data) {
  std::free(*blob);
  *blob = nullptr;
  if (size == 0) return 1;
  if (!data || size < 0) return 0;
  *blob = std::malloc(static_cast<std::size_t>(size));
  if (!*blob) return 0;
  std::memcpy(*blob, data, static_cast<std::size_t>(size));
  return 1;
}

}  // namespace

FLAGMANAGER::FLAGMANAGER() : flags_info_(nullptr), field_flag_size_(0), field_flag_(nullptr) {}

FLAGMANAGER::~FLAGMANAGER() {
  std::free(flags_info_);
  std::free(field_flag_);
}

int FLAGMANAGER::SetFlagsInfo(std::int32_t size, void* data) {
  return KeepCopy(&flags_info_, size, data);
}

std::int32_t FLAGMANAGER::GetFlagsInfo(void*) {
  return 0;
}

int FLAGMANAGER::SetFieldFlag(std::int32_t size, void* data) {
  field_flag_size_ = 0;
  const int kept = KeepCopy(&field_flag_, size, data);
  if (field_flag_) field_flag_size_ = size;
  return kept;
}

std::int32_t FLAGMANAGER::GetFieldFlag(void* buffer) {
  if (!buffer) return field_flag_size_;
  if (!field_flag_) return 0;
  std::memcpy(buffer, field_flag_, static_cast<std::size_t>(field_flag_size_));
  return field_flag_size_;
}

FLAGID FLAGMANAGER::GetFlagID(char*) {
  return nullptr;
}

FLAGID FLAGMANAGER::GetFirstFlag() {
  return nullptr;
}

FLAGID FLAGMANAGER::GetNextFlag(const FLAGID*) {
  return nullptr;
}

FLAGID FLAGMANAGER::AddFlag(char*) {
  return nullptr;
}

int FLAGMANAGER::RemoveFlag(const FLAGID*) {
  return 0;
}

int FLAGMANAGER::RenameFlag(const FLAGID*, char*) {
  return 0;
}

int FLAGMANAGER::GetFlagName(const FLAGID*, char*, std::uint16_t) {
  return 0;
}

FLAGVALUES FLAGMANAGER::GetFlagValue(const FLAGID*) {
  return FLAGVALUE_ON;
}

FLAGVALUES FLAGMANAGER::SetFlagValue(const FLAGID*, FLAGVALUES) {
  return FLAGVALUE_ON;
}
