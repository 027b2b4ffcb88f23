#include "platform/display.h"

namespace vex::platform {
namespace {
VEXDISPLAYPROC g_callback = nullptr;
void* g_context = nullptr;
}  // namespace

VEXDISPLAYPROC DisplayCallback(void** context) {
  if (context) *context = g_context;
  return g_callback;
}

int DefaultButtonAnswer(unsigned style) {
  // Rows: the button sets 0..5; columns: first, second, third default button.
  static const int kAnswers[6][3] = {
      {IDOK, IDOK, IDOK},         {IDOK, IDCANCEL, IDCANCEL}, {IDABORT, IDRETRY, IDIGNORE},
      {IDYES, IDNO, IDCANCEL},    {IDYES, IDNO, IDNO},        {IDRETRY, IDCANCEL, IDCANCEL},
  };
  const unsigned buttons = style & MB_TYPEMASK;
  if (buttons > 5) return 0;
  const unsigned def = style & MB_DEFMASK;
  const int column = def == MB_DEFBUTTON1 ? 0 : def == MB_DEFBUTTON2 ? 1 : 2;
  return kAnswers[buttons][column];
}

int ShowMessageBox(HWND owner, const char* text, const char* title, unsigned style) {
  void* context = nullptr;
  if (VEXDISPLAYPROC proc = DisplayCallback(&context)) {
    VEXDISPLAYREQUEST request{};
    request.kind = VEXDISPLAY_MESSAGEBOX;
    request.owner = owner;
    request.text = text ? text : "";
    request.title = title ? title : "";
    request.style = style;
    return proc(&request, context);
  }
  return NativeMessageBox(owner, text ? text : "", title ? title : "", style);
}

int ShowCommentDialog(HWND owner, char* text, int size, std::int32_t* checked) {
  void* context = nullptr;
  if (VEXDISPLAYPROC proc = DisplayCallback(&context)) {
    VEXDISPLAYREQUEST request{};
    request.kind = VEXDISPLAY_DIALOG;
    request.owner = owner;
    request.dialogId = 217;
    request.editText = text;
    request.editSize = size;
    request.checked = checked;
    const int answer = proc(&request, context);
    if (size > 0) text[size - 1] = '\0';  // a callback may not overrun what it was given
    return answer;
  }
  return NativeCommentDialog(owner, text, size, checked);
}

}  // namespace vex::platform

VEXDISPLAYPROC VexSetDisplayCallback(VEXDISPLAYPROC proc, void* context) {
  VEXDISPLAYPROC previous = vex::platform::g_callback;
  vex::platform::g_callback = proc;
  vex::platform::g_context = proc ? context : nullptr;
  return previous;
}
