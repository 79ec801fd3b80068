#include "morvane/site/page_list.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <xxhash.h>

#include "platform/files.h"
#include "platform/replace_file.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;
using platform::LastError;

constexpr std::string_view kHeader = "morvane pages 1\n";
constexpr std::string_view kNoFingerprint = "-";
constexpr std::size_t kDigestDigits = 32;
constexpr char kHexDigits[] = "0123456789abcdef";

bool IsHex(std::string_view text) {
  return text.find_first_not_of(kHexDigits) == std::string_view::npos;
}

bool IsPlain(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte > 0x20 && byte != 0x7F && c != '%';
}

std::string EncodeName(std::string_view name) {
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

std::optional<std::string> DecodeName(std::string_view text) {
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
  return IsFileName(name) ? std::optional(std::move(name)) : std::nullopt;
}

std::string Line(const std::string& name, const WrittenPage& page) {
  return std::to_string(page.size) + " " + page.digest + " " +
         (page.fingerprint.empty() ? std::string(kNoFingerprint) : page.fingerprint) + " " +
         EncodeName(name) + "\n";
}

std::string_view TakeField(std::string_view& line) {
  const std::size_t end = std::min(line.find(' '), line.size());
  const std::string_view field = line.substr(0, end);
  line.remove_prefix(std::min(end + 1, line.size()));
  return field;
}

/// Adds what a line says, or nothing.
void ReadLine(std::string_view line, PageList::Pages& pages) {
  const std::string_view size = TakeField(line);
  const std::string_view digest = TakeField(line);
  const std::string_view fingerprint = TakeField(line);
  WrittenPage page;
  const auto [end, error] = std::from_chars(size.data(), size.data() + size.size(), page.size);
  const bool isValid = error == std::errc() && end == size.data() + size.size() &&
                       digest.size() == kDigestDigits && IsHex(digest) && !fingerprint.empty();
  const std::optional<std::string> name = DecodeName(line);
  if (!isValid || !name) return;
  page.digest = digest;
  if (fingerprint != kNoFingerprint) page.fingerprint = fingerprint;
  pages[*name].push_back(std::move(page));
}

/// A line without its end was being written when a run was cut short.
PageList::Pages ReadList(std::string_view text) {
  PageList::Pages pages;
  if (!text.starts_with(kHeader)) return pages;
  text.remove_prefix(kHeader.size());
  for (std::size_t end = text.find('\n'); end != text.npos; end = text.find('\n')) {
    ReadLine(text.substr(0, end), pages);
    text.remove_prefix(end + 1);
  }
  return pages;
}

std::string TextOf(const PageList::Pages& pages) {
  std::string text(kHeader);
  for (const auto& [name, states] : pages) {
    for (const WrittenPage& page : states) text += Line(name, page);
  }
  return text;
}

}  // namespace

WrittenPage Describe(std::string_view content) {
  const XXH128_hash_t hash = XXH3_128bits(content.data(), content.size());
  WrittenPage page;
  page.size = content.size();
  for (const XXH64_hash_t half : {hash.high64, hash.low64}) {
    for (int shift = 60; shift >= 0; shift -= 4) page.digest += kHexDigits[(half >> shift) & 0xF];
  }
  return page;
}

PageList::PageList(const fs::path& folder, std::error_code& error) : path_(folder / kFileName) {
  struct stat status = {};
  if (error || lstat(path_.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return;
  text_ = platform::ReadWholeFile(path_, error);
  earlier_ = ReadList(text_);
}

PageList::~PageList() {
  if (journal_ >= 0) close(journal_);
}

bool PageList::Holds(std::string_view name, const WrittenPage& page) const {
  const auto known = earlier_.find(name);
  return known != earlier_.end() &&
         std::any_of(known->second.begin(), known->second.end(), [&](const WrittenPage& state) {
           return state.size == page.size && state.digest == page.digest;
         });
}

void PageList::Note(const std::string& name, const WrittenPage& page) {
  std::string text = Line(name, page);
  if (!changed_) {
    changed_ = true;
    // The first note of a run may follow the half line of one that was cut short; whatever is no
    // list makes room for one.
    const bool isList = text_.starts_with(kHeader);
    if (!isList) unlink(path_.c_str());
    text.insert(0, !isList ? kHeader : text_.ends_with('\n') ? "" : "\n");
    const int mode = O_WRONLY | O_APPEND | O_CLOEXEC | O_NOFOLLOW | (isList ? 0 : O_CREAT | O_EXCL);
    journal_ = open(path_.c_str(), mode, 0666);
  }
  if (journal_ >= 0) static_cast<void>(platform::WriteAll(journal_, text));
}

std::error_code PageList::Replace(const Pages& pages) {
  if (pages.empty()) {
    return unlink(path_.c_str()) == 0 || errno == ENOENT ? std::error_code() : LastError();
  }
  const std::string text = TextOf(pages);
  if (text == text_ && !changed_) return {};
  return platform::PutFile(path_, text, platform::Flush::kYes);
}

}  // namespace morvane
