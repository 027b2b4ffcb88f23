// The real message box and the assertion comment dialog (resource 217).
#include <cstring>

#include "platform/display.h"
#include "platform/modules.h"

namespace vex::platform {
namespace {

struct CommentRequest {
  char* text;
  int size;
  std::int32_t* checked;
};

INT_PTR CALLBACK CommentProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* request = reinterpret_cast<CommentRequest*>(::GetWindowLongPtrA(dialog, DWLP_USER));
  switch (message) {
    case WM_INITDIALOG:
      request = reinterpret_cast<CommentRequest*>(lParam);
      ::SetWindowLongPtrA(dialog, DWLP_USER, lParam);
      ::SendDlgItemMessageA(dialog, 101, EM_LIMITTEXT, static_cast<WPARAM>(request->size - 1), 0);
      ::SetDlgItemTextA(dialog, 101, "");
      ::CheckDlgButton(dialog, 102, *request->checked ? BST_CHECKED : BST_UNCHECKED);
      return TRUE;
    case WM_COMMAND:
      if (LOWORD(wParam) == IDOK) {
        ::GetDlgItemTextA(dialog, 101, request->text, request->size);
        *request->checked = ::IsDlgButtonChecked(dialog, 102) == BST_CHECKED ? 1 : 0;
        ::EndDialog(dialog, IDOK);
        return TRUE;
      }
      if (LOWORD(wParam) == IDCANCEL) {
        request->text[0] = '\0';
        ::EndDialog(dialog, IDCANCEL);
        return TRUE;
      }
      break;
  }
  return FALSE;
}

}  // namespace

int NativeMessageBox(HWND owner, const char* text, const char* title, unsigned style) {
  return ::MessageBoxA(owner, text, title, style);
}

int NativeCommentDialog(HWND owner, char* text, int size, std::int32_t* checked) {
  if (!text || size < 1 || !checked) return -1;
  CommentRequest request{text, size, checked};
  const INT_PTR answer = ::DialogBoxParamA(SelfModule(), MAKEINTRESOURCEA(217), owner, CommentProc,
                                           reinterpret_cast<LPARAM>(&request));
  return answer == IDOK || answer == IDCANCEL ? static_cast<int>(answer) : -1;
}

}  // namespace vex::platform

namespace vex::platform {
HWND ActiveWindow() { return ::GetActiveWindow(); }
}  // namespace vex::platform
