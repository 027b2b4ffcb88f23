// The whole exported interface of the library.
#pragma once

#include "types.h"
#include "export.h"
#include "binaryfile.h"
#include "display.h"
#include "diagnostics.h"
#include "frame.h"
#include "host.h"
#include "dates.h"
#include "fonttypes.h"
#include "strings.h"
#include "lzw.h"
#include "structures.h"
