// Which files a log of the settings is, and what becomes of packed and of damaged ones.
#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "morvane/log/log_file.h"
#include "morvane/log/log_text.h"
#include "morvane/log/packed_log.h"
#include "tests/morvane/test_support.h"

namespace morvane::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

TEST(LogPatterns, StandForTheFilesOfTheirFolderByTimeOfChange) {
  TempFolder folder;
  const fs::path logs = folder.Path() / "logs";
  const auto now = fs::file_time_type::clock::now();
  const auto make = [&](const std::string& name, std::chrono::seconds age) {
    WriteFile(logs / name, "x");
    fs::last_write_time(logs / name, now - age);
  };
  make("games.log", 1s);
  make("games.log.1", 9s);
  make("games.log.10.gz", 20s);
  make("games.log.2", 9s);
  make("games-b.log", 5s);
  make("exact*.log", 1s);
  make("exact1.log", 9s);
  make(".games.log.swp", 7s);
  make("other.txt", 30s);
  fs::create_directory(logs / "games.log.d");
  ASSERT_EQ(mkfifo((logs / "games.log.pipe").c_str(), 0600), 0);
  const struct {
    std::string named;
    std::vector<std::string> found;
    std::string severe;
  } kCases[] = {
      {"logs/games.log*",
       {"logs/games.log.10.gz", "logs/games.log.1", "logs/games.log.2", "logs/games.log"},
       ""},
      {"logs\\games?b.log", {"logs\\games-b.log"}, ""},
      {"logs/games.log.[2-9]", {"logs/games.log.2"}, ""},
      {"logs/exact*.log", {"logs/exact*.log"}, ""},
      {"logs/*.none", {}, "logs/*.none: no file matches this pattern"},
      {"none/*", {}, "none/*: its folder cannot be looked through: No such file or directory"},
      {"logs/games.log", {"logs/games.log"}, ""},
      {"logs/missing.log", {"logs/missing.log"}, ""},
      {"*/games.log", {"*/games.log"}, ""},
      {"logs/.games*", {"logs/.games.log.swp"}, ""},
  };
  for (const auto& test : kCases) {
    std::string path = (folder.Path() / test.named).string();
    std::replace(path.begin(), path.end(), '\\', '/');
    Told told;
    std::vector<std::string> found;
    for (const LogFile& log : FindLogs({{test.named, path}}, told)) {
      found.push_back(log.name);
      EXPECT_EQ(fs::path(log.path).filename(), fs::path(log.path).lexically_normal().filename());
      EXPECT_TRUE(log.path.starts_with(folder.Path().string())) << log.path;
    }
    EXPECT_EQ(found, test.found) << test.named;
    EXPECT_EQ(told.severe, test.severe.empty() ? "" : test.severe + "\n");
  }
}

/// What a packed file unpacks to, or the problem in angle brackets.
std::string Unpacked(const std::string& bytes, std::uint64_t most = kMostUnpacked) {
  TempFolder folder;
  WriteFile(folder.Path() / "log", bytes);
  std::error_code error;
  const MappedFile packed(folder.Path() / "log", error);
  std::string problem;
  const MappedFile text = Unpack(packed, problem, most);
  return problem.empty() ? std::string(text.Bytes()) : "<" + problem + ">";
}

TEST(PackedLogs, UnpackToWhatWasPacked) {
  std::string log;
  while (log.size() < 3'000'000) log += Duel("Ann" + std::to_string(log.size()), "Bob", 9);
  EXPECT_EQ(Unpacked(Packed(log)), log);
  EXPECT_EQ(Unpacked(Packed("")), "");
  EXPECT_EQ(Unpacked(Packed("one\n") + Packed("") + Packed("two\n")), "one\ntwo\n");
  EXPECT_EQ(Unpacked(Packed("one\n") + std::string(512, '\0')), "one\n") << "filled up";
  EXPECT_EQ(Unpacked(Packed(log), log.size()), log) << "just within the limit";
}

TEST(PackedLogs, TellWhatIsWrongWithThem) {
  const std::string whole = Packed(Duel("Ann", "Bob", 9));
  for (std::size_t size = 2; size < whole.size(); ++size) {
    EXPECT_EQ(Unpacked(whole.substr(0, size)), "<it is packed and its end is missing>") << size;
  }
  std::string flipped = whole;
  flipped[flipped.size() - 6] ^= 1;
  EXPECT_EQ(Unpacked(flipped), "<it is packed and damaged: incorrect data check>");
  EXPECT_EQ(Unpacked("\x1F\x8BThis is no log at all"),
            "<it is packed and damaged: unknown compression method>");
  EXPECT_EQ(Unpacked(whole + "trailing"),
            "<it is packed and damaged: something else follows the packed text>");
  EXPECT_EQ(
      Unpacked(Packed(std::string(5 << 20, 'a')), 4 << 20),
      "<it is packed and would unpack to more than 4 MB; unpack it by hand if that is right>");
}

TEST(LogTexts, AreKnownAsPackedByTheirBytesAlone) {
  TempFolder folder;
  WriteFile(folder.Path() / "packed.log", Packed("text\n"));
  WriteFile(folder.Path() / "plain.gz", "text\n");
  for (const char* name : {"packed.log", "plain.gz"}) {
    std::string problem;
    LogText text(folder.Path() / name, problem);
    text.Unpack(problem);
    EXPECT_EQ(problem, "");
    EXPECT_EQ(text.Bytes(), "text\n");
    EXPECT_EQ(text.IsPacked(), std::string(name) == "packed.log");
    EXPECT_EQ(text.FileSize(), fs::file_size(folder.Path() / name));
  }
}

TEST(MappedFiles, TellWhetherTheyWereCutWhileTheyWereRead) {
  constexpr std::size_t kSize = 100'000;
  const struct {
    std::string what;
    std::size_t cutTo;  // and then
    std::string append;
    bool whole;
  } kCases[] = {
      {"nothing happened", kSize, "", true},
      {"grown", kSize, "more\n", true},
      {"emptied", 0, "", false},
      {"cut within the last page", kSize - 10, "", false},
      {"cut in the midst", kSize / 2, "", false},
      {"emptied and grown again", 0, std::string(kSize, 'n'), false},
      {"emptied and grown beyond", 0, std::string(kSize * 2, 'n'), false},
  };
  for (const auto& test : kCases) {
    TempFolder folder;
    const fs::path path = folder.Path() / "log";
    std::string bytes;
    while (bytes.size() < kSize) bytes += std::to_string(bytes.size()) + "\n";
    WriteFile(path, bytes.substr(0, kSize));
    std::error_code error;
    const MappedFile file(path, error);
    ASSERT_FALSE(error);
    fs::resize_file(path, test.cutTo);
    std::ofstream(path, std::ios::app) << test.append;
    std::size_t sum = 0;
    for (const char c : file.Bytes()) sum += static_cast<unsigned char>(c);
    EXPECT_EQ(file.IsWhole(), test.whole) << test.what << sum;
  }
}

TEST(MappedFiles, OpenOnlyRegularFilesAndWaitForNone) {
  TempFolder folder;
  ASSERT_EQ(mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
  for (const fs::path& path : {folder.Path() / "pipe", fs::path("/dev/zero"), folder.Path()}) {
    std::error_code error;
    const MappedFile file(path, error);
    EXPECT_TRUE(error) << path;
    EXPECT_EQ(error.message(), path == folder.Path() ? "Is a directory" : "Not a regular file");
  }
}

}  // namespace
}  // namespace morvane::test
