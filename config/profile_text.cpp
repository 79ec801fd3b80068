#include "config/profile_text.h"

#include <algorithm>
#include <utility>

#include "text/characters.h"
#include "text/text.h"

namespace config {
namespace {

constexpr std::string_view kNewFileEnding = "\r\n";

enum class Kind { kBlank, kHeader, kComment, kKey, kOther };

Kind KindOf(std::string_view line) {
  const std::size_t first = line.find_first_not_of(text::kBlanks);
  if (first == std::string_view::npos) return Kind::kBlank;
  line.remove_prefix(first);
  if (line.front() == '[') return Kind::kHeader;
  if (line.front() == ';' || line.starts_with("//")) return Kind::kComment;
  return line.find('=') != std::string_view::npos ? Kind::kKey : Kind::kOther;
}

bool IsLineBreak(char c) { return c == '\r' || c == '\n'; }

/// A name as it is read. A file may hold more of it than one line of a new file could.
std::string Name(std::string_view name) {
  return text::DecodeText(text::TrimBlanks(ProfileText::OneLine(name)));
}

/// A name as names are compared.
std::string FoldedName(std::string_view name) { return text::FoldCase(Name(name)); }

/// Whether a name without blanks around it is compared as it stands.
bool IsFolded(std::string_view name) {
  return std::ranges::all_of(name, [](char c) {
    return c != '\0' && static_cast<unsigned char>(c) < 0x80 && !(c >= 'A' && c <= 'Z');
  });
}

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

bool IsUtf16(std::string_view bytes) {
  return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
}

/// How much of a key line stays when it gets another value: to the "=" and the blanks after it. All
/// of it where it holds the value behind such blanks already.
std::size_t LengthBeforeValue(std::string_view line, std::string_view value) {
  const std::size_t afterEquals = line.find('=') + 1;
  const std::string_view rest = line.substr(afterEquals);
  const std::size_t blanks = std::min(rest.find_first_not_of(text::kBlanks), rest.size());
  const bool holds =
      rest.size() >= value.size() && rest.size() - value.size() <= blanks && rest.ends_with(value);
  return holds ? line.size() - value.size() : afterEquals + blanks;
}

}  // namespace

std::string ProfileText::OneLine(std::string_view text) {
  text = text.substr(0, text.find('\0'));
  if (std::ranges::none_of(text, IsLineBreak)) return std::string(text);
  std::string line;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
    line += IsLineBreak(text[i]) ? ' ' : text[i];
  }
  return line;
}

bool ProfileText::IsKeyName(std::string_view name) {
  const Kind kind = KindOf(OneLine(name));
  return kind != Kind::kHeader && kind != Kind::kComment;
}

ProfileText::ProfileText(std::string_view bytes) : usable_(!IsUtf16(bytes)) {
  const std::string_view text = text::WithoutMark(bytes);
  mark_ = bytes.substr(0, bytes.size() - text.size());
  SplitLines(Keep(std::string(text)));
}

/// Takes bytes in, for as long as the text lives.
std::string_view ProfileText::Keep(std::string text) const {
  return texts_->emplace_back(std::move(text));
}

void ProfileText::SplitLines(std::string_view bytes) {
  AddBlock({});
  while (!bytes.empty()) {
    const auto end = std::ranges::find_if(bytes, IsLineBreak);
    const std::string_view text = bytes.substr(0, static_cast<std::size_t>(end - bytes.begin()));
    bytes.remove_prefix(text.size());
    const std::size_t ending =
        bytes.starts_with("\r\n") ? 2 : std::min<std::size_t>(1, bytes.size());
    if (usable_ && KindOf(text) == Kind::kHeader) AddBlock(FoldedHeaderName(text));
    blocks_.back().lines.push_back({text, bytes.substr(0, ending)});
    bytes.remove_prefix(ending);
  }
}

void ProfileText::AddBlock(std::string name) {
  if (!name.empty()) sections_[name].blocks.push_back(blocks_.size());
  blocks_.push_back({std::move(name), {}});
}

/// The section of a folded name, ready for its keys to be found; none where there is no such.
ProfileText::Section* ProfileText::FindSection(const std::string& name) const {
  const auto found = sections_.find(name);
  if (found == sections_.end()) return nullptr;
  if (!found->second.isIndexed) IndexKeys(found->second);
  return &found->second;
}

void ProfileText::IndexKeys(Section& section) const {
  section.keys.clear();
  section.keysEnd = 0;
  for (const std::size_t block : section.blocks) {
    const std::vector<Line>& lines = blocks_[block].lines;
    section.keys.reserve(section.keys.size() + lines.size());
    for (std::size_t line = 0; line < lines.size(); ++line) {
      if (KindOf(lines[line].text) != Kind::kKey) continue;
      if (block == section.blocks.front()) section.keysEnd = line + 1;
      section.keys.try_emplace(FoldedKeyName(lines[line].text), Place{block, line});
    }
  }
  section.isIndexed = true;
}

/// The name of a key line as names are compared; the line's own bytes where they are just that.
std::string_view ProfileText::FoldedKeyName(std::string_view line) const {
  const std::string_view name = KeyName(line);
  return IsFolded(name) ? name : Keep(FoldedName(name));
}

std::optional<std::string> ProfileText::Get(std::string_view section, std::string_view key) const {
  const Section* const found = FindSection(FoldedSection(section));
  if (found == nullptr) return std::nullopt;
  const auto place = found->keys.find(FoldedName(key));
  if (place == found->keys.end()) return std::nullopt;
  std::string_view value = blocks_[place->second.block].lines[place->second.line].text;
  value.remove_prefix(value.find('=') + 1);
  value = value.substr(0, value.find('\0'));
  return text::DecodeText(WithoutQuotes(text::TrimBlanks(value)));
}

std::vector<std::string> ProfileText::KeyNames(std::string_view section) const {
  std::vector<std::string> names;
  const auto found = sections_.find(FoldedSection(section));
  if (found == sections_.end()) return names;
  for (const std::size_t block : found->second.blocks) {
    for (const Line& line : blocks_[block].lines) {
      if (KindOf(line.text) == Kind::kKey) names.push_back(Name(KeyName(line.text)));
    }
  }
  return names;
}

void ProfileText::Set(std::string_view section, std::string_view key, std::string_view value) {
  const std::string foldedSection = FoldedSection(section);
  if (!usable_ || foldedSection.empty() || !IsKeyName(key)) return;
  // The first "=" of a line ends the name, also one that the caller meant as a part of it.
  std::string line = OneLine(key).append("=").append(OneLine(value));
  line.erase(0, line.find_first_not_of(text::kBlanks));
  const std::size_t name = KeyName(line).size();
  line.erase(name, line.find('=') - name);

  Section* const found = FindSection(foldedSection);
  Section& target = found != nullptr ? *found : AddSection(section);
  const auto place = target.keys.find(FoldedName(KeyName(line)));
  if (place == target.keys.end()) {
    AddKey(target, Keep(std::move(line)));
    return;
  }
  std::string_view& old = blocks_[place->second.block].lines[place->second.line].text;
  const std::string_view text = std::string_view(line).substr(name + 1);
  old = Keep(std::string(old.substr(0, LengthBeforeValue(old, text))).append(text));
}

void ProfileText::AddKey(Section& section, std::string_view line) {
  const std::size_t index = section.blocks.front();
  Block& block = blocks_[index];
  std::size_t place = section.keysEnd;
  if (place == 0) {
    place = 1;
    while (place < block.lines.size() && KindOf(block.lines[place].text) == Kind::kComment) ++place;
  }
  const std::string_view ending = EndingAfter(index, place - 1);
  block.lines[place - 1].ending = ending;
  block.lines.insert(block.lines.begin() + static_cast<std::ptrdiff_t>(place), {line, ending});
  section.keysEnd = place + 1;
  section.keys.try_emplace(FoldedKeyName(line), Place{index, place});
}

ProfileText::Section& ProfileText::AddSection(std::string_view section) {
  TerminateLastLine();
  const std::string_view ending = EndingAfter(blocks_.size() - 1, std::string::npos);
  const std::string name = FoldedName(section);
  AddBlock(name);
  blocks_.back().lines.push_back({Keep("[" + OneLine(section) + "]"), ending});
  return *FindSection(name);
}

/// The ending of a line (of the block's last one when there is no such line); of the nearest line
/// before it that has one, when it stands at the end of the text without any.
std::string_view ProfileText::EndingAfter(std::size_t block, std::size_t line) const {
  for (std::size_t b = block + 1; b-- > 0;) {
    const std::vector<Line>& lines = blocks_[b].lines;
    const std::size_t last = b == block && line < lines.size() ? line + 1 : lines.size();
    for (std::size_t i = last; i-- > 0;) {
      if (!lines[i].ending.empty()) return lines[i].ending;
    }
  }
  return kNewFileEnding;
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
    std::erase_if(block.lines, [](const Line& line) {
      const Kind kind = KindOf(line.text);
      return kind != Kind::kHeader && kind != Kind::kComment;
    });
  }
  SpaceHeaders();
}

void ProfileText::SpaceHeaders() {
  if (!usable_) return;
  for (Block& block : blocks_) {
    const bool isFirst = &block == &blocks_.front();
    const auto begin = block.lines.begin() + (isFirst && KeepsFirstLine() ? 1 : 0);
    const auto isBlank = [](const Line& line) { return KindOf(line.text) == Kind::kBlank; };
    block.lines.erase(std::remove_if(begin, block.lines.end(), isBlank), block.lines.end());
  }
  InsertBlankLines();
  for (auto& [name, section] : sections_) section.isIndexed = false;
}

/// Whether the text begins with blank lines that keep the characters of a byte-order mark from
/// becoming its first ones: the file would be read as another one.
bool ProfileText::KeepsFirstLine() const {
  const std::vector<Line>& lines = blocks_.front().lines;
  const auto first = std::find_if(lines.begin(), lines.end(), [](const Line& line) {
    return KindOf(line.text) != Kind::kBlank;
  });
  if (!mark_.empty() || first == lines.begin() || first == lines.end()) return false;
  return IsUtf16(first->text) || first->text.starts_with(text::kUtf8Mark);
}

void ProfileText::InsertBlankLines() {
  for (std::size_t next = 1; next < blocks_.size(); ++next) {
    std::vector<Line>& before = blocks_[next - 1].lines;
    // The first line of the text has no line before it to take its ending from.
    const std::string_view own = blocks_[next].lines.front().ending;
    const bool first = next == 1 && before.empty();
    const std::string_view ending =
        first && !own.empty() ? own : EndingAfter(next - 1, std::string::npos);
    before.insert(before.end(), 2, {"", ending});
  }
}

std::string ProfileText::Bytes() const {
  std::size_t size = mark_.size();
  for (const Block& block : blocks_) {
    for (const Line& line : block.lines) size += line.text.size() + line.ending.size();
  }
  std::string bytes = mark_;
  bytes.reserve(size);
  for (const Block& block : blocks_) {
    for (const Line& line : block.lines) bytes.append(line.text).append(line.ending);
  }
  return bytes;
}

}  // namespace config
