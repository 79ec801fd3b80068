#include "platform/files.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/file_errors.h"
#include "platform/replace_file.h"
#include "tests/support/files.h"
#include "tests/support/other_user.h"

namespace platform {
namespace {

namespace fs = std::filesystem;
using support::AsOtherUser;

class Files : public testing::Test {
 protected:
  Files() {
    fs::permissions(root_.Path(), fs::perms(0755));
    Write("old");
  }

  fs::path Folder() const { return root_.Path() / "folder"; }
  fs::path File() const { return Folder() / "file"; }
  void Write(const std::string& bytes) const { support::WriteFile(File(), bytes); }
  std::string Bytes() const { return support::ReadFile(File()); }
  struct stat Status() const {
    struct stat status = {};
    EXPECT_EQ(stat(File().c_str(), &status), 0);
    return status;
  }
  std::ptrdiff_t FilesInFolder() const {
    return std::distance(fs::directory_iterator(Folder()), fs::directory_iterator());
  }

  const support::TempFolder root_;
};

TEST_F(Files, ReplacingKeepsTheGroupOfAFileThatIsSharedInAGroup) {
  if (getuid() != 0) GTEST_SKIP() << "only root can hand files to groups";
  // Another person's file, in a folder that the group may write to.
  ASSERT_EQ(chown(Folder().c_str(), 0, support::kSharedGroup), 0);
  fs::permissions(Folder(), fs::perms(0775));
  ASSERT_EQ(chown(File().c_str(), 0, support::kSharedGroup), 0);
  fs::permissions(File(), fs::perms(0664));
  AsOtherUser([&] { EXPECT_EQ(ReplaceFile(File(), "new"), std::error_code()); },
              {support::kSharedGroup});
  EXPECT_EQ(Bytes(), "new");
  EXPECT_EQ(Status().st_uid, support::kOtherUser) << "a user cannot give files away";
  EXPECT_EQ(Status().st_gid, support::kSharedGroup);
  EXPECT_EQ(Status().st_mode & 07777U, 0664U);

  // Someone outside the group may write to the folder, but not hand files to the group.
  fs::permissions(Folder(), fs::perms(0777));
  fs::permissions(File(), fs::perms(0666));
  AsOtherUser([&] { EXPECT_EQ(ReplaceFile(File(), "newer"), std::error_code()); });
  EXPECT_EQ(Bytes(), "newer");
  EXPECT_EQ(Status().st_gid, support::kOtherUsersGroup);
}

TEST_F(Files, ReplacingGoesByTheRightsOfTheUser) {
  if (getuid() != 0) GTEST_SKIP() << "only root can give files to others";
  fs::permissions(Folder(), fs::perms(0777));
  fs::permissions(File(), fs::perms(0644));
  AsOtherUser([&] { EXPECT_EQ(ReplaceFile(File(), "new"), std::errc::permission_denied); });
  // Root with the rights of someone else counts as that one.
  ASSERT_EQ(seteuid(support::kOtherUser), 0);
  const std::error_code error = ReplaceFile(File(), "new");
  ASSERT_EQ(seteuid(0), 0);
  EXPECT_EQ(error, std::errc::permission_denied);
  EXPECT_EQ(Bytes(), "old");
}

TEST_F(Files, ALimitOnFileSizesIsAFailureAndNotTheEnd) {
  support::GiveToOtherUser(Folder());
  AsOtherUser([&] {
    const rlimit limit = {1000, 1000};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    EXPECT_EQ(ReplaceFile(File(), std::string(2000, 'x')), std::errc::file_too_large);
    sigset_t pending = {};
    sigpending(&pending);
    EXPECT_EQ(sigismember(&pending, SIGXFSZ), 0) << "the signal waits for its moment";
    sigset_t blocked = {};
    pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    EXPECT_EQ(sigismember(&blocked, SIGXFSZ), 0) << "the signal is kept from others too";
    EXPECT_EQ(ReplaceFile(File(), "fits"), std::error_code());
  });
  EXPECT_EQ(Bytes(), "fits");
  EXPECT_EQ(FilesInFolder(), 1);
}

TEST_F(Files, WhatAKilledProcessLeftGoesAndNothingElse) {
  const auto make = [&](const std::string& name) {
    std::ofstream(Folder() / name) << "half";
    return Folder() / name;
  };
  make(".file.unfinished-1-1");
  make(".other.unfinished-1-1");
  const int locked = open(make(".file.unfinished-2-1").c_str(), O_RDONLY);
  ASSERT_EQ(flock(locked, LOCK_EX), 0) << "as the process does that writes it";
  fs::create_hard_link(make("linked"), Folder() / ".file.unfinished-3-1");
  fs::create_symlink("file", Folder() / ".file.unfinished-4-1");
  fs::create_directory(Folder() / ".file.unfinished-5-1");
  ASSERT_EQ(mkfifo((Folder() / ".file.unfinished-6-1").c_str(), 0600), 0);
  for (const char* const name : {"file.unfinished-1-1", ".file.unfinished-1", ".file.unfinished--1",
                                 ".file.unfinished-1-x", ".file.backup", ".unfinished-1-1"}) {
    make(name);
  }
  if (getuid() == 0) {
    const fs::path others = make(".file.unfinished-7-1");
    ASSERT_EQ(chown(others.c_str(), support::kOtherUser, support::kOtherUsersGroup), 0);
  }
  std::set<fs::path> expected;
  for (const auto& entry : fs::directory_iterator(Folder())) expected.insert(entry.path());
  const auto files = [&] {
    std::set<fs::path> present;
    for (const auto& entry : fs::directory_iterator(Folder())) present.insert(entry.path());
    return present;
  };
  EXPECT_EQ(ReplaceFile(File(), "new"), std::error_code());
  expected.erase(Folder() / ".file.unfinished-1-1");
  EXPECT_EQ(files(), expected) << "what belongs to this file";
  EXPECT_EQ(PutFile(File(), "newer", Flush::kNo), std::error_code());
  EXPECT_EQ(files(), expected);
  EXPECT_EQ(PrepareFolder(Folder()), std::error_code());
  expected.erase(Folder() / ".other.unfinished-1-1");
  EXPECT_EQ(files(), expected) << "what belongs to any";
  close(locked);
  EXPECT_EQ(PrepareFolder(Folder()), std::error_code());
  expected.erase(Folder() / ".file.unfinished-2-1");
  EXPECT_EQ(files(), expected) << "its process has ended";
  EXPECT_EQ(ReplaceFile(Folder() / std::string(255, 'x'), "new"), std::error_code());
  EXPECT_EQ(ReplaceFile(Folder() / std::string(255, 'x'), "newer"), std::error_code());
}

TEST_F(Files, AFolderIsOneProcesssUntilItLetsGo) {
  const auto lock = [&] {
    std::error_code error;
    const FolderLock own(Folder(), error);
    return error;
  };
  const auto lockElsewhere = [&] {
    const pid_t child = fork();
    if (child == 0) _exit(lock() == FileErrors::InUse() ? 1 : 0);
    int status = 0;
    waitpid(child, &status, 0);
    return WEXITSTATUS(status) == 1;
  };
  {
    std::error_code error;
    const FolderLock own(Folder(), error);
    EXPECT_EQ(error, std::error_code());
    EXPECT_EQ(lock(), std::error_code()) << "once more";
    EXPECT_TRUE(lockElsewhere());
  }
  EXPECT_FALSE(lockElsewhere());
}

TEST_F(Files, OnlyRegularFilesAreFiles) {
  EXPECT_TRUE(FileExists(File()));
  fs::create_symlink("file", Folder() / "link");
  EXPECT_TRUE(FileExists(Folder() / "link"));
  ASSERT_EQ(mkfifo((Folder() / "pipe").c_str(), 0600), 0);
  fs::create_symlink("/dev/zero", Folder() / "device");
  fs::create_symlink("/dev/tty", Folder() / "terminal");
  for (const char* const name : {".", "pipe", "device", "terminal", "missing"}) {
    const fs::path path = Folder() / name;
    EXPECT_FALSE(FileExists(path)) << name;
    std::error_code error;
    EXPECT_EQ(ReadWholeFile(path, error), "") << name;
    EXPECT_TRUE(error) << name;
    const bool missing = name == std::string("missing");
    if (missing) continue;
    EXPECT_NE(ReplaceFile(path, "new").message(), "Success") << name;
  }
  EXPECT_TRUE(fs::is_fifo(Folder() / "pipe"));
  std::error_code error;
  ReadWholeFile(Folder() / "pipe", error);
  EXPECT_EQ(error.message(), "Not a regular file");
  ReadWholeFile(Folder(), error);
  EXPECT_EQ(error, std::errc::is_a_directory);
}

}  // namespace
}  // namespace platform
