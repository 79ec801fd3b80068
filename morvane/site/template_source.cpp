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

int LineOf(std::string_view text, std::size_t position) {
  const std::string_view before = text.substr(0, position);
  return 1 + static_cast<int>(std::count(before.begin(), before.end(), '\n'));
}

bool IsBlank(std::string_view text) { return text.find_first_not_of(" \t\r") == text.npos; }

}  // namespace

struct TemplateSource::File {
  fs::path path;
  int depth;
  std::string text;
  std::size_t position = 0;  // everything before it is done

  std::size_t LineStart(std::size_t at) const {
    const std::size_t newline = at == 0 ? text.npos : text.rfind('\n', at - 1);
    return newline == text.npos ? 0 : newline + 1;
  }
  std::size_t LineEnd(std::size_t at) const { return std::min(text.find('\n', at), text.size()); }
  bool StandsAlone(std::size_t start, std::size_t end) const {
    const std::string_view all = text;
    const std::size_t first = LineStart(start);
    return IsBlank(all.substr(first, start - first)) &&
           IsBlank(all.substr(end, LineEnd(end) - end));
  }
};

fs::path TemplatePath(const fs::path& folder, std::string_view name) {
  fs::path file = platform::SystemPath(name);
  if (!file.has_extension()) file.replace_extension(config::kTemplateExtension);
  return folder / file;
}

bool TemplateSource::Read(const fs::path& folder, std::string_view name, TemplateFault& fault) {
  folder_ = folder;
  path_ = TemplatePath(folder, name);
  return Append(path_, 0, fault);
}

bool TemplateSource::Append(const fs::path& path, int depth, TemplateFault& fault) {
  std::error_code error;
  File file{path, depth, text::DecodeText(platform::ReadWholeFile(path, error))};
  if (error) {
    fault = {path.string(), 0, "the template cannot be read: " + error.message()};
    return false;
  }
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  if (file.text.starts_with(kMark)) file.text.erase(0, kMark.size());
  while (true) {
    const std::size_t start = file.text.find(kOpen, file.position);
    AppendText(file, file.position, std::min(start, file.text.size()));
    if (start == file.text.npos) return true;
    file.position = start;
    if (!AppendTag(file, start, fault)) return false;
  }
}

bool TemplateSource::AppendTag(File& file, std::size_t start, TemplateFault& fault) {
  const std::size_t inside = start + kOpen.size();
  const char kind = inside < file.text.size() ? file.text[inside] : '\0';
  const std::size_t close = file.text.find(kClose, inside);
  if ((kind != '!' && kind != '>') || close == file.text.npos) {
    // Other delimiters from here on: the rest is not looked through.
    const std::size_t end = kind == '=' ? file.text.size() : std::min(inside + 1, file.text.size());
    AppendText(file, start, end);
    file.position = end;
    return true;
  }
  const std::string content = file.text.substr(inside + 1, close - inside - 1);
  std::size_t end = close + kClose.size();
  if (file.StandsAlone(start, end)) {
    // The line goes with its tag.
    end = std::min(file.LineEnd(end) + 1, file.text.size());
    text_.erase(text_.find_last_not_of(" \t") + 1);
  }
  if (kind == '>' && !Include(file, start, text::TrimBlanks(content), fault)) return false;
  if (kind == '!' && file.depth == 0) Note(content);
  file.position = end;
  return true;
}

bool TemplateSource::Include(const File& file, std::size_t start, std::string_view name,
                             TemplateFault& fault) {
  const TemplateFault here{file.path.string(), LineOf(file.text, start), {}};
  if (file.depth >= kMostIncludes) {
    fault = here;
    fault.text = "\"" + std::string(name) + "\" includes itself";
    return false;
  }
  const fs::path path = TemplatePath(folder_, name);
  if (!platform::FileExists(path)) {
    fault = here;
    fault.text = "the included file " + path.string() + " does not exist";
    return false;
  }
  return Append(path, file.depth + 1, fault);
}

void TemplateSource::AppendText(const File& file, std::size_t start, std::size_t end) {
  if (start == end) return;
  pieces_.push_back({text_.size(), file.path.string(), LineOf(file.text, start)});
  text_.append(file.text, start, end - start);
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
  return {piece.file, piece.line + LineOf(since, since.size()) - 1, std::move(text)};
}

}  // namespace morvane
