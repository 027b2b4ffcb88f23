// The whole exported interface of the library.
#pragma once

#include "types.h"
#include "export.h"
#include "binaryfile.h"
#include "basicfile.h"
#include "cachefile.h"
#include "errorfile.h"
#include "streamfile.h"
#include "textfile.h"
#include "display.h"
#include "diagnostics.h"
#include "frame.h"
#include "host.h"
#include "dates.h"
#include "fonttypes.h"
#include "strings.h"
#include "mbstring.h"
