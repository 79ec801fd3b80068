#pragma once

#include <filesystem>
#include <functional>
#include <grp.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace support {

/// A user other than root, whom files can be closed to, and a group for tests of shared folders.
inline constexpr uid_t kOtherUser = 65534;
inline constexpr gid_t kOtherUsersGroup = 65534;
inline constexpr gid_t kSharedGroup = 54321;

/// Gives a file or folder, and all in it, to the other user, who can reach it then: the folder that
/// it lies in is opened to everyone.
inline void GiveToOtherUser(const std::filesystem::path& path) {
  if (getuid() != 0) return;
  std::filesystem::permissions(path.parent_path(), std::filesystem::perms(0755));
  EXPECT_EQ(chown(path.c_str(), kOtherUser, kOtherUsersGroup), 0);
  if (!std::filesystem::is_directory(path)) return;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(path)) {
    EXPECT_EQ(lchown(entry.path().c_str(), kOtherUser, kOtherUsersGroup), 0);
  }
}

/// Runs an action in a process of its own, of the other user when this one is root's. What fails
/// there fails the test, and so does an end of the process by a signal.
inline void AsOtherUser(const std::function<void()>& action,
                        const std::vector<gid_t>& moreGroups = {}) {
  const pid_t child = fork();
  if (child == 0) {
    const bool changed =
        getuid() != 0 || (setgroups(moreGroups.size(), moreGroups.data()) == 0 &&
                          setresgid(kOtherUsersGroup, kOtherUsersGroup, kOtherUsersGroup) == 0 &&
                          setresuid(kOtherUser, kOtherUser, kOtherUser) == 0);
    EXPECT_TRUE(changed);
    if (changed) action();
    fflush(nullptr);
    _exit(testing::Test::HasFailure() ? 1 : 0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0) << "see the failures above; 256 times the exit code, or a signal's number";
}

}  // namespace support
