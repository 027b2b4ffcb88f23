// VEXTOOLS_API marks every name of the exported interface.
#pragma once

#if defined(_WIN32)
#  if defined(VEXTOOLS_STATIC)
#    define VEXTOOLS_API
#  elif defined(VEXTOOLS_BUILDING)
#    define VEXTOOLS_API __declspec(dllexport)
#  else
#    define VEXTOOLS_API __declspec(dllimport)
#  endif
#else
#  define VEXTOOLS_API __attribute__((visibility("default")))
#endif

// C linkage for the entries that hosts look up by their plain names.
#ifdef __cplusplus
#  define VEXTOOLS_EXTERN_C extern "C"
#else
#  define VEXTOOLS_EXTERN_C
#endif
