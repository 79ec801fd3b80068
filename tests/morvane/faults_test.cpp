// Runs whose calls to the system fail, that are killed, and that meet another run: whoever reads
// the pages meets whole ones, and the next run completes.
#include "tests/support/faults.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "morvane/run.h"
#include "tests/morvane/site_fixture.h"

namespace morvane::test {
namespace {

namespace fs = std::filesystem;
using support::Fault;

constexpr int kReached = 64;  // added to the exit code of a run that met its fault

struct Ended {
  int code = -1;  // -1: killed
  bool reached = false;
  std::string errors;
  std::string log;
};

/// A program directory with a database that holds games of a log that is gone, and with pages; the
/// log has grown since.
class FaultsTest : public testing::Test {
 protected:
  FaultsTest() {
    const fs::path templates = site.OwnTemplates();
    WriteFile(site.Folder() / "morvane.cfg",
              "[Main]\nsrc_path=templates\ndest_path=output\ndb_path=database\nuse_db=1\n"
              "use_main_log=13\nuse_logparser_log=13\nuse_templateparser_log=13\n"
              "[Logs]\nnumber_of_logs=1\nlogpath0=games.log\nlogtype0=1000\n"
              "[HTML]\nfile_ext=.html\n[TEMPLATES]\nmain_templates_number=1\n"
              "main_template0=one\ngame_templates_number=1\ngame_template0=one_game\n");
    for (const auto& entry : fs::directory_iterator(templates)) fs::remove_all(entry.path());
    WriteFile(templates / "one.htmlt", "{{#players}}{{name}} {{kills}}\n{{/players}}");
    WriteFile(templates / "one_game.htmlt", "{{#players}}{{name}} {{kills}}\n{{/players}}");
    site.Log(Duel("Old", "Older", 7));
    EXPECT_EQ(site.Run(), 0);
    site.Log(Duel("Ann", "Bob", 3));
    EXPECT_EQ(site.Run(), 0);
    before_ = site.Pages();
    fs::copy(site.Folder(), kept_.Path(), fs::copy_options::recursive);
    Grow();
    EXPECT_EQ(site.Run(), 0);
    after_ = site.Pages();
    EXPECT_NE(before_, after_);
    Restore();
  }

  /// The games' dates are reckoned from the time of the log.
  void Grow() {
    site.Log(Duel("Ann", "Bob", 3) + Duel("Bob", "Cid", 5));
    fs::last_write_time(site.Folder() / "games.log", fs::file_time_type() + std::chrono::hours(1));
  }

  /// Everything as it was, and the log grown.
  void Restore() {
    for (const auto& entry : fs::directory_iterator(site.Folder())) fs::remove_all(entry.path());
    fs::copy(kept_.Path(), site.Folder(), fs::copy_options::recursive);
    Grow();
  }

  /// Starts a run of its own process. `prepare` runs in it before it begins.
  template <class Prepare>
  pid_t Start(const Prepare& prepare) const {
    const pid_t child = fork();
    if (child != 0) return child;
    alarm(60);
    const int errors = open(Errors(getpid()).c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    dup2(errors, STDERR_FILENO);
    const int fault = prepare();
    const int code = morvane::Run(site.Folder().string());
    _exit(code + (fault > 0 && support::CountedCalls() >= fault ? kReached : 0));
  }

  Ended Wait(pid_t child) const {
    int status = 0;
    waitpid(child, &status, 0);
    Ended ended;
    ended.errors = ReadFile(Errors(child));
    ended.log = site.Messages("morvane.log.txt") + site.Messages("logparser.log.txt");
    ended.reached = WIFSIGNALED(status);
    if (!WIFEXITED(status)) return ended;
    ended.code = WEXITSTATUS(status) % kReached;
    ended.reached = WEXITSTATUS(status) >= kReached;
    return ended;
  }

  Ended RunWith(const Fault& fault) const {
    return Wait(Start([&] {
      Arm(fault);
      return fault.number;
    }));
  }

  /// Every page is whole: as it was or as it is to be.
  void ExpectWhole(const std::string& what) const {
    for (const auto& [name, text] : Pages()) {
      const bool isOld = before_.contains(name) && before_.at(name) == text;
      const bool isNew = after_.contains(name) && after_.at(name) == text;
      EXPECT_TRUE(isOld || isNew) << what << ": " << name << " holds\n" << text;
    }
    for (const auto& [name, text] : before_) EXPECT_NE(site.Page(name), "") << what << ": " << name;
  }

  /// Without what goes with the next run.
  std::map<std::string, std::string> Pages() const {
    std::map<std::string, std::string> pages = site.Pages();
    std::erase_if(pages, [](const auto& page) { return page.first.starts_with('.'); });
    return pages;
  }

  /// The next run makes all pages as if nothing had happened, and nothing is left beside them.
  void ExpectCompletes(const std::string& what) {
    const Ended next = Wait(Start([] { return 0; }));
    EXPECT_EQ(next.code, 0) << what << ": " << next.errors;
    EXPECT_EQ(site.Pages(), after_) << what;
    std::vector<std::string> files;
    for (const auto& entry : fs::directory_iterator(site.Folder() / "database")) {
      files.push_back(entry.path().filename().string());
    }
    EXPECT_EQ(files, std::vector<std::string>{"morvane.db"}) << what;
  }

  fs::path Errors(pid_t run) const { return told_.Path() / std::to_string(run); }

  SiteRun site;
  TempFolder kept_;
  TempFolder told_;
  std::map<std::string, std::string> before_;
  std::map<std::string, std::string> after_;
};

/// The lines of what was said on the screen without their times, in order.
std::vector<std::string> Lines(const std::string& errors) {
  std::vector<std::string> lines;
  std::istringstream text(errors);
  for (std::string line; std::getline(text, line);) {
    lines.push_back(line.substr(std::min(line.find(" severe "), line.size())));
  }
  std::sort(lines.begin(), lines.end());
  return lines;
}

TEST_F(FaultsTest, EveryCallThatFailsLeavesWholePagesAndIsTold) {
  const struct {
    Fault::Kind kind;
    const char* name;
    int error;
  } kKinds[] = {{Fault::kOpen, "open", EMFILE},    {Fault::kWrite, "write", ENOSPC},
                {Fault::kFlush, "flush", EIO},     {Fault::kRename, "rename", EACCES},
                {Fault::kRemove, "remove", EPERM}, {Fault::kClose, "close", EIO}};
  int unstored = 0;
  for (const auto& kind : kKinds) {
    Ended ended;
    int number = 0;
    do {
      Restore();
      const std::string what = kind.name + std::string(" ") + std::to_string(++number);
      ended = RunWith({kind.kind, number, kind.error, site.Folder().string()});
      // A template that cannot be read has no links to its pages in this run.
      if (kind.kind != Fault::kOpen) ExpectWhole(what);
      const std::vector<std::string> lines = Lines(ended.errors);
      EXPECT_EQ(std::adjacent_find(lines.begin(), lines.end()), lines.end())
          << what << " is told twice: " << ended.errors;
      EXPECT_LE(lines.size(), 3U) << what << ": " << ended.errors;
      if (Pages() != after_) {
        // A log or a template that cannot be read is told, and the pages that there are count.
        EXPECT_TRUE(ended.code == 1 || kind.kind == Fault::kOpen) << what << ": " << ended.errors;
        EXPECT_NE(ended.errors, "") << what << ended.log;
        for (const auto& [name, text] : before_) EXPECT_NE(site.Page(name), "") << what << name;
      }
      if (ended.errors.find("nothing can be stored in the database") != std::string::npos) {
        EXPECT_EQ(Pages(), after_) << what << ": the old games are there to be read";
        EXPECT_EQ(ended.code, 1) << what;
        ++unstored;
      }
      ExpectCompletes(what);
    } while (ended.reached && number < 500);
    EXPECT_GT(number, 1) << kind.name;
    RecordProperty(kind.name, number - 1);
  }
  EXPECT_GT(unstored, 10);
}

TEST_F(FaultsTest, KilledAtEachOfItsCallsARunLeavesWholePages) {
  // A prime, so that the calls of a page are met in all their places over several tests' runs.
  const int step = std::getenv("VANTREL3_KILLS") != nullptr ? 1 : 7;
  Ended ended;
  int number = 1;
  for (;; number += step) {
    Restore();
    const std::string what = "killed at call " + std::to_string(number);
    ended = RunWith({Fault::kAny, number, Fault::kKill, site.Folder().string()});
    if (!ended.reached) break;
    EXPECT_EQ(ended.code, -1) << what;
    ExpectWhole(what);
    ExpectCompletes(what);
  }
  EXPECT_GT(number, 50);
  RecordProperty("calls", number);
}

TEST_F(FaultsTest, OfTwoRunsAtOnceOneWorksAndTheOtherSaysSo) {
  for (int i = 0; i < 10; ++i) {
    Restore();
    const pid_t first = Start([] { return 0; });
    std::this_thread::sleep_for(std::chrono::milliseconds(i % 20));
    const Ended second = Wait(Start([] { return 0; }));
    const Ended ended = Wait(first);
    EXPECT_TRUE(ended.code == 0 || second.code == 0);
    for (const Ended& one : {ended, second}) {
      EXPECT_EQ(Count(one.errors, "Another run of the program is at work"),
                one.code == 0 ? 0U : 1U);
    }
    EXPECT_EQ(site.Pages(), after_);
    ExpectCompletes("two at once");
  }
}

}  // namespace
}  // namespace morvane::test
