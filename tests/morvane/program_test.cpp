// The program itself, started as a child under the limits and in the surroundings that developers'
// machines hide.
#include <array>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "morvane/site/page_list.h"
#include "tests/morvane/site_fixture.h"

namespace morvane::test {
namespace {

namespace fs = std::filesystem;

struct Ended {
  int code = -1;
  int signal = 0;
  std::string output;
  std::string errors;
};

/// A program directory with the program in it.
class ProgramTest : public testing::Test {
 protected:
  ProgramTest() {
    std::error_code error;
    fs::create_hard_link(MORVANE_PROGRAM, Program(), error);
    if (error) fs::copy_file(MORVANE_PROGRAM, Program());
    fs::permissions(site.Folder(), fs::perms::all);
    for (const char* key :
         {"use_main_log", "use_logparser_log", "use_templateparser_log", "use_customrank_log"}) {
      site.Set("Main", key, "13");  // all into the files, the severe on the screen too
    }
    site.Log(Duel("Ann", "Bob", 3));
  }

  fs::path Program() const { return site.Folder() / "morvane.exe"; }
  std::string MainLog() const { return site.Messages("morvane.log.txt"); }

  /// Starts the program and waits for its end. `prepare` runs in the child before it begins.
  Ended Start(
      const std::vector<std::string>& arguments = {},
      const std::function<void()>& prepare = [] {}) const {
    const TempFolder said;
    const fs::path outputFile = said.Path() / "output";
    const fs::path errorFile = said.Path() / "errors";
    const pid_t child = fork();
    if (child == 0) {
      alarm(60);
      const int output = open(outputFile.c_str(), O_WRONLY | O_CREAT, 0666);
      const int errors = open(errorFile.c_str(), O_WRONLY | O_CREAT, 0666);
      dup2(output, STDOUT_FILENO);
      dup2(errors, STDERR_FILENO);
      close(output);
      close(errors);
      prepare();
      std::vector<std::string> texts = {Program().string()};
      texts.insert(texts.end(), arguments.begin(), arguments.end());
      std::vector<char*> pointers;
      for (std::string& text : texts) pointers.push_back(text.data());
      pointers.push_back(nullptr);
      execv(pointers[0], pointers.data());
      _exit(126);
    }
    int status = 0;
    waitpid(child, &status, 0);
    Ended ended;
    if (WIFEXITED(status)) ended.code = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) ended.signal = WTERMSIG(status);
    ended.output = ReadFile(outputFile);
    ended.errors = ReadFile(errorFile);
    return ended;
  }

  SiteRun site;
};

void Limit(decltype(RLIMIT_FSIZE) what, rlim_t most) {
  const rlimit limit = {most, most};
  setrlimit(what, &limit);
}

TEST_F(ProgramTest, AnswersItsArguments) {
  const struct {
    std::vector<std::string> arguments;
    int code;
    std::string said;  // on the screen, or as an error
  } kCases[] = {
      {{"--help"}, 0, "Usage: morvane.exe"},
      {{"--version"}, 0, "morvane.exe 1."},
      {{"-h"}, 2, "--help"},
      {{""}, 2, "unknown argument \"\""},
      {{"--help", "games.log"}, 2, "unknown argument \"games.log\""},
      {{"games.log"}, 2, "all settings stand in morvane.cfg"},
  };
  for (const auto& test : kCases) {
    const Ended ended = Start(test.arguments);
    EXPECT_EQ(ended.code, test.code);
    EXPECT_EQ(Count(test.code == 0 ? ended.output : ended.errors, test.said), 1U) << test.said;
    EXPECT_EQ(test.code == 0 ? ended.errors : ended.output, "");
    EXPECT_FALSE(fs::exists(site.Output())) << "no run";
  }
}

TEST_F(ProgramTest, SaysWhatIsWrongWithTheSettingsFile) {
  const fs::path file = site.Folder() / "morvane.cfg";
  const auto expectSaid = [&](const std::string& what) {
    const Ended ended = Start();
    EXPECT_EQ(ended.code, 1);
    EXPECT_EQ(Count(ended.errors, what), 1U) << ended.errors;
    EXPECT_EQ(Count(MainLog(), what), 1U) << MainLog();
  };
  for (const auto& [bytes, said] : std::vector<std::pair<std::string, std::string>>{
           {"", "the file is empty"},
           {"\r\n \n", "the file is empty"},
           {{"\xFF\xFE[\0M\0a\0i\0n\0]\0", 14}, "The file is UTF-16 text. Store it as UTF-8"},
           {"[Logs]\nlogpath0=games.log\n", "the file has no section [Main]"}}) {
    WriteFile(file, bytes);
    expectSaid(said);
  }
  fs::remove(file);
  expectSaid("No such file");
  ASSERT_EQ(mkfifo(file.c_str(), 0666), 0);
  expectSaid("Not a regular file");
}

TEST_F(ProgramTest, AScreenThatHasGoneCostsNoPage) {
  site.Set("Main", "use_logparser_log", "15");
  site.Set("Main", "use_main_log", "15");
  ASSERT_EQ(Start().code, 0);
  const std::map<std::string, std::string> pages = site.Pages();
  const std::string last = MainLog().substr(MainLog().rfind('\n', MainLog().size() - 2) + 1);
  const std::string page = last.substr(last.find(site.Folder().string()));
  EXPECT_TRUE(fs::exists(page.substr(0, page.size() - 1))) << "the first page: " << last;
  const std::vector<std::function<void()>> kSurroundings = {
      [] {  // nobody reads the pipe any more
        std::array<int, 2> ends{};
        if (pipe(ends.data()) != 0) _exit(125);
        close(ends[0]);
        dup2(ends[1], STDOUT_FILENO);
        dup2(ends[1], STDERR_FILENO);
      },
      [] {
        for (int number = 0; number < 3; ++number) close(number);
      },
      [] { close(STDOUT_FILENO); },
      [] { close(STDERR_FILENO); },
      [] { dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO); },
  };
  for (const auto& surroundings : kSurroundings) {
    fs::remove_all(site.Output());
    EXPECT_EQ(Start({}, surroundings).code, 0);
    EXPECT_EQ(site.Pages(), pages) << "nothing is missing, nothing was written into a page";
    for (const char* log : {"morvane.log.txt", "logparser.log.txt"}) {
      const std::string text = site.Messages(log);
      EXPECT_EQ(Count(text, "\n"), Count(text, " normal ")) << "only messages in it: " << text;
    }
  }
}

TEST_F(ProgramTest, FilesThatCannotBeWrittenAreToldOnceAndTheEndIsNotZero) {
  ASSERT_EQ(Start().code, 0);
  const std::size_t pages = site.Pages().size();
  fs::remove_all(site.Output());
  // Larger than the messages and than the smallest pages.
  const Ended ended = Start({}, [] { Limit(RLIMIT_FSIZE, 2000); });
  EXPECT_EQ(ended.signal, 0);
  EXPECT_EQ(ended.code, 1);
  EXPECT_EQ(Count(MainLog(), "cannot be written: File too large; nor can "), 1U) << MainLog();
  const std::size_t written = site.Pages().size();
  EXPECT_LT(written, pages);
  for (const auto& entry : fs::directory_iterator(site.Output())) {
    const std::string name = entry.path().filename().string();
    EXPECT_TRUE(name.front() != '.' || name == PageList::kFileName) << name;
  }
  EXPECT_EQ(Start().code, 0) << "the next run completes";
  EXPECT_EQ(site.Pages().size(), pages);
}

TEST_F(ProgramTest, MessageLogsThatCannotBeWrittenAreToldOnTheScreen) {
  site.Set("Main", "use_main_log", "5");
  site.Set("HTML", "file_ext", "..\\x/html");
  EXPECT_EQ(Start().code, 0);
  EXPECT_EQ(Count(MainLog(), " severe the file extension"), 1U) << MainLog();
  EXPECT_NE(site.Page("stats.html"), "");
  const fs::path log = site.Folder() / "morvane.log.txt";
  fs::remove(log);
  ASSERT_EQ(mkfifo(log.c_str(), 0666), 0);
  EXPECT_EQ(Count(Start().errors, "morvane.log.txt: cannot be written: "), 1U);
  EXPECT_TRUE(fs::is_fifo(log)) << "left as it is";
  fs::remove(log);
  fs::create_directory(log);
  const std::string errors = Start().errors;
  EXPECT_EQ(Count(errors, "morvane.log.txt: cannot be written: Is a directory"), 1U) << errors;
  EXPECT_EQ(Count(errors, "the file extension"), 1U) << "severe, so on the screen instead";
}

TEST_F(ProgramTest, FewerThreadsMakeTheSamePages) {
  site.Log(RichLog());
  ASSERT_EQ(Start().code, 0);
  const std::map<std::string, std::string> pages = site.Pages();
  fs::remove_all(site.Output());
  // The limit on threads does not hold for root.
  const Ended ended = Start({}, [] {
    if (getuid() == 0 && setuid(65534) != 0) _exit(125);
    Limit(RLIMIT_NPROC, 1);
  });
  EXPECT_EQ(ended.code, 0) << ended.errors;
  EXPECT_EQ(site.Pages(), pages);
}

#if !defined(__SANITIZE_ADDRESS__)  // which takes more memory than there is on purpose
TEST_F(ProgramTest, WithoutMemoryItSaysSo) {
  std::string log;
  for (int game = 0; log.size() < 1'000'000; ++game) {
    log += Duel("Player" + std::to_string(game), "Other" + std::to_string(game), 1);
  }
  site.Log(log);
  for (const char* key : {"player_template", "gamelist_template", "lastgame_template"}) {
    site.Set("TEMPLATES", key, "");
  }
  for (const char* key : {"game_templates_number", "map_templates_number"}) {
    site.Set("TEMPLATES", key, "0");
  }
  int failed = 0;
  for (rlim_t megabytes = 12; megabytes <= 60; megabytes += 4) {
    const Ended ended = Start({}, [&] { Limit(RLIMIT_AS, megabytes << 20); });
    EXPECT_EQ(ended.signal, 0) << megabytes << " MB: " << ended.errors;
    if (ended.code == 0) break;
    EXPECT_EQ(ended.code, 1) << megabytes;
    EXPECT_NE(ended.errors + MainLog(), "") << megabytes;
    failed += ended.errors.find("not enough memory") != std::string::npos ? 1 : 0;
  }
  EXPECT_GT(failed, 0);
}
#endif

TEST_F(ProgramTest, PagesNeverLandOnWhatTheEngineReadsOrKeeps) {
  const fs::path templates = site.OwnTemplates();
  for (const char* name : {"games", "morvane", "players"}) {
    fs::copy(templates / "stats.htmlt", templates / (std::string(name) + ".htmlt"));
  }
  WriteFile(site.Folder() / "real/games.log", Duel("Ann", "Bob", 3));
  fs::create_symlink("real/games.log", site.Folder() / "linked.log");
  fs::create_directory_symlink("templates", site.Folder() / "link");
  const struct {
    std::string what;
    std::string folder;  // of the pages
    std::string extension;
    std::string page;
    std::string log;
    std::string file;  // that must stay as it is
  } kCases[] = {
      {"templates", "templates", ".html", "stats", "games.log", "templates/style.css"},
      {"templates, by a link", "link", ".htmlt", "stats", "games.log", "templates/stats.htmlt"},
      {"the log", ".", ".log", "games", "games.log", "games.log"},
      {"the log, by a link", "real", ".log", "games", "linked.log", "real/games.log"},
      {"what a pattern would find", ".", ".log", "games", "g*.lo[g]", "games.log"},
      {"the settings", ".", "cfg", "morvane", "games.log", "morvane.cfg"},
      {"players, none yet", ".", ".txt", "players", "games.log", "players.txt"},
      {"a message log", ".", ".log.txt", "morvane", "games.log", ""},
      {"what the database keeps", ".", ".db-journal", "morvane", "games.log", "morvane.db-journal"},
  };
  for (const auto& test : kCases) {
    site.Set("Main", "db_path", ".");
    site.Set("Main", "dest_path", test.folder);
    site.Set("HTML", "file_ext", test.extension);
    site.Set("TEMPLATES", "main_template0", test.page);
    site.Set("Logs", "logpath0", test.log);
    const fs::path file = site.Folder() / test.file;
    const bool exists = fs::exists(file);
    const std::string before = ReadFile(file);
    EXPECT_EQ(Start().code, 1) << test.what;
    EXPECT_EQ(Count(MainLog(), "the engine reads or keeps a file of this name"), 1U)
        << test.what << ": " << MainLog();
    EXPECT_EQ(MainLog().find('<'), std::string::npos) << test.what;
    EXPECT_EQ(fs::exists(file), exists) << test.what;
    EXPECT_EQ(ReadFile(file), before) << test.what;
  }
}

TEST_F(ProgramTest, PipesAndDevicesAreNoFiles) {
  const fs::path templates = site.OwnTemplates();
  for (const char* name : {"map.htmlt", "style.css", "custrank.htmlt"}) {
    fs::remove(templates / name);
    ASSERT_EQ(mkfifo((templates / name).c_str(), 0666), 0);
  }
  fs::remove(site.Folder() / "games.log");
  WriteFile(site.Folder() / "other.log", Duel("Ann", "Bob", 3));
  ASSERT_EQ(mkfifo((site.Folder() / "games.log").c_str(), 0666), 0);
  site.Set("Logs", "number_of_logs", "2");
  site.Set("Logs", "logpath1", "other.log");
  site.Set("Logs", "logtype1", "1000");
  site.Set("HTML", "bg_image", "/dev/zero");
  site.Set("Main", "use_cust_rank", "1");
  const Ended ended = Start();
  EXPECT_EQ(ended.signal, 0);
  EXPECT_EQ(Count(ended.errors, "Not a regular file"), 5U) << ended.errors;
  EXPECT_NE(site.Page("stats.html"), "");
}

}  // namespace
}  // namespace morvane::test
