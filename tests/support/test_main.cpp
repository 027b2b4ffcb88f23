// Test programs link the library's objects directly, so the load notification is run here.
#include <gtest/gtest.h>

#include "frame/load_notification.h"

int main(int argc, char** argv) {
  vex::OnLoadNotification(nullptr);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
