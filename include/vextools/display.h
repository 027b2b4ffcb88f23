// The display step: how the library shows a message box or one of its dialogs.
// A host may install a callback that shows them itself (a host without a window system, or one that
// runs unattended). Without a callback, Windows shows the real box or dialog; other platforms show
// nothing and answer with the box's default button, and a dialog counts as not shown.
#pragma once

#include <cstdint>

#include "export.h"
#include "types.h"

enum : std::int32_t {
  VEXDISPLAY_MESSAGEBOX = 1,  // text, title, style: answer with a button code (IDOK ...)
  VEXDISPLAY_DIALOG = 2,      // a dialog of the library: answer IDOK, IDCANCEL, or -1 when not shown
};

struct VEXDISPLAYREQUEST {
  std::int32_t kind;
  HWND owner;
  const char* text;       // message box text
  const char* title;      // message box title
  std::uint32_t style;    // message box style (MB_ bits)
  std::int32_t dialogId;  // dialog resource number; 217 is the assertion comment dialog
  char* editText;         // dialog 217: text of edit control 101, in and out
  std::int32_t editSize;  // its size in bytes, terminator included
  std::int32_t* checked;  // dialog 217: state of check box 102, in and out
};

typedef std::int32_t (*VEXDISPLAYPROC)(const VEXDISPLAYREQUEST* request, void* context);

// Installs (or, with a null proc, removes) the host's display callback; returns the previous one.
VEXTOOLS_EXTERN_C VEXTOOLS_API VEXDISPLAYPROC VexSetDisplayCallback(VEXDISPLAYPROC proc, void* context);
