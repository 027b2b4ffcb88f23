#include <cstdio>
#include <cstring>

#include "vextools/binaryfile.h"
#include "vextools/frame.h"
#include "vextools/dates.h"

namespace {

// Created by the first VexDebugFile and kept until the process ends, deliberately.
KVBinaryFile* g_trace = nullptr;
constexpr std::uint32_t kTraceFlags = 2;

}  // namespace

void VexDebugFile(const char* name, int create) {
  if (!g_trace) g_trace = new KVBinaryFile;
  const _SS<char> file(name);
  if (create ? g_trace->Create(file, kTraceFlags) : g_trace->Open(file, kTraceFlags)) g_trace->SeekFromEnd(0);
}

std::int16_t VexDebugMessage(const char* text) {
  if (!g_trace) return 0;
  if (!g_trace->IsOpen()) g_trace->Create(_SS<char>("VEXDEBUG.TXT"), kTraceFlags);
  if (text) g_trace->Write(text, static_cast<std::int32_t>(std::strlen(text)));
  g_trace->Write("\r\n", 2);
  return g_trace->Flush() ? 1 : 0;
}

std::int16_t VexDebugTime() {
  char stamp[50];
  StringDateTime(stamp, 3, sizeof stamp);
  char line[80];
  std::snprintf(line, sizeof line, "Date/Time : %s", stamp);
  return VexDebugMessage(line);
}
