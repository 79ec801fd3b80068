#include "tests/engine/engine_test.h"

#include <fstream>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include <QTimer>

namespace engine {

void EngineTest::WriteEngine(const std::string& commands) const {
  WriteFile("morvane.exe", "#!/bin/sh\nhere=${0%/*}\n" + commands + "\n");
  chmod(PathOf("morvane.exe").c_str(), 0755);
}

std::string EngineTest::WaitForTest() const {
  mkfifo(PathOf("gate").c_str(), 0600);
  return "read line < \"$here/gate\"\n";
}

void EngineTest::LetEngineEnd() const { std::ofstream(PathOf("gate")) << "go\n"; }

void EngineTest::During(app::frmMain& window, app::Activity activity,
                        std::function<void()> action) {
  auto* timer = new QTimer(&window);
  QObject::connect(timer, &QTimer::timeout, &window,
                   [&window, timer, activity, action = std::move(action)] {
                     if (window.CurrentActivity() != activity) return;
                     timer->stop();
                     action();
                   });
  timer->start(0);
}

bool EngineTest::HasChildren() {
  const std::string id = std::to_string(getpid());
  std::ifstream children("/proc/" + id + "/task/" + id + "/children");
  return std::string(std::istreambuf_iterator<char>(children), {}).find_first_not_of(" \n") !=
         std::string::npos;
}

}  // namespace engine
