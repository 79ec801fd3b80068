#include "tests/config/naive_text.h"

#include <cctype>

#include "text/characters.h"
#include "text/text.h"

namespace config {
namespace {

std::string OneLine(std::string_view text) {
  std::string line;
  for (std::size_t i = 0; i < text.size() && text[i] != '\0'; ++i) {
    if (text.substr(i, 2) == "\r\n") continue;
    line += text[i] == '\r' || text[i] == '\n' ? ' ' : text[i];
  }
  return line;
}

std::string Name(std::string_view text) {
  return text::DecodeText(text::TrimBlanks(OneLine(text)));
}

std::string Folded(std::string name) {
  for (char& c : name) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(std::tolower(c));
  }
  return name;
}

/// Empty for a section that cannot be read and written.
std::string SectionName(std::string_view section) {
  const std::string name = Folded(Name(section));
  return name.find(']') != std::string::npos || name.substr(0, 1) == "[" ? "" : name;
}

/// The byte-order mark that a text begins with.
std::string_view MarkOf(std::string_view text) {
  for (const std::string_view mark : {"\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF"}) {
    if (text.starts_with(mark)) return mark;
  }
  return "";
}

}  // namespace

NaiveText::NaiveText(std::string_view bytes) : mark_(MarkOf(bytes)), usable_(mark_.size() != 2) {
  bytes.remove_prefix(mark_.size());
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    std::string_view ending;
    if (bytes[i] == '\r' || bytes[i] == '\n') ending = bytes.substr(i, 1);
    if (bytes.substr(i, 2) == "\r\n") ending = bytes.substr(i++, 2);
    if (ending.empty()) text += bytes[i];
    if (ending.empty() && i + 1 < bytes.size()) continue;
    Add(lines_.size(), text, ending);
    text.clear();
  }
}

void NaiveText::Add(std::size_t place, std::string_view text, std::string_view ending) {
  const std::string_view seen = text::TrimBlanks(text);
  const std::size_t equals = text.find('=');
  Line line{Kind::kOther, std::string(text), std::string(ending), {}};
  if (place > 0) line.section = lines_[place - 1].section;
  if (seen.empty()) {
    line.kind = Kind::kBlank;
  } else if (seen[0] == '[') {
    line.kind = Kind::kHeader;
    line.section = Folded(Name(seen.substr(1, seen.find(']') - 1)));
  } else if (seen[0] == ';' || seen.substr(0, 2) == "//") {
    line.kind = Kind::kComment;
  } else if (equals != text.npos) {
    line.kind = Kind::kKey;
    line.key = Folded(Name(text.substr(0, equals)));
  }
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(place), line);
}

std::string NaiveText::Bytes() const {
  std::string bytes = mark_;
  for (const Line& line : lines_) bytes += line.text + line.ending;
  return bytes;
}

std::optional<std::string> NaiveText::Get(std::string_view section, std::string_view key) const {
  const std::size_t place = PlaceOf(SectionName(section), Folded(Name(key)));
  if (place == lines_.size()) return std::nullopt;
  std::string_view value = lines_[place].text;
  value = value.substr(value.find('=') + 1);
  value = text::TrimBlanks(value.substr(0, value.find('\0')));
  const std::size_t size = value.size();
  const bool quoted =
      size > 1 && (value[0] == '"' || value[0] == '\'') && value[size - 1] == value[0];
  return text::DecodeText(quoted ? value.substr(1, size - 2) : value);
}

std::vector<std::string> NaiveText::KeyNames(std::string_view section) const {
  std::vector<std::string> names;
  const std::string wanted = SectionName(section);
  for (const Line& line : lines_) {
    if (!usable_ || wanted.empty() || line.kind != Kind::kKey || line.section != wanted) continue;
    names.push_back(Name(std::string_view(line.text).substr(0, line.text.find('='))));
  }
  return names;
}

void NaiveText::Set(std::string_view section, std::string_view key, std::string_view value) {
  const std::string name = OneLine(key);
  const std::string_view seen = text::TrimBlanks(name);
  const bool cannot =
      seen.substr(0, 1) == "[" || seen.substr(0, 1) == ";" || seen.substr(0, 2) == "//";
  const std::string wanted = SectionName(section);
  if (!usable_ || wanted.empty() || cannot) return;
  const std::string line = name + "=" + OneLine(value);
  const std::size_t equals = line.find('=');
  const std::string text = line.substr(equals + 1);
  std::size_t place = PlaceOf(wanted, Folded(Name(line.substr(0, equals))));
  if (place == lines_.size()) {
    place = PlaceOfNewKey(section);
    const std::string ending = EndingAt(place);
    lines_[place - 1].ending = ending;
    Add(place, std::string(text::TrimBlanks(line.substr(0, equals))) + "=" + text, ending);
    return;
  }
  std::string& old = lines_[place].text;
  std::size_t begin = old.find('=') + 1;
  const std::size_t first = begin;
  while (begin < old.size() && text::kBlanks.find(old[begin]) != text::kBlanks.npos) {
    if (old.substr(begin) == text) return;
    ++begin;
  }
  if (old.substr(first) == text) return;
  old = old.substr(0, begin) + text;
}

void NaiveText::EmptySection(std::string_view section) {
  const std::string wanted = SectionName(section);
  if (!usable_ || wanted.empty()) return;
  std::erase_if(lines_, [&](const Line& line) {
    return line.section == wanted && line.kind != Kind::kHeader && line.kind != Kind::kComment;
  });
  SpaceHeaders();
}

void NaiveText::SpaceHeaders() {
  if (!usable_) return;
  const std::vector<Line> before = lines_;
  std::erase_if(lines_, [](const Line& line) { return line.kind == Kind::kBlank; });
  const bool newMark = mark_.empty() && !lines_.empty() && !MarkOf(lines_[0].text).empty();
  if (newMark && before[0].kind == Kind::kBlank) lines_.insert(lines_.begin(), before[0]);
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    if (lines_[i].kind != Kind::kHeader) continue;
    const bool isFirst = i == 0 && !lines_[i].ending.empty();
    const std::string ending = isFirst ? lines_[i].ending : EndingAt(i);
    for (int blank = 0; blank < 2; ++blank) Add(i++, "", ending);
  }
}

std::size_t NaiveText::PlaceOf(const std::string& section, const std::string& key) const {
  std::size_t i = 0;
  while (i < lines_.size() && (!usable_ || section.empty() || lines_[i].kind != Kind::kKey ||
                               lines_[i].section != section || lines_[i].key != key)) {
    ++i;
  }
  return i;
}

std::size_t NaiveText::PlaceOfNewKey(std::string_view section) {
  const std::string wanted = SectionName(section);
  std::size_t i = 0;
  while (i < lines_.size() && (lines_[i].kind != Kind::kHeader || lines_[i].section != wanted)) ++i;
  if (i == lines_.size()) {
    const std::string ending = EndingAt(i);
    if (i > 0) lines_[i - 1].ending = ending;
    Add(i, "[" + OneLine(section) + "]", ending);
  }
  std::size_t place = ++i;
  while (place < lines_.size() && lines_[place].kind == Kind::kComment) ++place;
  for (; i < lines_.size() && lines_[i].kind != Kind::kHeader; ++i) {
    if (lines_[i].kind == Kind::kKey) place = i + 1;
  }
  return place;
}

std::string NaiveText::EndingAt(std::size_t place) const {
  while (place > 0 && lines_[place - 1].ending.empty()) --place;
  return place > 0 ? lines_[place - 1].ending : "\r\n";
}

}  // namespace config
