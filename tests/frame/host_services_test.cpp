#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "frame/host_services.h"
#include "support/host_library.h"
#include "vextools/diagnostics.h"
#include "vextools/frame.h"

// This program exports no host entry, so the library first sees no host services at all; then the
// test host library (libvex.so / VEX.DLL), which exports only the long and window entries, is loaded.
TEST(HostServices, FallBackPerMissingEntry) {
  InitVexTools();
  EXPECT_EQ(VexHostServicesFound(), 0u);
  char buffer[64] = "untouched";
  EXPECT_EQ(vex::GetHostStringParam("Editors", "Font", buffer, "Courier"), 1);
  EXPECT_STREQ(buffer, "Courier");
  EXPECT_EQ(vex::GetHostLongParam("Editors", "FontSize", 11), 11);
  EXPECT_EQ(vex::GetHostBooleanParam("LogFiles", "Import", 1), 1);
  EXPECT_EQ(vex::WriteHostBooleanParam("LogFiles", "Import", 1), 0);
  EXPECT_EQ(vex::GetHostMainWindow(), nullptr);
  EXPECT_EQ(vex::GetLanguageModule(), nullptr);
  CloseVexTools();  // no assertion was ever logged: nothing to destroy

  ASSERT_TRUE(vex::test::LoadPartialHost());
  InitVexTools();
  EXPECT_EQ(VexHostServicesFound(), VEXHOST_LONG_PARAM | VEXHOST_MAIN_WINDOW);
  EXPECT_EQ(vex::GetHostLongParam("Editors", "FontSize", 11), 11 + 1000);  // the host's answer
  EXPECT_NE(vex::GetHostMainWindow(), nullptr);
  EXPECT_EQ(vex::GetHostStringParam("Editors", "Font", buffer, "Arial"), 1);
  EXPECT_STREQ(buffer, "Arial");
  EXPECT_EQ(vex::WriteHostBooleanParam("LogFiles", "Import", 1), 0);
  CloseVexTools();
}

TEST(GetKartavoPath, NeedsRoomForTheTerminator) {
  char path[512];
  ASSERT_TRUE(GetKartavoPath(path, sizeof path));
  const std::size_t length = std::strlen(path);
  ASSERT_GT(length, 0u);
  const char last = path[length - 1];
  EXPECT_TRUE(last == '/' || last == '\\') << path;

  char exact[512];
  EXPECT_TRUE(GetKartavoPath(exact, static_cast<int>(length + 1)));
  EXPECT_STREQ(exact, path);

  char small[512];
  std::memset(small, 'x', sizeof small);
  EXPECT_FALSE(GetKartavoPath(small, static_cast<int>(length)));
  EXPECT_EQ(small[0], 'x');
  EXPECT_EQ(small[length - 1], 'x');
}
