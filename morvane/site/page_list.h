#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "morvane/statistics/fingerprint.h"

namespace morvane {

/// A page as a run wrote it.
struct WrittenPage {
  std::uint64_t size = 0;      ///< in bytes
  Digest128 digest;            ///< of its content
  Digest128 fingerprint;       ///< of what it was made from; none: not known
  std::int64_t changedAt = 0;  ///< of the file, in nanoseconds since 1970; 0: not known

  bool operator==(const WrittenPage&) const = default;
  bool HasContentOf(const WrittenPage& other) const {
    return size == other.size && digest == other.digest;
  }
};

/// What a page of this content is noted as, without a fingerprint.
WrittenPage Describe(std::string_view content);

/// A page and its file name.
struct ListedPage {
  std::string_view name;
  WrittenPage page;
};

/// The list of the pages that earlier runs wrote into a folder, kept in the folder's file
/// kFileName. A text: the line "morvane pages 1", then a line for each page with its size, digest,
/// fingerprint ("-": none) with "@" and the time of change where that is known, and name, parted by
/// blanks; in the name control characters, blanks and "%" are %XX. A page has several lines while
/// it is being replaced. A line ":" with a key and a value remarks something about all pages. Lines
/// that are not of these forms, and names of anything but a plain file, say nothing.
class PageList {
 public:
  static constexpr const char* kFileName = ".morvane-pages";

  /// By key.
  using Remarks = std::map<std::string, std::string, std::less<>>;

  /// The list of a folder; empty where there is none. `error` says why one that is there cannot be
  /// read; one that is set already is left as it is, and nothing is read.
  PageList(const std::filesystem::path& folder, std::error_code& error);
  PageList(const PageList&) = delete;
  PageList& operator=(const PageList&) = delete;
  ~PageList();

  /// By name; what a page may hold stands together.
  const std::vector<ListedPage>& Earlier() const { return earlier_; }
  std::span<const ListedPage> Find(std::string_view name) const;
  /// Whether an earlier run wrote a page of this name and content.
  bool Holds(std::string_view name, const WrittenPage& page) const;
  /// When the list itself was written, in nanoseconds since 1970; 0 where there is none.
  std::int64_t WrittenAt() const { return writtenAt_; }
  /// What the last run remarked that came to its end.
  const Remarks& Remarked() const { return remarks_; }

  /// Notes a page before it is put in place, so that a run that is cut short leaves none unlisted.
  /// Best effort: what cannot be noted now is in the list that Replace writes.
  void Note(std::string_view name, const WrittenPage& page);

  /// Puts a new list in the place of the old one; does not touch one that says the same, and
  /// removes one that would be empty. `pages`: by name.
  std::error_code Replace(const std::vector<ListedPage>& pages, const Remarks& remarks);

 private:
  void Read();
  void ReadLine(std::string_view line);

  std::filesystem::path path_;
  std::string text_;  // of the file, as it was found
  std::int64_t writtenAt_ = 0;
  std::vector<ListedPage> earlier_;
  std::deque<std::string> decoded_;  // names that stand in the text in another way
  Remarks remarks_;
  bool changed_ = false;
  int journal_ = -1;
};

/// When a file was last changed in any way, in nanoseconds since 1970; -1 for what is no regular
/// file. `size`: in bytes.
std::int64_t LastChangeOf(const std::filesystem::path& path, std::uint64_t& size);

}  // namespace morvane
