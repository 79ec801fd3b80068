#include "morvane/site/page_folder.h"

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "platform/files.h"
#include "text/text.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;
using platform::LastError;

/// Whether the file holds exactly this.
bool Holds(const fs::path& path, std::string_view content) {
  struct stat status = {};
  if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
  if (static_cast<std::size_t>(status.st_size) != content.size()) return false;
  std::error_code error;
  return platform::ReadWholeFile(path, error) == content && !error;
}

/// Whether the file is still as a run wrote it. A link is not. `error`: why nobody can tell.
bool IsAsWritten(const fs::path& path, const std::vector<WrittenPage>& states,
                 std::error_code& error) {
  struct stat status = {};
  if (lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
  const auto isOfSize = [&](const WrittenPage& state) {
    return state.size == static_cast<std::uint64_t>(status.st_size);
  };
  if (std::none_of(states.begin(), states.end(), isOfSize)) return false;
  const WrittenPage present = Describe(platform::ReadWholeFile(path, error));
  return !error && std::any_of(states.begin(), states.end(), [&](const WrittenPage& state) {
    return state.size == present.size && state.digest == present.digest;
  });
}

/// Whether two names stand for one file, as where the file system does not tell A from a.
bool AreOneFile(const fs::path& one, const fs::path& other) {
  struct stat left = {};
  struct stat right = {};
  return lstat(one.c_str(), &left) == 0 && lstat(other.c_str(), &right) == 0 &&
         left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

/// Creates the folder where it can, so that its list can be read.
fs::path Created(fs::path folder, std::error_code& error) {
  fs::create_directories(folder, error);
  return folder;
}

}  // namespace

PageFolder::PageFolder(fs::path folder, const Inputs& inputs, std::error_code& error)
    : folder_(Created(std::move(folder), error)),
      inputs_(inputs),
      lock_(folder_, error),
      list_(folder_, error) {
  if (!error) canonical_ = fs::canonical(folder_, error);
  if (!error) error = platform::PrepareFolder(folder_);
}

// The pages are made anew by the next run, so they are not flushed to the disk one by one: a
// rename keeps them whole for every reader and through a killed run, and a site of thousands of
// pages stays a matter of seconds.
std::error_code PageFolder::Write(const std::string& name, std::string_view content) {
  const fs::path page = folder_ / name;
  const bool isInput = IsInput(name);
  if (!isInput) Note(name, Describe(content));
  if (Holds(page, content)) {
    ++unchanged_;
    return {};
  }
  if (isInput) return IsAnInput();
  const std::error_code error = platform::PutFile(page, content, platform::Flush::kNo);
  if (error) {
    KeepNoted(name);
  } else {
    ++written_;
  }
  return error;
}

void PageFolder::Note(const std::string& name, WrittenPage page) {
  const std::lock_guard lock(mutex_);
  if (!list_.Holds(name, page) && !IsInput(PageList::kFileName)) list_.Note(name, page);
  madeFolded_.emplace(text::FoldCase(name), name);
  made_[name] = {std::move(page)};
}

void PageFolder::KeepNoted(const std::string& name) {
  const std::lock_guard lock(mutex_);
  const auto earlier = list_.Earlier().find(name);
  if (earlier == list_.Earlier().end()) {
    made_.erase(name);
  } else {
    made_[name] = earlier->second;
  }
}

bool PageFolder::HoldsForeign(const std::string& name, std::error_code& error) const {
  const fs::path path = folder_ / name;
  if (fs::symlink_status(path).type() == fs::file_type::not_found) return false;
  const auto known = list_.Earlier().find(name);
  return IsInput(name) || known == list_.Earlier().end() ||
         !IsAsWritten(path, known->second, error);
}

std::error_code PageFolder::Finish(const std::function<bool(const std::string&)>& keep) {
  if (IsInput(PageList::kFileName)) return IsAnInput();
  std::error_code first;
  for (const auto& [name, states] : list_.Earlier()) {
    const fs::path path = folder_ / name;
    const bool isMade = made_.contains(name) || IsMade(path, text::FoldCase(name));
    std::error_code error;
    if (isMade || IsInput(name) || (!IsAsWritten(path, states, error) && !error)) continue;
    const bool goes = !error && !keep(name);
    if (goes && unlink(path.c_str()) == 0) {
      ++takenAway_;
      continue;
    }
    if (goes) error = LastError();
    if (!first) first = error;
    made_[name] = states;
  }
  const std::error_code error = list_.Replace(made_);
  return first ? first : error;
}

bool PageFolder::IsMade(const fs::path& path, const std::string& foldedName) const {
  const auto [begin, end] = madeFolded_.equal_range(foldedName);
  return std::any_of(begin, end,
                     [&](const auto& made) { return AreOneFile(path, folder_ / made.second); });
}

}  // namespace morvane
