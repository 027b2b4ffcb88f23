#include "text/mbcs_core.h"

namespace vex::text {
namespace {
MultibyteTables g_tables{{}, 0, 1252};
bool g_initialised = false;
}  // namespace

const MultibyteTables& Multibyte() { return g_tables; }

void InitMultibyteTables() {
  if (g_initialised) return;
  g_initialised = true;
}

}  // namespace vex::text
