// Process-level services: the debugger break and the immediate exit.
#pragma once

namespace vex::platform {

// Breaks into the debugger (without one, the process ends as on an unhandled breakpoint).
void DebugBreakNow();

// Ends the process at once with the code: no destructors, no atexit handlers, no flushing.
[[noreturn]] void ExitNow(int code);

// The platform's own break, which DebugBreakNow uses unless a hook is set.
void NativeDebugBreak();

// Tests replace the break with a hook; null restores the real one.
using DebugBreakHook = void (*)();
void SetDebugBreakHook(DebugBreakHook hook);

// The warning beep of the given message-box icon kind (MB_ICON...); nothing where there is no sound.
void Beep(unsigned type);

}  // namespace vex::platform
