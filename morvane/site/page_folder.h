#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <unordered_map>
#include <vector>

#include "morvane/site/inputs.h"
#include "morvane/site/page_list.h"
#include "platform/replace_file.h"

namespace morvane {

/// A folder of pages. A page appears whole or not at all, and one whose content is already there is
/// left alone. What was written is listed, so that a later run can take away what it makes no more.
/// May be used from several threads, each with pages of its own.
class PageFolder {
 public:
  /// Creates the folder where it is missing and takes away what an interrupted run left half done.
  /// It is this one's alone until the end, so that two runs never mix their pages. `error` says why
  /// the folder cannot be used. `inputs`, which must outlive this, are no pages:
  /// they are neither replaced nor taken away nor listed.
  PageFolder(std::filesystem::path folder, const Inputs& inputs, std::error_code& error);

  /// Puts a page in place, once in a run, whole or not at all. `name`: a file name. In the place of
  /// an input nothing is put, see IsAnInput. `fingerprint`: of what the page is made from, for
  /// Stands in the next run; none: not known.
  std::error_code Write(const std::string& name, std::string_view content,
                        const Digest128& fingerprint = {});

  /// Whether an earlier run made a page from the same, by its fingerprint, and the file is still as
  /// it was written then. That counts as written unchanged.
  bool Stands(const std::string& name, const Digest128& fingerprint);

  /// Whether something stands under a name that no run wrote, that was changed since or that is an
  /// input. `error`: why nobody can tell.
  bool HoldsForeign(const std::string& name, std::error_code& error) const;

  /// What the last run that came to its end remarked in the list, by key.
  const PageList::Remarks& Remarked() const { return list_.Remarked(); }

  /// Takes away the pages that earlier runs wrote and this one did not: files that are still as
  /// they were written, byte for byte, and nothing else. Those that `keep` says to keep stay, and
  /// stay listed. Then the list is written anew. To be called once, after the last Write; the
  /// result is the first failure. `remarks`: for the list.
  std::error_code Finish(const std::function<bool(const std::string& name)>& keep,
                         const PageList::Remarks& remarks = {});

  const std::filesystem::path& Path() const { return folder_; }
  /// Pages written, pages found as they should be, and pages taken away.
  std::size_t Written() const { return written_; }
  std::size_t Unchanged() const { return unchanged_; }
  std::size_t TakenAway() const { return takenAway_; }

 private:
  void Note(const std::string& name, const WrittenPage& page);
  /// Lists what is in place now.
  void NoteDone(const std::string& name, const WrittenPage& page);
  /// After a failure what earlier runs wrote under this name is still there.
  void KeepNoted(const std::string& name);
  bool IsInput(std::string_view name) const { return inputs_.Cover(canonical_, name); }
  bool IsUntouched(const ListedPage& listed, std::int64_t& changedAt, std::error_code& error) const;
  bool IsAsWritten(std::span<const ListedPage> states, std::error_code& error) const;
  std::error_code Settle(const std::string& name, WrittenPage page, std::error_code error);
  std::vector<ListedPage> TakeAwayOthers(const std::function<bool(const std::string& name)>& keep,
                                         std::error_code& failure);
  bool IsMade(std::string_view name);

  std::filesystem::path folder_;
  std::filesystem::path canonical_;
  const Inputs& inputs_;
  platform::FolderLock lock_;
  PageList list_;
  std::mutex mutex_;  // of the list and what was made
  std::vector<ListedPage> made_;
  std::deque<std::string> madeNames_;  // those that earlier runs did not list
  std::unordered_multimap<std::string, std::string_view> madeFolded_;  // by the lower case
  std::atomic<std::size_t> written_ = 0;
  std::atomic<std::size_t> unchanged_ = 0;
  std::size_t takenAway_ = 0;
};

}  // namespace morvane
