#include "config/modIni.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <sys/stat.h>

#include "tests/support/other_user.h"

namespace config {
namespace {

namespace fs = std::filesystem;

/// A program directory of its own for every test.
class ModIni : public testing::Test {
 protected:
  ModIni() {
    std::string name = (fs::temp_directory_path() / "modIniXXXXXX").string();
    directory_ = mkdtemp(name.data());
  }
  ~ModIni() override { fs::remove_all(directory_); }

  fs::path Config() const { return directory_ / "morvane.cfg"; }
  void Write(const std::string& bytes) const { std::ofstream(Config(), std::ios::binary) << bytes; }
  std::string Bytes() const {
    std::ostringstream bytes;
    bytes << std::ifstream(Config(), std::ios::binary).rdbuf();
    return bytes.str();
  }
  std::size_t FilesInDirectory() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(directory_), fs::directory_iterator()));
  }

  fs::path directory_;
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

TEST_F(ModIni, LeavesAnUnchangedFileAlone) {
  Write("[a]\nk=v\n");
  const fs::file_time_type before = fs::last_write_time(Config()) - std::chrono::hours(1);
  fs::last_write_time(Config(), before);
  modIni ini(directory_);
  ini.WriteIni("a", "k", "v");
  EXPECT_EQ(fs::last_write_time(Config()), before);
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
