// The callback interface of the LZW coder: LZWInit, LZW / LZWTerm, UNLZW / UNLZWTerm.
#include "text/lzw_coder.h"
#include "text/lzw_state.h"
#include "vextools/lzw.h"

namespace vex::lzw {

State* LockState(HGLOBAL handle) {
  if (!handle) return nullptr;
  return static_cast<State*>(GlobalLock(handle));
}

HGLOBAL CreateState(LZWREADPROC read, LZWWRITEPROC write, int mode, std::intptr_t user) {
  HGLOBAL handle = GlobalAlloc(GHND, sizeof(State));
  if (!handle) return nullptr;
  State* s = LockState(handle);
  if (!s) {
    GlobalFree(handle);
    return nullptr;
  }
  s->firstCall = 1;
  s->mode = mode != 0 ? 1 : 0;
  s->bitMask = 0x80;
  s->byteRegister = 0;
  s->read = read;
  s->write = write;
  s->user = user;
  GlobalUnlock(handle);
  return handle;
}

namespace {

class CallbackSource {
 public:
  explicit CallbackSource(const State& s) : read_(s.read), user_(s.user) {}
  int Next() {
    const int value = read_(user_);
    return value == -1 ? -1 : (value & 0xFF);
  }

 private:
  LZWREADPROC read_;
  std::intptr_t user_;
};

class CallbackSink {
 public:
  explicit CallbackSink(const State& s) : write_(s.write), user_(s.user) {}
  void Put(std::uint8_t byte) { write_(byte, user_); }
  void PutRun(const std::uint8_t* bytes, int count) {
    for (int i = 0; i < count; ++i) write_(bytes[i], user_);
  }

 private:
  LZWWRITEPROC write_;
  std::intptr_t user_;
};

}  // namespace
}  // namespace vex::lzw

using namespace vex::lzw;

HGLOBAL LZWInit(LZWREADPROC read, LZWWRITEPROC write, std::int16_t mode, std::intptr_t user) {
  if (!read || !write) return nullptr;
  return CreateState(read, write, mode, user);
}

std::int16_t LZW(HGLOBAL state) {
  State* s = LockState(state);
  if (!s || !s->read || !s->write) {
    if (s) GlobalUnlock(state);
    return 0;
  }
  CallbackSource in(*s);
  CallbackSink out(*s);
  Encode(*s, in, out);
  GlobalUnlock(state);
  return 1;
}

HGLOBAL LZWTerm(HGLOBAL state) {
  State* s = LockState(state);
  if (!s) return state;
  if (s->write) {
    CallbackSink out(*s);
    FinishEncode(*s, out);
  }
  GlobalUnlock(state);
  return GlobalFree(state);
}

std::int16_t UNLZW(HGLOBAL state) {
  State* s = LockState(state);
  if (!s || !s->read || !s->write) {
    if (s) GlobalUnlock(state);
    return 0;
  }
  CallbackSource source(*s);
  StreamCodeReader<CallbackSource> in(source, *s);
  CallbackSink out(*s);
  if (!Decode(*s, in, out)) return 0;  // deliberately left locked, pending code not stored
  GlobalUnlock(state);
  return 1;
}

HGLOBAL UNLZWTerm(HGLOBAL state) {
  if (!state) return nullptr;
  return GlobalFree(state);
}
