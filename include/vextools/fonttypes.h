// Font types.
#pragma once

#include "export.h"

// Initialises the font-type table and the multibyte tables of the active code page; once per process.
VEXTOOLS_API void VexInitFontTypes();
