#include "morvane/site/page_folder.h"

#include <algorithm>
#include <cerrno>
#include <span>
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

/// Whether two names stand for one file, as where the file system does not tell A from a.
bool AreOneFile(const fs::path& one, const fs::path& other) {
  struct stat left = {};
  struct stat right = {};
  return lstat(one.c_str(), &left) == 0 && lstat(other.c_str(), &right) == 0 &&
         left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

bool IsBefore(const ListedPage& left, const ListedPage& right) { return left.name < right.name; }

/// What stays though this run did not make it: whether it would be the same now is not known.
ListedPage WithoutFingerprint(const ListedPage& listed) {
  return {listed.name, {listed.page.size, listed.page.digest, {}, 0}};
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
std::error_code PageFolder::Write(const std::string& name, std::string_view content,
                                  const Digest128& fingerprint) {
  const fs::path path = folder_ / name;
  const bool isInput = IsInput(name);
  WrittenPage page = Describe(content);
  page.fingerprint = fingerprint;
  if (!isInput) Note(name, page);
  // The time comes first: what is changed while it is read is looked at again by the next run.
  std::uint64_t size = 0;
  page.changedAt = LastChangeOf(path, size);
  if (Holds(path, content)) {
    ++unchanged_;
    if (!isInput) NoteDone(name, page);
    return {};
  }
  if (isInput) return IsAnInput();
  return Settle(name, page, platform::PutFile(path, content, platform::Flush::kNo));
}

/// After a page was put in place, or could not be: `error`.
std::error_code PageFolder::Settle(const std::string& name, WrittenPage page,
                                   std::error_code error) {
  if (error) {
    KeepNoted(name);
    return error;
  }
  ++written_;
  std::uint64_t size = 0;
  page.changedAt = LastChangeOf(folder_ / name, size);
  NoteDone(name, page);
  return {};
}

void PageFolder::Note(const std::string& name, const WrittenPage& page) {
  const std::lock_guard lock(mutex_);
  if (!list_.Holds(name, page) && !IsInput(PageList::kFileName)) {
    list_.Note(name, {page.size, page.digest, {}, 0});
  }
}

void PageFolder::NoteDone(const std::string& name, const WrittenPage& page) {
  const std::lock_guard lock(mutex_);
  const auto known = list_.Find(name);
  const bool isKnown = !known.empty();
  made_.push_back({isKnown ? known.front().name : madeNames_.emplace_back(name), page});
}

void PageFolder::KeepNoted(const std::string& name) {
  const std::lock_guard lock(mutex_);
  for (const ListedPage& known : list_.Find(name)) made_.push_back(WithoutFingerprint(known));
}

/// A file that was changed in any way since it was listed, and be it its permissions alone, is
/// read. So is one that may have been changed at the very time at which the list was written.
bool PageFolder::IsUntouched(const ListedPage& listed, std::int64_t& changedAt,
                             std::error_code& error) const {
  const fs::path path = folder_ / listed.name;
  std::uint64_t size = 0;
  changedAt = LastChangeOf(path, size);
  if (changedAt < 0 || size != listed.page.size) return false;
  if (changedAt == listed.page.changedAt && changedAt < list_.WrittenAt()) return true;
  const WrittenPage present = Describe(platform::ReadWholeFile(path, error));
  return !error && present.HasContentOf(listed.page);
}

/// Whether the file is still as a run wrote it. A link is not. `error`: why nobody can tell.
bool PageFolder::IsAsWritten(std::span<const ListedPage> states, std::error_code& error) const {
  std::int64_t changedAt = 0;
  return std::any_of(states.begin(), states.end(),
                     [&](const ListedPage& state) { return IsUntouched(state, changedAt, error); });
}

bool PageFolder::Stands(const std::string& name, const Digest128& fingerprint) {
  const auto known = list_.Find(name);
  if (fingerprint.IsNone() || known.size() != 1 || known.front().page.fingerprint != fingerprint) {
    return false;
  }
  ListedPage listed = known.front();
  std::error_code error;
  if (IsInput(name) || !IsUntouched(listed, listed.page.changedAt, error)) return false;
  ++unchanged_;
  const std::lock_guard lock(mutex_);
  made_.push_back(listed);
  return true;
}

bool PageFolder::HoldsForeign(const std::string& name, std::error_code& error) const {
  const fs::path path = folder_ / name;
  if (fs::symlink_status(path).type() == fs::file_type::not_found) return false;
  return IsInput(name) || !IsAsWritten(list_.Find(name), error);
}

std::error_code PageFolder::Finish(const std::function<bool(const std::string&)>& keep,
                                   const PageList::Remarks& remarks) {
  if (IsInput(PageList::kFileName)) return IsAnInput();
  std::sort(made_.begin(), made_.end(), IsBefore);
  std::error_code first;
  std::vector<ListedPage> kept = TakeAwayOthers(keep, first);
  made_.insert(made_.end(), kept.begin(), kept.end());
  std::stable_sort(made_.begin(), made_.end(), IsBefore);
  const std::error_code error = list_.Replace(made_, remarks);
  return first ? first : error;
}

std::vector<ListedPage> PageFolder::TakeAwayOthers(
    const std::function<bool(const std::string&)>& keep, std::error_code& failure) {
  std::vector<ListedPage> kept;
  const std::vector<ListedPage>& earlier = list_.Earlier();
  for (std::size_t i = 0, end = 0; i < earlier.size(); i = end) {
    while (end < earlier.size() && earlier[end].name == earlier[i].name) ++end;
    const std::span states(earlier.data() + i, end - i);
    if (std::binary_search(made_.begin(), made_.end(), earlier[i], IsBefore)) continue;
    const std::string name(earlier[i].name);
    std::error_code error;
    if (IsMade(name) || IsInput(name) || (!IsAsWritten(states, error) && !error)) continue;
    const bool goes = !error && !keep(name);
    if (goes && unlink((folder_ / name).c_str()) == 0) {
      ++takenAway_;
      continue;
    }
    if (goes) error = LastError();
    if (!failure) failure = error;
    for (const ListedPage& state : states) kept.push_back(WithoutFingerprint(state));
  }
  return kept;
}

/// Whether the file of a name is that of a page that was made, as where the file system does not
/// tell A from a.
bool PageFolder::IsMade(std::string_view name) {
  if (madeFolded_.empty()) {
    for (const ListedPage& made : made_) {
      madeFolded_.emplace(text::FoldCase(made.name), made.name);
    }
  }
  const auto [begin, end] = madeFolded_.equal_range(text::FoldCase(name));
  return std::any_of(begin, end, [&](const auto& made) {
    return AreOneFile(folder_ / name, folder_ / made.second);
  });
}

}  // namespace morvane
