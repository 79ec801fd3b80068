#pragma once

#include <functional>

namespace ui {

/// Handles the events that wait for the program's windows, and returns. Handlers run inside it.
void PumpEvents();

/// Lets the given time pass, in milliseconds. Events are handled as they come and the thread sleeps
/// between them. A handler that takes longer than the time left delays the return. Works on after
/// the program was told to quit.
void WaitHandlingEvents(int milliseconds);

/// Does work that waits for the disk, on a thread of its own, and returns when it is done. The
/// window is drawn meanwhile; keys and the mouse wait. The work must not touch the window.
void DoBeside(const std::function<void()>& work);

}  // namespace ui
