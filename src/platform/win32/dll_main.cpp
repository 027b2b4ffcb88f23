// The load notification: every reason does the same.
#include "vextools/types.h"
#include "frame/load_notification.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD, LPVOID) {
  vex::OnLoadNotification(instance);
  return TRUE;
}
