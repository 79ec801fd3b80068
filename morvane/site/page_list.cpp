#include "morvane/site/page_list.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "platform/files.h"
#include "platform/replace_file.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;
using platform::LastError;

constexpr std::string_view kHeader = "morvane pages 1\n";
constexpr std::string_view kNoFingerprint = "-";
constexpr std::string_view kRemark = ":";
constexpr char kAt = '@';
constexpr char kHexDigits[] = "0123456789abcdef";

bool IsHex(std::string_view text) {
  return text.find_first_not_of(kHexDigits) == std::string_view::npos;
}

/// A number in decimal digits, and nothing else.
template <class Number>
bool ReadNumber(std::string_view text, Number& number) {
  const char* const end = text.data() + text.size();
  const auto [last, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && last == end;
}

bool IsPlain(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte > 0x20 && byte != 0x7F && c != '%';
}

/// In one piece, as the fields of a line are.
std::string Encode(std::string_view name) {
  std::string text;
  for (const char c : name) {
    if (IsPlain(c)) {
      text += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      text += {'%', kHexDigits[byte >> 4], kHexDigits[byte & 0xF]};
    }
  }
  return text;
}

/// Only names of files in the folder itself.
bool IsFileName(std::string_view name) {
  return !name.empty() && name != "." && name != ".." && name != PageList::kFileName &&
         name.find_first_of(std::string_view("/\\\0", 3)) == std::string_view::npos;
}

std::optional<std::string> Decode(std::string_view text) {
  std::string name;
  while (!text.empty()) {
    const std::string_view digits = text.substr(0, 3).substr(1);
    if (text.front() != '%') {
      name += text.front();
      text.remove_prefix(1);
      continue;
    }
    unsigned byte = 0;
    if (digits.size() != 2 || !IsHex(digits)) return {};
    std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
    name += static_cast<char>(byte);
    text.remove_prefix(3);
  }
  return name;
}

void AppendLine(std::string& text, std::string_view name, const WrittenPage& page) {
  text += std::to_string(page.size);
  text += ' ';
  text += TextOf(page.digest);
  text += ' ';
  text += page.fingerprint.IsNone() ? std::string(kNoFingerprint) : TextOf(page.fingerprint);
  if (page.changedAt > 0) {
    text += kAt;
    text += std::to_string(page.changedAt);
  }
  text += ' ';
  text += Encode(name);
  text += '\n';
}

std::string_view TakeField(std::string_view& line) {
  const std::size_t end = std::min(line.find(' '), line.size());
  const std::string_view field = line.substr(0, end);
  line.remove_prefix(std::min(end + 1, line.size()));
  return field;
}

/// A fingerprint that cannot be read is none.
void ReadFingerprint(std::string_view text, WrittenPage& page) {
  const std::size_t at = std::min(text.find(kAt), text.size());
  std::int64_t changedAt = 0;
  if (!ReadNumber(text.substr(std::min(at + 1, text.size())), changedAt)) return;
  page.fingerprint = DigestFromText(text.substr(0, at));
  page.changedAt = changedAt;
}

bool IsBefore(const ListedPage& left, const ListedPage& right) { return left.name < right.name; }

std::string TextOf(const std::vector<ListedPage>& pages, const PageList::Remarks& remarks) {
  constexpr std::size_t kTypicalLine = 128;
  std::string text(kHeader);
  text.reserve(pages.size() * kTypicalLine);
  for (const auto& [key, value] : remarks) {
    text += std::string(kRemark) + " " + Encode(key) + " " + Encode(value) + "\n";
  }
  for (const ListedPage& page : pages) AppendLine(text, page.name, page.page);
  return text;
}

}  // namespace

WrittenPage Describe(std::string_view content) {
  return {content.size(), DigestOf(content), {}, 0};
}

std::int64_t LastChangeOf(const fs::path& path, std::uint64_t& size) {
  constexpr std::int64_t kNanoseconds = 1'000'000'000;
  struct stat status = {};
  if (lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return -1;
  size = static_cast<std::uint64_t>(status.st_size);
  return std::int64_t{status.st_ctim.tv_sec} * kNanoseconds + status.st_ctim.tv_nsec;
}

PageList::PageList(const fs::path& folder, std::error_code& error) : path_(folder / kFileName) {
  std::uint64_t size = 0;
  if (!error) writtenAt_ = std::max<std::int64_t>(LastChangeOf(path_, size), 0);
  if (writtenAt_ == 0) return;
  text_ = platform::ReadWholeFile(path_, error);
  Read();
}

PageList::~PageList() {
  if (journal_ >= 0) close(journal_);
}

/// A line without its end was being written when a run was cut short.
void PageList::Read() {
  std::string_view text = text_;
  if (!text.starts_with(kHeader)) return;
  text.remove_prefix(kHeader.size());
  earlier_.reserve(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')));
  for (std::size_t end = text.find('\n'); end != text.npos; end = text.find('\n')) {
    ReadLine(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  if (!std::is_sorted(earlier_.begin(), earlier_.end(), IsBefore)) {
    std::stable_sort(earlier_.begin(), earlier_.end(), IsBefore);
  }
}

/// Adds what a line says, or nothing.
void PageList::ReadLine(std::string_view line) {
  const std::string_view size = TakeField(line);
  const std::string_view digest = TakeField(line);
  if (size == kRemark) {
    const std::optional<std::string> key = Decode(digest);
    const std::optional<std::string> value = Decode(line);
    if (key && value) remarks_[*key] = *value;
    return;
  }
  const std::string_view fingerprint = TakeField(line);
  WrittenPage page;
  page.digest = DigestFromText(digest);
  if (!ReadNumber(size, page.size) || page.digest.IsNone() || fingerprint.empty()) return;
  ReadFingerprint(fingerprint, page);
  std::string_view name = line;
  if (name.find('%') != name.npos) {
    std::optional<std::string> decoded = Decode(name);
    if (!decoded) return;
    name = decoded_.emplace_back(*std::move(decoded));
  }
  if (IsFileName(name)) earlier_.push_back({name, page});
}

std::span<const ListedPage> PageList::Find(std::string_view name) const {
  const auto [first, last] =
      std::equal_range(earlier_.begin(), earlier_.end(), ListedPage{name, {}}, IsBefore);
  return {first, last};
}

bool PageList::Holds(std::string_view name, const WrittenPage& page) const {
  const auto known = Find(name);
  return std::any_of(known.begin(), known.end(),
                     [&](const ListedPage& listed) { return listed.page.HasContentOf(page); });
}

void PageList::Note(std::string_view name, const WrittenPage& page) {
  std::string line;
  AppendLine(line, name, page);
  if (!changed_) {
    changed_ = true;
    // The first note of a run may follow the half line of one that was cut short; whatever is no
    // list makes room for one.
    const bool isList = text_.starts_with(kHeader);
    if (!isList) unlink(path_.c_str());
    line.insert(0, !isList ? kHeader : text_.ends_with('\n') ? "" : "\n");
    const int mode = O_WRONLY | O_APPEND | O_CLOEXEC | O_NOFOLLOW | (isList ? 0 : O_CREAT | O_EXCL);
    journal_ = open(path_.c_str(), mode, 0666);
  }
  if (journal_ >= 0) static_cast<void>(platform::WriteAll(journal_, line));
}

std::error_code PageList::Replace(const std::vector<ListedPage>& pages, const Remarks& remarks) {
  if (pages.empty()) {
    return unlink(path_.c_str()) == 0 || errno == ENOENT ? std::error_code() : LastError();
  }
  const std::string text = TextOf(pages, remarks);
  if (text == text_ && !changed_) return {};
  return platform::PutFile(path_, text, platform::Flush::kYes);
}

}  // namespace morvane
