// CGlobalHandle: a thin wrapper of one movable global memory handle that never frees it by itself.
#include "vextools/bitfield.h"

CGlobalHandle::CGlobalHandle() : handle_(nullptr) {}

CGlobalHandle::CGlobalHandle(HGLOBAL handle) : handle_(handle) {}

CGlobalHandle::CGlobalHandle(SIZE_T size, UINT flags) : handle_(nullptr) {
  Allocate(size, flags);
}

HGLOBAL CGlobalHandle::Allocate(SIZE_T size, UINT flags) {
  handle_ = size ? GlobalAlloc(flags | GMEM_MOVEABLE, size) : nullptr;
  return handle_;
}

HGLOBAL CGlobalHandle::Reallocate(SIZE_T size, UINT flags) {
  if (!handle_) return nullptr;
  HGLOBAL resized = GlobalReAlloc(handle_, size, flags | GMEM_MOVEABLE);
  if (resized) handle_ = resized;
  return resized;
}

void CGlobalHandle::FreeHandle() {
  if (handle_) GlobalFree(handle_);
  handle_ = nullptr;
}

void CGlobalHandle::SetHandle(HGLOBAL handle) {
  handle_ = handle;
}

HGLOBAL& CGlobalHandle::GetRefHandle() {
  return handle_;
}

SIZE_T CGlobalHandle::GetSize() {
  return handle_ ? GlobalSize(handle_) : 0;
}

UINT CGlobalHandle::GetFlags() {
  return handle_ ? GlobalFlags(handle_) : 0;
}

void* CGlobalHandle::Lock() {
  return handle_ ? GlobalLock(handle_) : nullptr;
}

int CGlobalHandle::Unlock() {
  if (handle_) GlobalUnlock(handle_);
  return 1;
}
