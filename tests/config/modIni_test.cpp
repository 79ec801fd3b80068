#include "config/modIni.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <sys/stat.h>
#include <vector>

#include "tests/support/files.h"
#include "tests/support/other_user.h"

namespace config {
namespace {

namespace fs = std::filesystem;

/// A program directory of its own for every test.
class ModIni : public testing::Test {
 protected:
  fs::path Config() const { return directory_ / "morvane.cfg"; }
  void Write(const std::string& bytes) const { support::WriteFile(Config(), bytes); }
  std::string Bytes() const { return support::ReadFile(Config()); }
  std::size_t FilesInDirectory() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(directory_), fs::directory_iterator()));
  }

  const support::TempFolder folder_;
  const fs::path directory_ = folder_.Path();
};

TEST_F(ModIni, EachCallSeesTheOnesBefore) {
  modIni ini(directory_);
  EXPECT_EQ(ini.ReadIni("MAIN", "time_format"), "");
  ini.WriteIni("Main", "time_format", "%X");
  EXPECT_EQ(ini.ReadIni("MAIN", "time_format"), "%X");
  EXPECT_EQ(Bytes(), "[Main]\r\ntime_format=%X\r\n");
  Write("[main]\ntime_format=%x\n");
  EXPECT_EQ(ini.ReadIni("MAIN", "time_format"), "%x");
}

TEST_F(ModIni, ReadsAtMost255Characters) {
  modIni ini(directory_);
  std::string accents;
  for (int i = 0; i < 300; ++i) accents += "\xC3\xA9";
  Write("[a]\nlong=\"" + std::string(300, 'x') + "\"\naccents=" + accents + "\n");
  EXPECT_EQ(ini.ReadIni("a", "long"), std::string(255, 'x'));
  EXPECT_EQ(ini.ReadIni("a", "accents"), accents.substr(0, 510));
}

TEST_F(ModIni, ALoadedFileIsAValue) {
  Write("[a]\nk=1\n");
  SettingsFile file(directory_);
  file.ClearSection("a");
  file.WriteIni("a", "j", "3");
  EXPECT_EQ(file.ReadIni("a", "j"), "3");
  SettingsFile other = file;
  other.WriteIni("a", "j", "4");
  EXPECT_EQ(file.ReadIni("a", "j"), "3");
  EXPECT_EQ(Bytes(), "[a]\nk=1\n") << "nothing is written before it is stored";
  EXPECT_EQ(file.Store(), "");
  EXPECT_EQ(Bytes(), "\n\n[a]\nj=3\n");
  EXPECT_EQ(FilesInDirectory(), 1U);
  EXPECT_EQ(other.ReadIni("a", "j"), "4");
}

TEST_F(ModIni, KeepsPermissionsAndLinks) {
  Write("[a]\nk=1\n");
  fs::rename(Config(), directory_ / "real.cfg");
  fs::create_symlink("real.cfg", Config());
  fs::permissions(directory_ / "real.cfg", fs::perms(0640));
  modIni(directory_).WriteIni("a", "k", "2");
  EXPECT_TRUE(fs::is_symlink(Config()));
  EXPECT_EQ(fs::status(directory_ / "real.cfg").permissions(), fs::perms(0640));
  EXPECT_EQ(Bytes(), "[a]\nk=2\n");
}

TEST_F(ModIni, SaysWhyAFileCannotBeWritten) {
  const auto reasonFor = [&] {
    SettingsFile file(directory_);
    file.WriteIni("a", "k", "2");
    return file.Store();
  };
  Write("[a]\nk=1\n");
  fs::permissions(Config(), fs::perms(0444));
  EXPECT_EQ(reasonFor(), "Permission denied");
  modIni(directory_).WriteIni("a", "k", "2");
  EXPECT_EQ(Bytes(), "[a]\nk=1\n");
  EXPECT_EQ(FilesInDirectory(), 1U);

  fs::permissions(Config(), fs::perms(0644));
  Write("\xFF\xFE[");
  EXPECT_NE(reasonFor().find("UTF-16"), std::string::npos);
  EXPECT_EQ(Bytes(), "\xFF\xFE[");

  fs::remove(Config());
  fs::create_directory(Config());
  EXPECT_EQ(reasonFor(), "Is a directory");
  fs::remove(Config());
  fs::create_symlink("morvane.cfg", Config());
  EXPECT_NE(reasonFor(), "");
}

TEST_F(ModIni, AnUnchangedFileIsLeftAloneAndMayBeClosedToWriting) {
  Write("[a]\nk=1\n");
  fs::permissions(Config(), fs::perms(0444));
  const fs::file_time_type before = fs::last_write_time(Config()) - std::chrono::hours(1);
  fs::last_write_time(Config(), before);
  EXPECT_EQ(SettingsFile(directory_).Store(), "");
  SettingsFile file(directory_);
  file.WriteIni("a", "k", "2");
  EXPECT_EQ(file.Store(), "Permission denied");
  file.WriteIni("a", "k", "1");
  EXPECT_EQ(file.Store(), "");
  EXPECT_EQ(fs::last_write_time(Config()), before);
}

TEST_F(ModIni, WhatIsNoRegularFileIsRefusedAndNeverWaitedFor) {
  ASSERT_EQ(mkfifo(Config().c_str(), 0666), 0);
  modIni(directory_).WriteIni("a", "k", "2");
  EXPECT_EQ(modIni(directory_).ReadIni("a", "k"), "");
  SettingsFile file(directory_);
  EXPECT_EQ(file.LoadFailure(), "Not a regular file");
  EXPECT_EQ(file.Store(), "Not a regular file");
  EXPECT_TRUE(fs::is_fifo(Config()));
}

// The file on disk against a text in memory: single writes, loaded files that are stored, loaded
// files that are dropped, and other programs that write it in between.
TEST_F(ModIni, HoldsWhatItsHistoryLeaves) {
  std::mt19937 random(11);
  const auto any = [&](const std::vector<std::string>& texts) {
    return texts[random() % texts.size()];
  };
  std::string disk;
  const auto edit = [&](auto& first, auto& second) {
    const std::string section = any({"a", "A ", "b", "c]", ""});
    const std::string key = any({"k", "K", "j", " l ", "[m"});
    const std::string value = any({"1", "2", " 3", "\"4\""});
    first.WriteIni(section, key, value);
    second.Set(section, key, value);
  };
  Write(disk);
  for (int step = 0; step < 500; ++step) {
    const auto kind = random() % 20;
    modIni ini(directory_);
    ProfileText model(disk);
    if (kind == 0) {
      Write(disk = any({"", "[a]\nk=x\n", "[b]\r\n;c\r\n\r\n[A]\r\nj=y", "junk\n[c\n"}));
    } else if (kind < 8) {
      edit(ini, model);
      disk = model.Bytes();
    } else {
      SettingsFile file = ini.Load();
      for (auto edits = random() % 4; edits > 0; --edits) edit(file, model);
      if (random() % 4 == 0) {
        file.ClearSection("a");
        model.EmptySection("a");
      }
      ASSERT_EQ(Bytes(), disk) << "step " << step;
      if (kind < 14) {
        ASSERT_EQ(file.Store(), "");
        disk = model.Bytes();
      }
    }
    ASSERT_EQ(Bytes(), disk) << "step " << step;
    ASSERT_EQ(ini.ReadIni("a", "k"), ProfileText(disk).Get("a", "k").value_or(""));
  }
  EXPECT_EQ(FilesInDirectory(), 1U);
}

TEST_F(ModIni, AFileThatCannotBeReadIsNotWritten) {
  Write("[a]\nk=1\n");
  support::GiveToOtherUser(directory_);
  fs::permissions(Config(), fs::perms::owner_write);
  support::AsOtherUser([&] {
    SettingsFile file(directory_);
    EXPECT_EQ(file.LoadFailure(), "Permission denied");
    file.WriteIni("a", "k", "2");
    EXPECT_EQ(file.Store(), "Permission denied");
    modIni(directory_).WriteIni("a", "k", "2");
    EXPECT_EQ(modIni(directory_).ReadIni("a", "k"), "");
  });
  EXPECT_EQ(Bytes(), "[a]\nk=1\n");
}

}  // namespace
}  // namespace config
