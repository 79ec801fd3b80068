#include "platform/threads.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <new>
#include <system_error>
#include <thread>
#include <vector>

namespace platform {
namespace {

/// Runs `work` on several threads at the same time, this one among them.
void RunOnThreads(std::size_t threads, const std::function<void()>& work) {
  std::mutex mutex;
  std::exception_ptr thrown;
  const auto guarded = [&] {
    try {
      work();
    } catch (...) {
      const std::lock_guard lock(mutex);
      if (!thrown) thrown = std::current_exception();
    }
  };
  {
    std::vector<std::jthread> helpers;
    try {
      for (std::size_t i = 1; i < threads; ++i) helpers.emplace_back(guarded);
    } catch (const std::system_error&) {
      // The system gives no more threads: those that run do all the work.
    } catch (const std::bad_alloc&) {
    }
    guarded();
  }
  if (thrown) std::rethrow_exception(thrown);
}

}  // namespace

void ShareOnThreads(std::size_t count, std::size_t threads, const std::function<Task()>& worker) {
  if (threads == 0) threads = std::thread::hardware_concurrency();
  std::atomic<std::size_t> next = 0;
  RunOnThreads(std::min(threads, count), [&] {
    const Task task = worker();
    for (std::size_t i = next++; i < count; i = next++) task(i);
  });
}

void ForEachOnThreads(std::size_t count, std::size_t threads, const Task& task) {
  ShareOnThreads(count, threads, [&] { return task; });
}

}  // namespace platform
