#include "platform/threads.h"

#include <exception>
#include <mutex>
#include <new>
#include <system_error>
#include <thread>
#include <vector>

namespace platform {

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

}  // namespace platform
