// window_start COMMAND...: starts a program on the X server of DISPLAY, waits until a window of it
// is drawn and the program rests, ends it and prints: seconds on the clock until the window was
// drawn, seconds of the processor until the program rested, megabytes of memory at most. The server
// should have no other programs, and no window manager.

#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <poll.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <xcb/damage.h>
#include <xcb/xcb.h>

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr int kLeastWidth = 200;  // other windows are splash and helper windows
constexpr milliseconds kPatience{120'000};
constexpr milliseconds kRest{400};

struct Free {
  void operator()(void* pointer) const { std::free(pointer); }
};

[[noreturn]] void Fail(const char* what) {
  std::fprintf(stderr, "window_start: %s\n", what);
  std::exit(1);
}

/// Tells when a window of the programs on an X server has been drawn.
class Watcher {
 public:
  Watcher() : server_(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(server_) != 0) Fail("no X server");
    damage_ = xcb_get_extension_data(server_, &xcb_damage_id);
    if (damage_->present == 0) Fail("the X server tells nothing of drawing");
    std::free(xcb_damage_query_version_reply(
        server_, xcb_damage_query_version(server_, XCB_DAMAGE_MAJOR_VERSION, 0), nullptr));
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(server_)).data->root;
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(server_, root, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(server_);
  }
  Watcher(const Watcher&) = delete;
  Watcher& operator=(const Watcher&) = delete;
  ~Watcher() { xcb_disconnect(server_); }

  /// Whether a window was drawn before the patience ended.
  bool WaitForWindow() {
    const Clock::time_point end = Clock::now() + kPatience;
    while (Clock::now() < end) {
      pollfd wait{xcb_get_file_descriptor(server_), POLLIN, 0};
      poll(&wait, 1, 100);
      while (const auto event = NextEvent()) {
        if (IsDrawn(*event)) return true;
      }
    }
    return false;
  }

 private:
  std::unique_ptr<xcb_generic_event_t, Free> NextEvent() {
    return std::unique_ptr<xcb_generic_event_t, Free>(xcb_poll_for_event(server_));
  }

  bool IsDrawn(const xcb_generic_event_t& event) {
    const int type = event.response_type & 0x7F;
    if (type == damage_->first_event + XCB_DAMAGE_NOTIFY) return true;
    if (type == XCB_MAP_NOTIFY) {
      Watch(reinterpret_cast<const xcb_map_notify_event_t&>(event).window);
    }
    return false;
  }

  void Watch(xcb_window_t window) {
    const std::unique_ptr<xcb_get_geometry_reply_t, Free> geometry(
        xcb_get_geometry_reply(server_, xcb_get_geometry(server_, window), nullptr));
    if (geometry == nullptr || geometry->width < kLeastWidth) return;
    xcb_damage_create(server_, xcb_generate_id(server_), window, XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
    xcb_flush(server_);
  }

  xcb_connection_t* server_;
  const xcb_query_extension_reply_t* damage_ = nullptr;
};

pid_t Start(char** command) {
  const pid_t child = fork();
  if (child != 0) return child;
  execvp(command[0], command);
  std::perror(command[0]);
  _exit(127);
}

/// The ticks of the processor that a process has used.
long TicksOf(pid_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/stat");
  std::string text;
  std::getline(file, text, ')');
  constexpr int kFieldsBefore = 11;
  for (int i = 0; i < kFieldsBefore; ++i) file >> text;
  long user = 0;
  long system = 0;
  file >> user >> system;
  return user + system;
}

void WaitForRest(pid_t process) {
  const Clock::time_point end = Clock::now() + kPatience;
  Clock::time_point since = Clock::now();
  long ticks = -1;
  while (Clock::now() < end && Clock::now() - since < kRest) {
    std::this_thread::sleep_for(milliseconds(20));
    const long now = TicksOf(process);
    if (now != ticks) since = Clock::now();
    ticks = now;
  }
}

double Seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) Fail("which program?");
  Watcher watcher;
  const Clock::time_point begin = Clock::now();
  const pid_t child = Start(argv + 1);
  const bool shown = watcher.WaitForWindow();
  const std::chrono::duration<double> taken = Clock::now() - begin;
  if (shown) WaitForRest(child);
  kill(child, SIGKILL);
  rusage usage{};
  wait4(child, nullptr, 0, &usage);
  if (!shown) Fail("no window came");
  std::printf("%f %f %f\n", taken.count(), Seconds(usage.ru_utime) + Seconds(usage.ru_stime),
              static_cast<double>(usage.ru_maxrss) / 1024);
}
