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
#include "textlist.h"
#include "tokenlist.h"
#include "generalindex.h"
#include "pqueue.h"
#include "bitfield.h"
#include "mbstring.h"
