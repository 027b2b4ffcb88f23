// Library frame: start and stop, tracked allocation, assertions and the debug trace.
#pragma once

#include <cstdint>

#include "export.h"
#include "types.h"

// Start and stop. The host calls InitVexTools once after loading the library and CloseVexTools once
// before unloading it.
VEXTOOLS_API void InitVexTools();
VEXTOOLS_API void CloseVexTools();

// Writes the directory of this library's own file, ending with the separator, into dst.
// Returns false and leaves dst untouched when size is below the path's length plus one.
VEXTOOLS_API bool GetKartavoPath(char* dst, int size);

// Tracked allocation. The file and line arguments are accepted for a tracking build and ignored here.
enum : std::int32_t { VEXALLOC_ZERO = 1 };
VEXTOOLS_API void* VexAllocPtrInternal(const char* file, std::int32_t line, std::int32_t size,
                                       std::int32_t flags);
VEXTOOLS_API void* VexReallocPtrInternal(const char* file, std::int32_t line, void* block,
                                         std::int32_t size, std::int32_t flags);
VEXTOOLS_API void VexFreePtrInternal(const char* file, std::int32_t line, void* block);
VEXTOOLS_API void VexInitAlloc();
VEXTOOLS_API void VexCloseAlloc();
VEXTOOLS_API void HugeMemCopy(char* destination, char* source, std::int32_t count);

#define VexAllocPtr(size, flags) VexAllocPtrInternal(__FILE__, __LINE__, (size), (flags))
#define VexReallocPtr(block, size, flags) VexReallocPtrInternal(__FILE__, __LINE__, (block), (size), (flags))
#define VexFreePtr(block) VexFreePtrInternal(__FILE__, __LINE__, (block))

// Assertions. Levels: 1 information, 2 warning, 3 error, 4 fatal error.
// Behaviours: 1 message box (Cancel breaks into the debugger), 2 record in "Assert.txt",
// 3 ask for a comment, then record; anything else: nothing shown or written.
VEXTOOLS_API int AssertMessage(unsigned short level, const char* text, const char* file, unsigned short line);
VEXTOOLS_API void SetAssertionBehaviour(unsigned short reportLevel, unsigned short breakLevel,
                                        unsigned short behaviour, std::int32_t exitOnFatal);

// Debug trace: text lines ending in CR LF, by default in "VEXDEBUG.TXT".
VEXTOOLS_API void VexDebugFile(const char* name, int create);
VEXTOOLS_API std::int16_t VexDebugMessage(const char* text);
VEXTOOLS_API std::int16_t VexDebugTime();

// Steps of the window helpers that start and stop run; on platforms without window hooks they do nothing.
VEXTOOLS_API LRESULT AutoCenterHookProc(int code, WPARAM wParam, LPARAM lParam);
VEXTOOLS_API void VexDeleteStockBkBrush();
