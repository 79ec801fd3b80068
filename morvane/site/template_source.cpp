#include "morvane/site/template_source.h"

#include <algorithm>
#include <system_error>

#include "config/file_names.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "text/characters.h"
#include "text/text.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

constexpr int kMostIncludes = 16;  // one inside the other
constexpr std::string_view kOpen = "{{";
constexpr std::string_view kClose = "}}";

bool IsBlank(std::string_view text) { return text.find_first_not_of(" \t\r") == text.npos; }

}  // namespace

/// A file that is read from its start to its end, each byte once.
struct TemplateSource::File {
  std::size_t number;  // index into files_
  int depth;
  std::string text;
  std::size_t position = 0;  // everything before it is done
  int line = 1;              // of the position
  bool afterBlanks = true;   // nothing but blanks stands before the position in its line

  std::string_view Rest() const { return std::string_view(text).substr(position); }
  std::size_t LineEnd(std::size_t at) const { return std::min(text.find('\n', at), text.size()); }
  /// Whether nothing but blanks stands beside a tag from the position to `end`.
  bool StandsAlone(std::size_t end) const {
    return afterBlanks && IsBlank(std::string_view(text).substr(end, LineEnd(end) - end));
  }
  void MoveTo(std::size_t to) {
    const std::string_view passed = std::string_view(text).substr(position, to - position);
    line += static_cast<int>(std::count(passed.begin(), passed.end(), '\n'));
    const std::size_t newline = passed.rfind('\n');
    const std::size_t lineStart = newline == passed.npos ? 0 : newline + 1;
    afterBlanks = (afterBlanks || lineStart > 0) && IsBlank(passed.substr(lineStart));
    position = to;
  }
};

fs::path TemplatePath(const fs::path& folder, std::string_view name) {
  fs::path file = platform::SystemPath(name);
  if (!file.has_extension()) file.replace_extension(config::kTemplateExtension);
  return folder / file;
}

std::optional<TemplateFault> TemplateSource::Read(const fs::path& folder, std::string_view name) {
  folder_ = folder;
  path_ = TemplatePath(folder, name);
  if (std::optional<TemplateFault> fault = Append(path_, 0)) return fault;
  return FindDeepSection();
}

std::optional<TemplateFault> TemplateSource::Append(const fs::path& path, int depth) {
  std::error_code error;
  const std::string bytes = platform::ReadWholeFile(path, error);
  if (error) {
    return TemplateFault{path.string(), 0, "the template cannot be read: " + error.message()};
  }
  if (depth > 0) included_ += bytes.size();
  File file{files_.size(), depth, text::DecodeText(text::WithoutMark(bytes))};
  files_.push_back(path.string());
  while (file.position < file.text.size()) {
    AppendUpTo(file, std::min(file.text.find(kOpen, file.position), file.text.size()));
    if (std::optional<TemplateFault> fault = AppendTag(file)) return fault;
  }
  return {};
}

/// Goes over a tag at the position, where there is one.
std::optional<TemplateFault> TemplateSource::AppendTag(File& file) {
  const std::string_view rest = file.Rest();
  const char kind = rest.size() > kOpen.size() ? rest[kOpen.size()] : '\0';
  if (kind != '!' && kind != '>') {
    // Other delimiters from here on: the rest is not looked through.
    const std::size_t length = kind == '=' ? rest.size() : std::min(kOpen.size() + 1, rest.size());
    AppendUpTo(file, file.position + length);
    return {};
  }
  const std::size_t close = rest.find(kClose, kOpen.size());
  if (close == rest.npos) {
    AppendUpTo(file, file.text.size());
    return {};
  }
  const std::string_view content = rest.substr(kOpen.size() + 1, close - kOpen.size() - 1);
  std::size_t end = file.position + close + kClose.size();
  if (file.StandsAlone(end)) {
    // The line goes with its tag.
    end = std::min(file.LineEnd(end) + 1, file.text.size());
    text_.erase(text_.find_last_not_of(" \t") + 1);
  }
  if (kind == '>') {
    if (auto fault = Include(file, text::TrimBlanks(content))) return fault;
  } else if (file.depth == 0) {
    Note(content);
  }
  file.MoveTo(end);
  return {};
}

std::optional<TemplateFault> TemplateSource::Include(const File& file, std::string_view name) {
  const auto fault = [&](const std::string& text) {
    return TemplateFault{files_[file.number], file.line, text};
  };
  const fs::path path = TemplatePath(folder_, name);
  if (file.depth >= kMostIncludes) return fault("\"" + std::string(name) + "\" includes itself");
  if (!platform::FileExists(path)) {
    return fault("the included file " + path.string() + " does not exist");
  }
  if (std::optional<TemplateFault> inner = Append(path, file.depth + 1)) return inner;
  if (included_ <= kMostIncluded) return {};
  return fault("with \"" + std::string(name) + "\" more than " +
               std::to_string(kMostIncluded >> 20U) + " MB are included");
}

void TemplateSource::AppendUpTo(File& file, std::size_t end) {
  if (end == file.position) return;
  pieces_.push_back({text_.size(), file.number, file.line});
  text_.append(file.text, file.position, end - file.position);
  file.MoveTo(end);
}

// The parser keeps the text of each section, and goes down into them.
std::optional<TemplateFault> TemplateSource::FindDeepSection() const {
  std::string open(kOpen);
  std::string close(kClose);
  int depth = 0;
  for (std::size_t at = text_.find(open); at != text_.npos; at = text_.find(open, at)) {
    const std::size_t start = at;
    const std::size_t end = text_.find(close, start + open.size());
    if (end == text_.npos) break;
    at = end + close.size();
    const std::string_view inside = text::TrimBlanks(
        std::string_view(text_).substr(start + open.size(), end - start - open.size()));
    const char kind = inside.empty() ? '\0' : inside.front();
    if (kind == '#' || kind == '^') ++depth;
    if (kind == '/') --depth;
    if (depth > kMostNested) {
      return FaultAt(start, "more than " + std::to_string(kMostNested) +
                                " sections stand one inside the other");
    }
    const std::size_t blank = inside.find_first_of(" \t");
    if (kind != '=' || !inside.ends_with('=') || blank == inside.npos) continue;
    open = inside.substr(1, blank - 1);
    close = text::TrimBlanks(inside.substr(blank, inside.size() - 1 - blank));
    if (open.empty() || close.empty()) break;
  }
  return {};
}

void TemplateSource::Note(std::string_view comment) {
  const std::size_t colon = comment.find(':');
  if (colon == comment.npos) return;
  const std::string name = text::FoldCase(text::TrimBlanks(comment.substr(0, colon)));
  notes_.emplace(name, text::TrimBlanks(comment.substr(colon + 1)));
}

TemplateFault TemplateSource::FaultAt(std::size_t position, std::string text) const {
  const auto after = std::upper_bound(
      pieces_.begin(), pieces_.end(), position,
      [](std::size_t value, const Piece& piece) { return value < piece.position; });
  if (after == pieces_.begin()) return {{}, 0, std::move(text)};
  const Piece& piece = *std::prev(after);
  const std::string_view since = std::string_view(text_).substr(0, position).substr(piece.position);
  const auto lines = static_cast<int>(std::count(since.begin(), since.end(), '\n'));
  return {files_[piece.file], piece.line + lines, std::move(text)};
}

}  // namespace morvane
