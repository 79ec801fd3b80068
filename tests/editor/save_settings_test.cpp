#include "editor/save_settings.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/editor/fields_test.h"
#include "tests/support/faults.h"

namespace editor {
namespace {

namespace fs = std::filesystem;

using Save = FieldsTest;

constexpr char kExample[] =
    "[Main]\r\nunknown=1\r\n\r\nuse_db = 1\r\n[Logs]\r\n; logs to parse\r\nnumber_of_logs=1\r\n"
    "logpath0=games.log\r\nlogpath1=stale\r\n[Extra]\r\n\r\nkeep=this\r\n";

constexpr char kExampleSaved[] =
    "\r\n\r\n[Main]\r\nlimit_overall_killtables=0\r\nplayers_min_time=\r\n"
    "players_min_games=\r\nplayers_min_kills=\r\ntime_format=\r\nuse_cust_rank=0\r\n"
    "cust_rank_start=\r\ncust_rank_template=\r\nsrc_path=\r\ndest_path=\r\ndb_path=\r\n"
    "use_db=1\r\nuse_main_log=0\r\nuse_logparser_log=0\r\nuse_templateparser_log=0\r\n"
    "use_customrank_log=0\r\n"
    "\r\n\r\n[Logs]\r\n; logs to parse\r\nnumber_of_logs=1\r\nlogpath0=games.log\r\n"
    "logtype0=1000\r\n"
    "\r\n\r\n[Extra]\r\nkeep=this\r\n"
    "\r\n\r\n[Game]\r\nmin_players=\r\nmin_time=\r\nmin_kills=\r\ngame_complete=0\r\n"
    "game_last_placed=\r\n"
    "\r\n\r\n[HTML]\r\ntext_color=#000000\r\nlink_color=#000000\r\nvlink_color=#000000\r\n"
    "alink_color=#000000\r\nbg_color=#000000\r\nbg_image=\r\nfile_ext=.\r\nname0=#000000\r\n"
    "name1=#000000\r\nname2=#000000\r\nname3=#000000\r\nname4=#000000\r\nname5=#000000\r\n"
    "name6=#000000\r\nname7=#000000\r\nname8=#000000\r\nname9=#000000\r\n"
    "\r\n\r\n[KILL TABLES]\r\nhilite_levels=0\r\nhilite_minhilite=\r\ncolumn0=#000000\r\n"
    "column1=#000000\r\ncolumn2=#000000\r\n"
    "\r\n\r\n[TEMPLATES]\r\nmain_templates_number=0\r\nmap_templates_number=0\r\n"
    "game_templates_number=0\r\ngamelist_template=\r\ngamelist_loop_template=\r\n"
    "lastgame_template=\r\nplayer_template=\r\n";

TEST_F(Save, GivesTheWholeFileByteForByte) {
  Open(kExample);
  Click("cmdSave");
  EXPECT_EQ(File(), kExampleSaved);
  EXPECT_EQ(Status(), "Configuration Saved.");
}

TEST_F(Save, SavingTwiceGivesTheSameBytes) {
  for (const char* const bytes :
       {"", "; mine\n\n\n[main]\nuse_db=1\n[Other]\n\n\nkey\n[USER VARS]\na=\nA=2\n=empty\n",
        "[Logs]\rnumber_of_logs=2\rlogpath0=a\r", "\xEF\xBB\xBF[HTML]\r\nname0=red"}) {
    Open(bytes);
    Click("cmdSave");
    const std::string once = File();
    EXPECT_NE(once, bytes);
    Click("cmdSave");
    EXPECT_EQ(File(), once);
    Open(once);
    Click("cmdSave");
    EXPECT_EQ(File(), once) << "nor does loading it again change it";
  }
}

TEST_F(Save, KeepsWhatIsNotTheEditors) {
  Open(
      "before, any header\n  // kept; too\r\n[Extra]\rlone=cr\rno key line, kept\n"
      " [ Game ] trailing\n; inside, a comment\nmine=gone\n[Extra]\nlone=again\n\"x\",y=z\n"
      "[broken\nk=v");
  Click("cmdSave");
  const std::string file = File();
  const std::string kept =
      "before, any header\n  // kept; too\r\n\r\n\r\n[Extra]\rlone=cr\rno key line, kept\n"
      "\n\n [ Game ] trailing\n; inside, a comment\n";
  EXPECT_EQ(file.substr(0, kept.size()), kept);
  EXPECT_NE(file.find("\n\n[Extra]\nlone=again\n\"x\",y=z\n\n\n[broken\nk=v\n"), std::string::npos);
  EXPECT_EQ(file.find("mine=gone"), std::string::npos);
}

TEST_F(Save, FieldsGoIntoTheFileAsTyped) {
  Open("");
  const struct {
    const char* field;
    const char* typed;
    const char* line;
  } cases[] = {
      {"txtFileExtension", "html", "file_ext=.html"},
      {"txtFileExtension", ".htm", "file_ext=.htm"},
      {"txtFileExtension", "", "file_ext=."},
      {"txtSrcPath", "a/b\\c", "src_path=a/b\\c"},
      {"txtMinKills", "  many ", "min_kills=  many "},
      {"txtTimeFormat", "[x];=\"", "time_format=[x];=\""},
      {"txtBkgndImage", "  back.jpg ", "bg_image=back.jpg"},
  };
  for (const auto& [field, typed, line] : cases) {
    Type(field, typed);
    Click("cmdSave");
    EXPECT_TRUE(HasLine(line)) << line << "\n" << File();
  }
  EXPECT_EQ(Text("txtFileExtension"), "") << "the field keeps what was typed";
  EXPECT_EQ(Text("txtBkgndImage"), "back.jpg");

  Box("txtTimeFormat").setText(QString::fromUtf8("\xC3\xA9\xE2\x82\xAC"));
  Click("cmdSave");
  EXPECT_TRUE(HasLine("time_format=\xC3\xA9\xE2\x82\xAC"));
  Box("txtTimeFormat").setText("two\r\nlines\n[Main]");
  Click("cmdSave");
  EXPECT_TRUE(HasLine("time_format=two lines [Main]"));
}

TEST_F(Save, ListsAndOptionsComeBack) {
  Open(
      "[Logs]\nnumber_of_logs=3\nlogpath0=a\nlogpath1=b\nlogpath2=c\n"
      "[USER VARS]\nx=1\ny=2\n");
  Select("lstLogFiles", 1);
  Click("cmdRemovelog");
  Type("txtVariable", "X");
  Type("txtValue", "last wins");
  Click("cmdAddUserVar");
  Type("txtValue", "nameless");
  Click("cmdAddUserVar");
  Click("ckLogScrSevere");
  Click("ckLogFileNorm");
  Click("cmdSave");
  EXPECT_TRUE(HasLine("number_of_logs=2"));
  EXPECT_TRUE(HasLine("logpath1=c"));
  EXPECT_TRUE(HasLine("logtype1=1000"));
  EXPECT_EQ(File().find("logpath2"), std::string::npos);
  EXPECT_TRUE(HasLine("use_logparser_log=9"));
  EXPECT_NE(File().find("[USER VARS]\nx=last wins\ny=2\n=nameless\n\n"), std::string::npos);
}

TEST_F(Save, CopiesTheBackgroundImage) {
  Open("");
  WriteFile("pics/back.jpg", "picture");
  chmod(PathOf("pics/back.jpg").c_str(), 0400);
  const QString out = QString::fromStdString(PathOf("out")).replace('/', '\\');
  Type("txtDestPath", out);

  const struct {
    QString typed;
    QString inField;
    bool copied;
  } cases[] = {
      {"", "", false},
      {"back.jpg", "back.jpg", false},
      {"pics\\missing.jpg", "pics\\missing.jpg", false},
      {"pics\\mis\nsing.jpg", "pics\\mis sing.jpg", false},
      {"  pics\\back.jpg\r\n", "pics\\back.jpg", true},
      {"./pics/back.jpg", "./pics/back.jpg", true},
      {out + "\\images\\back.jpg", out + "\\images\\back.jpg", true},
      {"pics\\", "pics\\", true},
  };
  const fs::path copy = PathOf("out/images/back.jpg");
  for (const auto& [typed, inField, copied] : cases) {
    Box("txtBkgndImage").setText(typed);
    Click("cmdSave");
    EXPECT_EQ(Text("txtBkgndImage"), inField);
    EXPECT_TRUE(HasLine("bg_image=" + inField.toStdString()));
    EXPECT_TRUE(fs::is_directory(copy.parent_path()));
    EXPECT_EQ(fs::exists(copy), copied) << typed.toStdString();
    if (copied) {
      EXPECT_EQ(ReadFile("out/images/back.jpg"), "picture");
    }
  }
  EXPECT_NE(fs::status(copy).permissions() & fs::perms::owner_write, fs::perms::none)
      << "the copy of a closed file can be replaced by the next save";
  EXPECT_TRUE(desktop.messages.empty());
}

TEST_F(Save, ARelativeOutputPathIsTakenFromTheCurrentFolder) {
  Open("");
  fs::create_directories(PathOf("elsewhere"));
  fs::current_path(PathOf("elsewhere"));
  Type("txtDestPath", ".\\output");
  Click("cmdSave");
  EXPECT_TRUE(fs::is_directory(PathOf("elsewhere/output/images")));
}

TEST_F(Save, FailuresAreToldAndLoseNothing) {
  for (const std::string& bytes :
       {std::string("[Main]\nuse_db=1\n"), std::string("\xFF\xFEx\0", 4)}) {
    Open(bytes);
    chmod(PathOf(kFile).c_str(), 0444);
    Type("txtTimeFormat", "changed");
    Click("cmdSave");
    EXPECT_EQ(File(), bytes);
    EXPECT_NE(Status(), "Configuration Saved.");
    EXPECT_EQ(Text("txtTimeFormat"), "changed");
    ASSERT_EQ(desktop.messages.size(), 1U);
    EXPECT_EQ(desktop.messages[0].title, "morvane.cfg");
    EXPECT_EQ(desktop.messages[0].style, ui::MessageStyle::kCritical);
    EXPECT_TRUE(desktop.messages[0].text.contains(QString::fromStdString(PathOf(kFile))));
    desktop.messages.clear();
    chmod(PathOf(kFile).c_str(), 0644);
  }
}

TEST_F(Save, NamesThatCannotStandInTheFileAreTold) {
  Open("[USER VARS]\nkept=1\n");
  for (const char* const name : {"[Main]", "; note", "//", "a = b", " kept "}) {
    Box("txtVariable").setText(name);
    Box("txtValue").setText("2");
    Click("cmdAddUserVar");
  }
  Click("cmdSave");
  EXPECT_NE(File().find("[USER VARS]\nkept=2\na= b=2\n"), std::string::npos) << File();
  EXPECT_EQ(Status(), "Configuration Saved.");
  ASSERT_EQ(desktop.messages.size(), 1U);
  EXPECT_EQ(desktop.messages[0].title, "morvane.cfg");
  EXPECT_TRUE(desktop.messages[0].text.endsWith(":\n\n[Main]\n; note\n//"))
      << desktop.messages[0].text.toStdString();
}

TEST_F(Save, AByteOrderMarkInAValueIsACharacter) {
  const std::string marked = "\xEF\xBB\xBFx";
  const std::string lines = "[USER VARS]\nname=" + marked + "\n" + marked + "=1\n";
  Open("[Main]\ntime_format=" + marked + "\n[Logs]\nnumber_of_logs=1\nlogpath0=" + marked + "\n" +
       lines);
  Click("cmdSave");
  EXPECT_TRUE(HasLine("time_format=" + marked));
  EXPECT_TRUE(HasLine("logpath0=" + marked));
  EXPECT_NE(File().find(lines), std::string::npos);
}

TEST_F(Save, ReadsTheFieldsAfterTheSectionsAreEmptied) {
  Open("[Main]\nuse_db=0\n");
  bool edited = false;
  const SaveResult result = SaveSettings(Window(), Window().Ini(), [&] {
    if (!edited) Box("txtTimeFormat").setText("typed meanwhile");
    edited = true;
  });
  EXPECT_EQ(result.failure, "");
  EXPECT_TRUE(HasLine("time_format=typed meanwhile"));
}

/// What killed saves leave behind bears such names.
std::string HiddenFiles(const fs::path& folder) {
  std::string names;
  for (const auto& entry : fs::directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    if (name.starts_with('.')) names += name + " ";
  }
  return names;
}

/// A process that saves two states in turn until it is killed, and says so after each save.
class Saver {
 public:
  Saver(QWidget& window, const config::modIni& ini, QLineEdit& field) {
    EXPECT_EQ(pipe(pipe_.data()), 0);
    process_ = fork();
    for (int i = 0; process_ == 0; ++i) {
      field.setText(kStates[static_cast<std::size_t>(i % 2)]);
      if (!SaveSettings(window, ini, [] {}).failure.empty()) _exit(2);
      if (write(pipe_[1], "s", 1) != 1) _exit(1);
    }
  }
  Saver(const Saver&) = delete;
  Saver& operator=(const Saver&) = delete;
  ~Saver() {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
    close(pipe_[0]);
    close(pipe_[1]);
  }

  void WaitForSaves(int count) {
    char signal = 0;
    for (int i = 0; i < count; ++i) EXPECT_EQ(read(pipe_[0], &signal, 1), 1);
  }

  static constexpr std::array kStates = {"odd", "even"};

 private:
  std::array<int, 2> pipe_ = {};
  pid_t process_ = 0;
};

TEST_F(Save, EveryCallThatFailsLeavesTheWholeFileAndIsTold) {
  Open("[Main]\ntime_format=old\n");
  const std::string before = File();
  Box("txtTimeFormat").setText("new");
  ASSERT_EQ(SaveSettings(Window(), Window().Ini(), [] {}).failure, "");
  const std::string after = File();
  constexpr int kReached = 2;  // added to 1 for a failure that is told
  using support::Fault;
  for (const auto& [kind, error] : std::map<Fault::Kind, int>{{Fault::kOpen, EMFILE},
                                                              {Fault::kWrite, ENOSPC},
                                                              {Fault::kFlush, EIO},
                                                              {Fault::kRename, EACCES},
                                                              {Fault::kClose, EIO},
                                                              {Fault::kAny, Fault::kKill}}) {
    int number = 0;
    for (bool reached = true; reached; ++number) {
      WriteFile("morvane.cfg", before);
      const pid_t save = fork();
      if (save == 0) {
        support::Arm({kind, number + 1, error, Directory()});
        const bool isTold = !SaveSettings(Window(), Window().Ini(), [] {}).failure.empty();
        _exit((isTold ? 1 : 0) + (support::CountedCalls() > number ? kReached : 0));
      }
      int status = 0;
      waitpid(save, &status, 0);
      reached = WIFSIGNALED(status) || WEXITSTATUS(status) >= kReached;
      const bool isTold = WIFEXITED(status) && WEXITSTATUS(status) % kReached == 1;
      const std::string file = File();
      EXPECT_TRUE(file == after || (file == before && (isTold || error == Fault::kKill)))
          << "kind " << kind << ", call " << number + 1 << "\n"
          << file;
      EXPECT_EQ(SaveSettings(Window(), Window().Ini(), [] {}).failure, "");
      EXPECT_EQ(File(), after);
      EXPECT_EQ(HiddenFiles(Directory()), "");
    }
    EXPECT_GT(number, 1) << "kind " << kind;
  }
}

TEST_F(Save, OfTwoEditorsAtOnceEachSavesWhole) {
  Open("[Main]\ntime_format=\n");
  std::array<std::string, 2> whole;
  for (std::size_t i = 0; i < whole.size(); ++i) {
    Box("txtTimeFormat").setText(Saver::kStates[i]);
    SaveSettings(Window(), Window().Ini(), [] {});
    whole[i] = File();
  }
  {
    Saver one(Window(), Window().Ini(), Box("txtTimeFormat"));
    Saver other(Window(), Window().Ini(), Box("txtTimeFormat"));
    for (int i = 0; i < 40; ++i) {
      one.WaitForSaves(1);
      const std::string file = File();
      ASSERT_TRUE(file == whole[0] || file == whole[1]) << file;
      other.WaitForSaves(1);
    }
  }
  Box("txtTimeFormat").setText("%c");  // a save that changes nothing replaces nothing
  EXPECT_EQ(SaveSettings(Window(), Window().Ini(), [] {}).failure, "");
  EXPECT_EQ(HiddenFiles(Directory()), "");
}

}  // namespace
}  // namespace editor
