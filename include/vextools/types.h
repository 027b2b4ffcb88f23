// Platform types of the exported interface.
// On Windows these are the SDK's own; elsewhere the handle types are distinct opaque pointers and the
// few structures and constants the interface uses are declared here with the same widths.
#pragma once

#include <cstddef>
#include <cstdint>

#include "export.h"

#if defined(_WIN32)
#  ifndef NOMINMAX
#    define NOMINMAX
#  endif
#  ifndef WIN32_LEAN_AND_MEAN
#    define WIN32_LEAN_AND_MEAN
#  endif
#  include <windows.h>
#else

#define VEX_DECLARE_HANDLE(name) struct name##__ { int unused; }; typedef struct name##__* name
VEX_DECLARE_HANDLE(HWND);
VEX_DECLARE_HANDLE(HINSTANCE);
VEX_DECLARE_HANDLE(HDC);
VEX_DECLARE_HANDLE(HKEY);
VEX_DECLARE_HANDLE(HPEN);
VEX_DECLARE_HANDLE(HBRUSH);
VEX_DECLARE_HANDLE(HFONT);
#undef VEX_DECLARE_HANDLE
typedef HINSTANCE HMODULE;
typedef void* HANDLE;
typedef HANDLE HGLOBAL;  // as on Windows, a global memory handle is a plain HANDLE

typedef int BOOL;
typedef std::uint8_t BYTE;
typedef std::uint16_t WORD;
typedef std::uint32_t DWORD;
typedef std::uint32_t UINT;
typedef std::int32_t LONG;
typedef std::size_t SIZE_T;
typedef void* LPVOID;
typedef const char* LPCSTR;
typedef char* LPSTR;
typedef std::uintptr_t WPARAM;
typedef std::intptr_t LPARAM;
typedef std::intptr_t LRESULT;
typedef std::uint32_t COLORREF;

#ifndef TRUE
#  define TRUE 1
#  define FALSE 0
#endif
#define MAX_PATH 260
#define RGB(r, g, b) ((COLORREF)(((BYTE)(r)) | ((WORD)((BYTE)(g)) << 8) | (((DWORD)(BYTE)(b)) << 16)))

typedef struct tagPOINT { LONG x; LONG y; } POINT;
typedef struct tagRECT { LONG left; LONG top; LONG right; LONG bottom; } RECT;
typedef struct tagSIZE { LONG cx; LONG cy; } SIZE;
typedef struct tagLOGFONTA {
  LONG lfHeight;
  LONG lfWidth;
  LONG lfEscapement;
  LONG lfOrientation;
  LONG lfWeight;
  BYTE lfItalic;
  BYTE lfUnderline;
  BYTE lfStrikeOut;
  BYTE lfCharSet;
  BYTE lfOutPrecision;
  BYTE lfClipPrecision;
  BYTE lfQuality;
  BYTE lfPitchAndFamily;
  char lfFaceName[32];
} LOGFONTA;

// Movable global memory, exported by the library under the Win32 names so that host code which locks
// and frees the blocks it receives is the same on both platforms.
#define GMEM_FIXED 0x0000u
#define GMEM_MOVEABLE 0x0002u
#define GMEM_NOCOMPACT 0x0010u
#define GMEM_NODISCARD 0x0020u
#define GMEM_ZEROINIT 0x0040u
#define GMEM_MODIFY 0x0080u
#define GMEM_DISCARDABLE 0x0100u
#define GMEM_DISCARDED 0x4000u
#define GMEM_INVALID_HANDLE 0x8000u
#define GMEM_LOCKCOUNT 0x00FFu
#define GHND (GMEM_MOVEABLE | GMEM_ZEROINIT)
#define GPTR (GMEM_FIXED | GMEM_ZEROINIT)

VEXTOOLS_EXTERN_C VEXTOOLS_API HGLOBAL GlobalAlloc(UINT flags, SIZE_T bytes);
VEXTOOLS_EXTERN_C VEXTOOLS_API HGLOBAL GlobalReAlloc(HGLOBAL mem, SIZE_T bytes, UINT flags);
VEXTOOLS_EXTERN_C VEXTOOLS_API LPVOID GlobalLock(HGLOBAL mem);
VEXTOOLS_EXTERN_C VEXTOOLS_API BOOL GlobalUnlock(HGLOBAL mem);
VEXTOOLS_EXTERN_C VEXTOOLS_API SIZE_T GlobalSize(HGLOBAL mem);
VEXTOOLS_EXTERN_C VEXTOOLS_API UINT GlobalFlags(HGLOBAL mem);
VEXTOOLS_EXTERN_C VEXTOOLS_API HGLOBAL GlobalFree(HGLOBAL mem);

// Message box styles and answers.
#define MB_OK 0x0000u
#define MB_OKCANCEL 0x0001u
#define MB_ABORTRETRYIGNORE 0x0002u
#define MB_YESNOCANCEL 0x0003u
#define MB_YESNO 0x0004u
#define MB_RETRYCANCEL 0x0005u
#define MB_ICONHAND 0x0010u
#define MB_ICONSTOP MB_ICONHAND
#define MB_ICONERROR MB_ICONHAND
#define MB_ICONQUESTION 0x0020u
#define MB_ICONEXCLAMATION 0x0030u
#define MB_ICONWARNING MB_ICONEXCLAMATION
#define MB_ICONASTERISK 0x0040u
#define MB_ICONINFORMATION MB_ICONASTERISK
#define MB_DEFBUTTON1 0x0000u
#define MB_DEFBUTTON2 0x0100u
#define MB_DEFBUTTON3 0x0200u
#define MB_TYPEMASK 0x000Fu
#define MB_ICONMASK 0x00F0u
#define MB_DEFMASK 0x0F00u
#define IDOK 1
#define IDCANCEL 2
#define IDABORT 3
#define IDRETRY 4
#define IDIGNORE 5
#define IDYES 6
#define IDNO 7

#endif  // !_WIN32
