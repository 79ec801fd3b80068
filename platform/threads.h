#pragma once

#include <cstddef>
#include <functional>

namespace platform {

/// What a thread does with one task, by the task's index.
using Task = std::function<void(std::size_t)>;

/// Does the tasks 0 to `count` - 1, on `threads` threads at the same time (0: as many as the
/// machine has cores), this one among them, and waits for all. Each thread asks `worker` once for
/// what it does its tasks with, and takes the lowest task that none has taken. Threads that the
/// system does not give are done without. What is thrown on any of them is thrown here, the first
/// of it, when all have ended.
void ShareOnThreads(std::size_t count, std::size_t threads, const std::function<Task()>& worker);

/// The same where all threads do their tasks with the same `task`.
void ForEachOnThreads(std::size_t count, std::size_t threads, const Task& task);

}  // namespace platform
