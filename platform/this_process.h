#pragma once

namespace platform {

/// Makes this process outlive its surroundings; to be called first thing. A write to a pipe that
/// nobody reads any more, or beyond the limit of a file's size, fails instead of ending the
/// process. Standard input, output and error that are closed lead nowhere from now on, so that no
/// file opened later takes their numbers and is written into. Without memory exceptions are thrown
/// and caught as ever.
void OutliveSurroundings();

/// Gives the system back what memory is free in this process, also within that which other threads
/// have used.
void GiveMemoryBack();

}  // namespace platform
