#pragma once

#include <compare>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace morvane {

/// A page as a run wrote it.
struct WrittenPage {
  std::uint64_t size = 0;   ///< in bytes
  std::string digest;       ///< of its content, 32 hexadecimal digits
  std::string fingerprint;  ///< of what it was made from; empty: not known

  bool operator==(const WrittenPage&) const = default;
};

/// What a page of this content is noted as, without a fingerprint.
WrittenPage Describe(std::string_view content);

/// The list of the pages that earlier runs wrote into a folder, kept in the folder's file
/// kFileName. A text: the line "morvane pages 1", then a line for each page with its size, digest,
/// fingerprint
/// ("-": none) and name, parted by blanks; in the name control characters, blanks and "%" are %XX.
/// A page has several lines while it is being replaced. Lines that are not of this form, and names
/// of anything but a plain file, say nothing.
class PageList {
 public:
  static constexpr const char* kFileName = ".morvane-pages";

  /// By name: what the page may hold.
  using Pages = std::map<std::string, std::vector<WrittenPage>, std::less<>>;

  /// The list of a folder; empty where there is none. `error` says why one that is there cannot be
  /// read; one that is set already is left as it is, and nothing is read.
  PageList(const std::filesystem::path& folder, std::error_code& error);
  PageList(const PageList&) = delete;
  PageList& operator=(const PageList&) = delete;
  ~PageList();

  const Pages& Earlier() const { return earlier_; }
  /// Whether an earlier run wrote a page of this name and content.
  bool Holds(std::string_view name, const WrittenPage& page) const;

  /// Notes a page before it is put in place, so that a run that is cut short leaves none unlisted.
  /// Best effort: what cannot be noted now is in the list that Replace writes.
  void Note(const std::string& name, const WrittenPage& page);

  /// Puts a new list in the place of the old one; does not touch one that says the same, and
  /// removes one that would be empty.
  std::error_code Replace(const Pages& pages);

 private:
  std::filesystem::path path_;
  std::string text_;  // of the file, as it was found
  Pages earlier_;
  bool changed_ = false;
  int journal_ = -1;
};

}  // namespace morvane
