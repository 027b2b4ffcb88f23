#include "text/mbcs_core.h"
#include "vextools/fonttypes.h"

void VexInitFontTypes() {
  static bool done = false;
  if (done) return;
  done = true;
  vex::text::InitMultibyteTables();
}
