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
    std::string output;
    std::string errors;
  } kCases[] = {
      {{"--help"}, 0, "Usage: morvane.exe", ""},
      {{"--version"}, 0, "morvane.exe 1.", ""},
      {{"--verbose"}, 2, "", "unknown argument \"--verbose\""},
      {{"-h"}, 2, "", "--help"},
      {{""}, 2, "", "unknown argument \"\""},
      {{"--help", "games.log"}, 2, "", "unknown argument \"games.log\""},
      {{"games.log"}, 2, "", "all settings stand in morvane.cfg"},
  };
  for (const auto& test : kCases) {
    const Ended ended = Start(test.arguments);
    EXPECT_EQ(ended.code, test.code);
    EXPECT_EQ(ended.output.empty(), test.output.empty());
    EXPECT_EQ(ended.errors.empty(), test.errors.empty());
    EXPECT_NE(ended.output.find(test.output), std::string::npos) << ended.output;
    EXPECT_NE(ended.errors.find(test.errors), std::string::npos) << ended.errors;
    EXPECT_FALSE(fs::exists(site.Output())) << "no run";
  }
}

TEST_F(ProgramTest, TheLastLineNamesTheFirstPage) {
  ASSERT_EQ(Start().code, 0);
  const std::string log = MainLog();
  const std::string last = log.substr(log.rfind('\n', log.size() - 2) + 1);
  const std::string page = last.substr(last.find(site.Folder().string()), std::string::npos);
  EXPECT_TRUE(fs::exists(page.substr(0, page.size() - 1))) << last;
}

TEST_F(ProgramTest, SaysWhatIsWrongWithTheSettingsFile) {
  const struct {
    std::string bytes;
    std::string said;
  } kCases[] = {
      {"", "the file is empty"},
      {"\r\n \n", "the file is empty"},
      {std::string("\xFF\xFE[\0M\0a\0i\0n\0]\0", 14), "The file is UTF-16 text. Store it as UTF-8"},
      {"[Logs]\nlogpath0=games.log\n", "the file has no section [Main]"},
      {"no settings at all", "the file has no section [Main]"},
  };
  for (const auto& test : kCases) {
    WriteFile(site.Folder() / "morvane.cfg", test.bytes);
    const Ended ended = Start();
    EXPECT_EQ(ended.code, 1);
    EXPECT_NE(ended.errors.find(test.said), std::string::npos) << ended.errors;
    EXPECT_NE(MainLog().find(test.said), std::string::npos);
  }
  fs::remove(site.Folder() / "morvane.cfg");
  ASSERT_EQ(mkfifo((site.Folder() / "morvane.cfg").c_str(), 0666), 0);
  const Ended ended = Start();
  EXPECT_EQ(ended.code, 1);
  EXPECT_NE(ended.errors.find("Not a regular file"), std::string::npos);
}

TEST_F(ProgramTest, AScreenThatHasGoneCostsNoPage) {
  site.Set("Main", "use_logparser_log", "15");
  site.Set("Main", "use_main_log", "15");
  ASSERT_EQ(Start().code, 0);
  const std::map<std::string, std::string> pages = site.Pages();
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
    const Ended ended = Start({}, surroundings);
    EXPECT_EQ(ended.signal, 0);
    EXPECT_EQ(ended.code, 0);
    EXPECT_EQ(site.Pages().size(), pages.size());
    for (const char* log : {"morvane.log.txt", "logparser.log.txt"}) {
      const std::string text = site.Messages(log);
      EXPECT_EQ(Count(text, "\n"), Count(text, " normal "))
          << "nothing but messages in it: " << text;
    }
    for (const auto& [name, text] : site.Pages()) {
      EXPECT_EQ(text.find(" normal "), std::string::npos) << name << " was written into";
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
  const fs::path log = site.Folder() / "morvane.log.txt";
  const auto expectTold = [&](const Ended& ended, const std::string& reason) {
    EXPECT_EQ(ended.code, 0);
    EXPECT_EQ(Count(ended.errors, "morvane.log.txt: cannot be written: " + reason), 1U)
        << ended.errors;
  };
  ASSERT_EQ(mkfifo(log.c_str(), 0666), 0);
  expectTold(Start(), "");
  EXPECT_TRUE(fs::is_fifo(log)) << "left as it is";
  fs::remove(log);
  fs::create_directory(log);
  site.Set("HTML", "file_ext", "a/b");
  const Ended ended = Start();
  expectTold(ended, "Is a directory");
  EXPECT_EQ(Count(ended.errors, "the file extension"), 1U) << "severe, so on the screen instead";
  fs::remove(log);
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

/// A setting of the shipped ones that puts a page on a file of the engine's own.
struct Collision {
  std::string what;
  std::vector<std::array<std::string, 3>> settings;
  std::string file;  // that must stay as it is; not made when it is empty
  bool exists = true;
};

TEST_F(ProgramTest, PagesNeverLandOnWhatTheEngineReadsOrKeeps) {
  const Collision kCollisions[] = {
      {"templates", {{"Main", "dest_path", "templates"}}, "templates/style.css"},
      {"templates, by another spelling",
       {{"Main", "dest_path", "link"}, {"HTML", "file_ext", ".htmlt"}},
       "templates/stats.htmlt"},
      {"the log",
       {{"Main", "dest_path", "."},
        {"HTML", "file_ext", ".log"},
        {"TEMPLATES", "main_template0", "games"}},
       "games.log"},
      {"the log, by a link",
       {{"Main", "dest_path", "real"},
        {"HTML", "file_ext", ".log"},
        {"TEMPLATES", "main_template0", "games"},
        {"Logs", "logpath0", "linked.log"}},
       "real/games.log"},
      {"what a pattern would find",
       {{"Main", "dest_path", "."},
        {"HTML", "file_ext", ".log"},
        {"TEMPLATES", "main_template0", "games"},
        {"Logs", "logpath0", "g*.lo[g]"}},
       "games.log"},
      {"the settings",
       {{"Main", "dest_path", "."},
        {"HTML", "file_ext", "cfg"},
        {"TEMPLATES", "main_template0", "morvane"}},
       "morvane.cfg"},
      {"the list of players, though there is none yet",
       {{"Main", "dest_path", "."},
        {"HTML", "file_ext", ".txt"},
        {"TEMPLATES", "main_template0", "players"}},
       "players.txt",
       false},
      {"a message log",
       {{"Main", "dest_path", "."},
        {"HTML", "file_ext", ".log.txt"},
        {"TEMPLATES", "main_template0", "morvane"}},
       ""},
      {"what the database keeps beside it",
       {{"Main", "dest_path", "."},
        {"HTML", "file_ext", ".db-journal"},
        {"TEMPLATES", "main_template0", "morvane"},
        {"Main", "db_path", "."}},
       "morvane.db-journal",
       false},
  };
  const std::string settings = ReadFile(site.Folder() / "morvane.cfg");
  const fs::path templates = site.OwnTemplates();
  site.Set("Main", "src_path", "templates");
  for (const char* name : {"games", "morvane", "players"}) {
    fs::copy(templates / "stats.htmlt", templates / (std::string(name) + ".htmlt"));
  }
  WriteFile(site.Folder() / "real/games.log", Duel("Ann", "Bob", 3));
  fs::create_symlink("real/games.log", site.Folder() / "linked.log");
  fs::create_directory_symlink("templates", site.Folder() / "link");
  const std::string plain = ReadFile(site.Folder() / "morvane.cfg");
  for (const Collision& test : kCollisions) {
    WriteFile(site.Folder() / "morvane.cfg", plain);
    for (const auto& [section, key, value] : test.settings) site.Set(section, key, value);
    const fs::path file = site.Folder() / test.file;
    const std::string before = ReadFile(file);
    EXPECT_EQ(Start().code, 1) << test.what;
    EXPECT_EQ(Count(MainLog(), "the engine reads or keeps a file of this name"), 1U)
        << test.what << ": " << MainLog();
    EXPECT_EQ(MainLog().find('<'), std::string::npos) << test.what;
    if (test.file.empty()) continue;
    EXPECT_EQ(fs::exists(file), test.exists) << test.what;
    EXPECT_EQ(ReadFile(file), before) << test.what;
  }
}

TEST_F(ProgramTest, AFileExtensionWithAFolderInItIsRefusedOnce) {
  site.Set("HTML", "file_ext", "..\\x/html");
  EXPECT_EQ(Start().code, 0);
  EXPECT_EQ(Count(MainLog(), " severe "), 1U) << MainLog();
  EXPECT_NE(site.Page("stats.html"), "");
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
