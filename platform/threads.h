#pragma once

#include <cstddef>
#include <functional>

namespace platform {

/// Runs `work` on `threads` threads at the same time, this one among them, and waits for all of
/// them. Threads that the system does not give are done without. What `work` throws on any of them
/// is thrown here, the first of it, when all have ended.
void RunOnThreads(std::size_t threads, const std::function<void()>& work);

}  // namespace platform
