// save_bench FOLDER SETTINGS: opens the editor's window on settings files with 2,000 and 20,000
// logs, made in FOLDER from the shipped SETTINGS, presses Save, and prints the longest stretch in
// which no event was handled, as rows of the table of bench/run.sh: medians of some saves.

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTimer>

#include "app/modMain.h"
#include "bench/measure.h"
#include "ui/controls.h"
#include "ui/desktop.h"
#include "ui/style.h"

namespace {

using bench::Cost;

constexpr int kRuns = 15;

/// Feels the pulse of the event loop: the longest time between two beats.
class Pulse : public QObject {
 public:
  Pulse() { startTimer(0); }

  void Begin() {
    longest_ = {};
    last_ = bench::Now();
  }
  Cost Longest() const { return longest_; }

 protected:
  void timerEvent(QTimerEvent* /*event*/) override {
    const Cost now = bench::Now();
    const Cost stretch = now - last_;
    longest_.clock = std::max(longest_.clock, stretch.clock);
    longest_.processor = std::max(longest_.processor, stretch.processor);
    last_ = now;
  }

 private:
  Cost last_;
  Cost longest_;
};

Cost LongestStretch(const QWidget& window, int run) {
  ui::Control<QLineEdit>(window, "txtMinPlayers").setText(QString::number(run));
  for (int i = 0; i < 5; ++i) QApplication::processEvents();
  Pulse pulse;
  QTimer::singleShot(0, &window, [&] {
    pulse.Begin();
    ui::Control<QPushButton>(window, "cmdSave").click();
    QTimer::singleShot(20, &window, &QApplication::quit);
  });
  QApplication::exec();
  return pulse.Longest();
}

void MakeSettings(const std::string& folder, const std::string& shipped, int logs) {
  std::ifstream source(shipped, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(source), {}};
  std::ofstream(folder + "/morvane.cfg", std::ios::binary) << bytes;
  config::SettingsFile file(folder);
  file.WriteIni("Logs", "number_of_logs", std::to_string(logs));
  for (int i = 0; i < logs; ++i) {
    const std::string number = std::to_string(i);
    file.WriteIni("Logs", "logpath" + number, "/srv/quake3/server/baseq3/games_" + number + ".log");
  }
  file.Store();
}

void Measure(const std::string& folder, const std::string& shipped, int logs, double limit) {
  MakeSettings(folder, shipped, logs);
  const config::modIni ini(folder);
  QSettings settings(QString::fromStdString(folder) + "/window.ini", QSettings::IniFormat);
  ui::RealDesktop desktop;
  const auto window = app::Main(ini, desktop, settings);
  std::vector<Cost> stretches;
  stretches.reserve(kRuns);
  for (int run = 0; run < kRuns; ++run) stretches.push_back(LongestStretch(*window, run));
  const Cost stretch = bench::Median(stretches);
  bench::PrintRow(std::to_string(logs) + " logs: a save's longest stretch without an event handled",
                  bench::Fixed(limit, 0) + " ms",
                  bench::Fixed(stretch.processor * 1000 / limit) + " (" +
                      bench::Fixed(stretch.processor * 1000, 1) + " ms of processor time, " +
                      bench::Fixed(stretch.clock * 1000, 1) + " ms on the clock)",
                  "at most 1");
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  ui::UseDesignedLook();
  if (argc != 3) {
    std::fputs("save_bench: FOLDER SETTINGS\n", stderr);
    return 1;
  }
  Measure(argv[1], argv[2], 2000, 16);
  Measure(argv[1], argv[2], 20000, 50);
}
