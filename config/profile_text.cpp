#include "config/profile_text.h"

#include <algorithm>
#include <utility>

#include "text/characters.h"
#include "text/text.h"

namespace config {
namespace {

constexpr std::string_view kNewFileEnding = "\r\n";

bool IsHeader(std::string_view line) { return text::TrimBlanks(line).starts_with('['); }

bool IsComment(std::string_view line) {
  line = text::TrimBlanks(line);
  return line.starts_with(';') || line.starts_with("//");
}

bool IsKey(std::string_view line) {
  return !IsHeader(line) && !IsComment(line) && line.find('=') != std::string_view::npos;
}

/// A name as it is read. A file may hold more of it than one line of a new file could.
std::string Name(std::string_view name) {
  return text::DecodeText(text::TrimBlanks(ProfileText::OneLine(name)));
}

/// A name as names are compared.
std::string FoldedName(std::string_view name) { return text::FoldCase(Name(name)); }

/// The name of a section as the caller gives it; empty where no header could be read back as it.
std::string FoldedSection(std::string_view section) {
  const std::string name = FoldedName(section);
  return name.starts_with('[') || name.find(']') != std::string::npos ? std::string() : name;
}

std::string FoldedHeaderName(std::string_view line) {
  line = text::TrimBlanks(line);
  line.remove_prefix(1);
  return FoldedName(line.substr(0, line.find(']')));
}

std::string_view KeyName(std::string_view line) {
  return text::TrimBlanks(line.substr(0, line.find('=')));
}

std::string_view WithoutQuotes(std::string_view value) {
  const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                      (value.front() == '"' || value.front() == '\'');
  return quoted ? value.substr(1, value.size() - 2) : value;
}

bool IsBlank(std::string_view line) { return text::TrimBlanks(line).empty(); }

bool IsUtf16(std::string_view bytes) {
  return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
}

/// Puts a value behind the "=" of a key line and the blanks that follow it. A line that holds the
/// value behind such blanks already stays.
void ReplaceValue(std::string& line, std::string_view value) {
  const std::size_t afterEquals = line.find('=') + 1;
  const std::string_view rest = std::string_view(line).substr(afterEquals);
  const std::size_t blanks = std::min(rest.find_first_not_of(" \t\v\f"), rest.size());
  if (rest.size() >= value.size() && rest.size() - value.size() <= blanks &&
      rest.ends_with(value)) {
    return;
  }
  line.replace(afterEquals + blanks, std::string::npos, value);
}

}  // namespace

std::string ProfileText::OneLine(std::string_view text) {
  text = text.substr(0, text.find('\0'));
  std::string line;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
    line += text[i] == '\r' || text[i] == '\n' ? ' ' : text[i];
  }
  return line;
}

bool ProfileText::IsKeyName(std::string_view name) {
  const std::string line = OneLine(name);
  return !IsHeader(line) && !IsComment(line);
}

ProfileText::ProfileText(std::string_view bytes) : usable_(!IsUtf16(bytes)) {
  const std::string_view text = text::WithoutMark(bytes);
  mark_ = bytes.substr(0, bytes.size() - text.size());
  SplitLines(text);
  if (usable_) BuildIndex();
}

void ProfileText::SplitLines(std::string_view bytes) {
  blocks_.emplace_back();
  while (!bytes.empty()) {
    const std::size_t length = std::min(bytes.find_first_of("\r\n"), bytes.size());
    const std::string_view text = bytes.substr(0, length);
    bytes.remove_prefix(length);
    const std::size_t ending =
        bytes.starts_with("\r\n") ? 2 : std::min<std::size_t>(1, bytes.size());
    if (usable_ && IsHeader(text)) blocks_.push_back({FoldedHeaderName(text), {}, 0});
    blocks_.back().lines.push_back({std::string(text), std::string(bytes.substr(0, ending))});
    bytes.remove_prefix(ending);
  }
}

void ProfileText::BuildIndex() {
  sections_.clear();
  for (std::size_t block = 0; block < blocks_.size(); ++block) IndexBlock(block);
}

void ProfileText::IndexBlock(std::size_t block) {
  const bool named = !blocks_[block].name.empty();
  Section* section =
      named ? &sections_.try_emplace(blocks_[block].name, Section{block, {}}).first->second
            : nullptr;
  const std::vector<Line>& lines = blocks_[block].lines;
  blocks_[block].keysEnd = 0;
  for (std::size_t line = 0; line < lines.size(); ++line) {
    if (!IsKey(lines[line].text)) continue;
    blocks_[block].keysEnd = line + 1;
    if (section != nullptr) {
      section->keys.try_emplace(FoldedName(KeyName(lines[line].text)), Place{block, line});
    }
  }
}

std::optional<std::string> ProfileText::Get(std::string_view section, std::string_view key) const {
  const auto found = sections_.find(FoldedSection(section));
  if (found == sections_.end()) return std::nullopt;
  const auto place = found->second.keys.find(FoldedName(key));
  if (place == found->second.keys.end()) return std::nullopt;
  std::string_view value = blocks_[place->second.block].lines[place->second.line].text;
  value.remove_prefix(value.find('=') + 1);
  value = value.substr(0, value.find('\0'));
  return text::DecodeText(WithoutQuotes(text::TrimBlanks(value)));
}

std::vector<std::string> ProfileText::KeyNames(std::string_view section) const {
  std::vector<std::string> names;
  const std::string name = FoldedSection(section);
  if (name.empty() || !usable_) return names;
  for (const Block& block : blocks_) {
    if (block.name != name) continue;
    for (const Line& line : block.lines) {
      if (IsKey(line.text)) names.push_back(Name(KeyName(line.text)));
    }
  }
  return names;
}

void ProfileText::Set(std::string_view section, std::string_view key, std::string_view value) {
  const std::string foldedSection = FoldedSection(section);
  if (!usable_ || foldedSection.empty() || !IsKeyName(key)) return;
  // The first "=" of a line ends the name, also one that the caller meant as a part of it.
  const std::string line = OneLine(key) + "=" + OneLine(value);
  const std::string_view name = KeyName(line);
  const std::string_view text = std::string_view(line).substr(line.find('=') + 1);

  const auto found = sections_.find(foldedSection);
  Section& target = found != sections_.end() ? found->second : AddSection(section);
  const auto place = target.keys.find(FoldedName(name));
  if (place != target.keys.end()) {
    ReplaceValue(blocks_[place->second.block].lines[place->second.line].text, text);
  } else {
    AddKey(target, name, text);
  }
}

void ProfileText::AddKey(Section& section, std::string_view name, std::string_view value) {
  const std::size_t index = section.firstBlock;
  Block& block = blocks_[index];
  std::size_t line = block.keysEnd;
  if (line == 0) {
    line = 1;
    while (line < block.lines.size() && IsComment(block.lines[line].text)) ++line;
  }
  const std::string ending = EndingAfter(index, line - 1);
  block.lines[line - 1].ending = ending;
  block.lines.insert(block.lines.begin() + static_cast<std::ptrdiff_t>(line),
                     {std::string(name).append("=").append(value), ending});
  block.keysEnd = line + 1;
  section.keys.try_emplace(FoldedName(name), Place{index, line});
}

ProfileText::Section& ProfileText::AddSection(std::string_view section) {
  TerminateLastLine();
  const std::string ending = EndingAfter(blocks_.size() - 1, std::string::npos);
  const std::string name = FoldedName(section);
  blocks_.push_back({name, {{"[" + OneLine(section) + "]", ending}}, 0});
  return sections_.try_emplace(name, Section{blocks_.size() - 1, {}}).first->second;
}

/// The ending of a line (of the block's last one when there is no such line); of the nearest line
/// before it that has one, when it stands at the end of the text without any.
std::string ProfileText::EndingAfter(std::size_t block, std::size_t line) const {
  for (std::size_t b = block + 1; b-- > 0;) {
    const std::vector<Line>& lines = blocks_[b].lines;
    const std::size_t last = b == block && line < lines.size() ? line + 1 : lines.size();
    for (std::size_t i = last; i-- > 0;) {
      if (!lines[i].ending.empty()) return lines[i].ending;
    }
  }
  return std::string(kNewFileEnding);
}

void ProfileText::TerminateLastLine() {
  for (std::size_t b = blocks_.size(); b-- > 0;) {
    std::vector<Line>& lines = blocks_[b].lines;
    if (lines.empty()) continue;
    lines.back().ending = EndingAfter(b, lines.size() - 1);
    return;
  }
}

void ProfileText::EmptySection(std::string_view section) {
  const std::string name = FoldedSection(section);
  if (!usable_ || name.empty()) return;
  for (Block& block : blocks_) {
    if (block.name != name) continue;
    std::erase_if(block.lines,
                  [](const Line& line) { return !IsHeader(line.text) && !IsComment(line.text); });
  }
  SpaceHeaders();
}

void ProfileText::SpaceHeaders() {
  if (!usable_) return;
  for (Block& block : blocks_) {
    const bool isFirst = &block == &blocks_.front();
    const auto begin = block.lines.begin() + (isFirst && KeepsFirstLine() ? 1 : 0);
    const auto isBlank = [](const Line& line) { return IsBlank(line.text); };
    block.lines.erase(std::remove_if(begin, block.lines.end(), isBlank), block.lines.end());
  }
  InsertBlankLines();
  BuildIndex();
}

/// Whether the text begins with blank lines that keep the characters of a byte-order mark from
/// becoming its first ones: the file would be read as another one.
bool ProfileText::KeepsFirstLine() const {
  const std::vector<Line>& lines = blocks_.front().lines;
  const auto first = std::find_if(lines.begin(), lines.end(),
                                  [](const Line& line) { return !IsBlank(line.text); });
  if (!mark_.empty() || first == lines.begin() || first == lines.end()) return false;
  return IsUtf16(first->text) || first->text.starts_with(text::kUtf8Mark);
}

void ProfileText::InsertBlankLines() {
  for (std::size_t next = 1; next < blocks_.size(); ++next) {
    std::vector<Line>& before = blocks_[next - 1].lines;
    // The first line of the text has no line before it to take its ending from.
    const std::string& own = blocks_[next].lines.front().ending;
    const bool first = next == 1 && before.empty();
    const std::string ending =
        first && !own.empty() ? own : EndingAfter(next - 1, std::string::npos);
    before.insert(before.end(), 2, {"", ending});
  }
}

std::string ProfileText::Bytes() const {
  std::string bytes = mark_;
  for (const Block& block : blocks_) {
    for (const Line& line : block.lines) bytes.append(line.text).append(line.ending);
  }
  return bytes;
}

}  // namespace config
