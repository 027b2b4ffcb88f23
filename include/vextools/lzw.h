// LZW compression of byte streams and memory blocks.
//
// The coded stream has no header, length, magic, clear or end code. Each code field is written from its
// highest bit down, packed most-significant bit first into the output bytes:
//   - a literal byte b is 9 bits: a 0, then b;
//   - a reference to dictionary entry n (256..766) is j+1 bits holding the low bits of 255 - n, where
//     2^j is the current reference mask (2 after a reset, doubled as the dictionary grows). Its top bit
//     is always 1, so widths run from 2 to 10 bits.
// The dictionary holds 768 entries and is rebuilt silently after 512 additions; the first code after a
// rebuild is always a literal. The last partial byte is padded with zero bits.
//
// Encoder: LZWInit(read, write, LZW_MODE_COMPRESS, user), then LZW as often as there is input (each call
// reads until read returns -1), then LZWTerm, which writes the pending code and the partial byte.
// Decoder: LZWInit(read, write, LZW_MODE_DECOMPRESS, user), then UNLZW as often as there is input, then
// UNLZWTerm. Splitting the input over several calls gives the same output as one call.
//
// The read callback returns the next byte 0-255, or -1 at the end of the input; any other value counts
// as its low byte. The write callback receives one byte (0-255) at a time.
//
// Results kept as they are because callers rely on them:
//   - An empty input compresses to FF 80: the pending "no code" (-1) goes out as nine 1-bits.
//   - LZWTerm right after LZWInit (no LZW call at all) writes the literal 0 (00 00): the fresh state's
//     pending code is 0.
//   - UNLZW returns 0 at a reference beyond the next free code, after writing everything decoded before
//     it; the pending code is then not updated and the state stays locked (UNLZWTerm frees it anyway).
//   - LZWDecompressMemory ignores that result: a corrupt stream succeeds with the bytes decoded so far.
//
// Cases no encoder produces, and what this library does with them (every stream that an encoder wrote
// decodes exactly as before):
//   - A byte arriving while the encoder has no pending code (its first LZW call saw no input, or read
//     returned -1 and then more bytes) becomes the pending prefix; nothing is written for it. So empty
//     calls before the data change nothing: the result equals one call with all the input.
//   - The decoder never writes more than its 512-byte decode buffer: a code whose expansion would be
//     longer is treated as corrupt (UNLZW returns 0 as above). Only a corrupt stream reaches such a
//     code, through a chain that runs through entries not filled since the last rebuild or through
//     itself, for example after a reference where a literal belongs. Decoding FF 80, the image of an
//     empty input, so gives the single byte 00: the second 256 makes entry 256 its own prefix (UNLZW
//     returns 0, LZWDecompressMemory returns 1 with that byte).
//   - Encoder and decoder calls mixed on one state stay within the state; what they write is
//     meaningless.
//   - A mode other than 0 counts as LZW_MODE_DECOMPRESS.
//
// Memory calls: LZWCompressMemory / LZWDecompressMemory read dwInLength bytes at lpIn and return 1 with
// dwOutLength bytes in the movable global memory block hOut (locked once; its size may exceed the
// output; the caller unlocks and frees it with GlobalUnlock / GlobalFree). Nothing to write gives
// success with hOut 0. On an allocation failure they return 0 and free the block that the caller's hOut
// field names on entry (kept as it is: the caller's field, not the partial output, is what this
// frees); the partial output is released too. The output grows geometrically, so large outputs are not copied over and
// over; outputs beyond 4 GiB - 1 bytes count as an allocation failure.
#pragma once

#include <cstdint>

#include "export.h"
#include "types.h"

#define LZW_MODE_COMPRESS 0
#define LZW_MODE_DECOMPRESS 1

typedef std::int16_t (*LZWREADPROC)(std::intptr_t user);
typedef void (*LZWWRITEPROC)(std::int16_t byte, std::intptr_t user);

typedef struct tagLZWMEMBLOCK {
  std::uint32_t dwInLength;   // in: input length in bytes
  std::intptr_t lpIn;         // in: address of the input
  std::uint32_t dwOutLength;  // out: number of bytes written
  std::intptr_t hOut;         // out: HGLOBAL holding the output
} LZWMEMBLOCK;

// Null when read or write is null or the state cannot be allocated.
VEXTOOLS_EXTERN_C VEXTOOLS_API HGLOBAL LZWInit(LZWREADPROC read, LZWWRITEPROC write, std::int16_t mode,
                                               std::intptr_t user);
// Compresses everything read delivers: 1 (0 for a null or invalid handle).
VEXTOOLS_EXTERN_C VEXTOOLS_API std::int16_t LZW(HGLOBAL state);
// Writes the pending code and the partial byte, frees the state: null on success.
VEXTOOLS_EXTERN_C VEXTOOLS_API HGLOBAL LZWTerm(HGLOBAL state);
// Expands everything read delivers: 1, or 0 for a corrupt stream (and a null or invalid handle).
VEXTOOLS_EXTERN_C VEXTOOLS_API std::int16_t UNLZW(HGLOBAL state);
// Frees the state, writes nothing: null on success.
VEXTOOLS_EXTERN_C VEXTOOLS_API HGLOBAL UNLZWTerm(HGLOBAL state);

// 1 on success, 0 on failure (null block, no memory).
VEXTOOLS_EXTERN_C VEXTOOLS_API std::int32_t LZWCompressMemory(LZWMEMBLOCK* block);
VEXTOOLS_EXTERN_C VEXTOOLS_API std::int32_t LZWDecompressMemory(LZWMEMBLOCK* block);
