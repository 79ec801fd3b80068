#include "morvane/site/template.h"

#include <algorithm>
#include <charconv>

#include "morvane/site/page_text.h"
#include "morvane/site/template_source.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;
using kainjow::mustache::mustache;

/// Takes what the renderer writes.
struct TextSink {
  std::string text;
  TextSink& operator<<(const std::string& piece) {
    text += piece;
    return *this;
  }
};

/// The parser ends its messages with " at " and the position; a message names the line instead.
TemplateFault FaultOf(const TemplateSource& source, const std::string& message) {
  constexpr std::string_view kAt = " at ";
  const std::size_t at = message.rfind(kAt);
  if (at == message.npos) return source.FaultAt(0, message);
  std::size_t position = 0;
  std::from_chars(message.data() + at + kAt.size(), message.data() + message.size(), position);
  return source.FaultAt(position, message.substr(0, at));
}

/// The member that a name with dots in it leads to. A member's own name may hold dots: user
/// variables are named freely.
const Data* Member(const Data& object, const std::string& name) {
  if (const Data* value = object.get(name)) return value;
  const std::size_t dot = name.find('.');
  if (dot == std::string::npos) return nullptr;
  const Data* inner = object.get(name.substr(0, dot));
  return inner == nullptr ? nullptr : Member(*inner, name.substr(dot + 1));
}

std::string NoteOr(const TemplateSource& source, const std::string& name,
                   const std::string& otherwise) {
  const auto note = source.Notes().find(name);
  return note == source.Notes().end() ? otherwise : note->second;
}

}  // namespace

void SharedData::Define(const std::string& name, Maker maker, From from) {
  auto entry = std::make_unique<Entry>();
  entry->maker = std::move(maker);
  entry->from = from;
  entry->number = entries_.size();
  entries_[name] = std::move(entry);
}

const Data* SharedData::Get(const std::string& name, Asked* asked) const {
  const auto found = entries_.find(name);
  if (found == entries_.end()) return nullptr;
  Entry& entry = *found->second;
  if (asked != nullptr) {
    if (asked->size() <= entry.number) asked->resize(entries_.size());
    (*asked)[entry.number] = true;
  }
  std::call_once(entry.made, [&entry] { entry.value = entry.maker(); });
  return &entry.value;
}

std::vector<std::string> SharedData::NamesOf(const Asked& asked) const {
  std::vector<std::string> names;
  for (const auto& [name, entry] : entries_) {
    if (entry->number < asked.size() && asked[entry->number]) names.push_back(name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

Digest128 SharedData::FingerprintOf(const std::vector<std::string>& names,
                                    const Digest128& games) const {
  morvane::Fingerprint print;
  for (const std::string& name : names) {
    const auto found = entries_.find(name);
    if (found == entries_.end()) return {};
    print.Add(name);
    const From from = found->second->from;
    const Data* const value = from == From::kText ? Get(name) : nullptr;
    if (value != nullptr && value->is_string()) {
      print.Add(value->string_value());
    } else if (value != nullptr && value->is_bool()) {
      print.Add(value->is_true());
    } else if (from != From::kSettings) {
      print.Add(games);
    }
  }
  return print.Value();
}

const Data* PageContext::Find(const std::string& name) const {
  for (auto layer = layers_.rbegin(); layer != layers_.rend(); ++layer) {
    if (const Data* value = (*layer)->get(name)) return value;
  }
  return shared_.Get(name, asked_);
}

const Data* PageContext::get(const std::string& name) const {
  if (name == ".") return layers_.empty() ? nullptr : layers_.back();
  const std::size_t dot = name.find('.');
  if (dot == std::string::npos) return Find(name);
  const Data* object = Find(name.substr(0, dot));
  return object == nullptr ? nullptr : Member(*object, name.substr(dot + 1));
}

std::optional<TemplateFault> Template::Load(const fs::path& folder, std::string_view name) {
  TemplateSource source;
  if (std::optional<TemplateFault> fault = source.Read(folder, name)) return fault;
  return Parse(source, TemplatePath(folder, name).stem().string());
}

std::optional<TemplateFault> Template::Parse(const TemplateSource& source, std::string name) {
  auto parsed = std::make_unique<mustache>(source.Text());
  if (!parsed->is_valid()) return FaultOf(source, parsed->error_message());
  parsed->set_custom_escape([](const std::string& text) { return EscapeHtml(text); });
  parsed_ = std::move(parsed);
  name_ = std::move(name);
  title_ = NoteOr(source, "title", name_);
  group_ = NoteOr(source, "group", title_);
  split_ = NoteOr(source, "split", {});
  ReadWords(source.Text());
  fingerprint_ = morvane::Fingerprint()
                     .Add(source.Text())
                     .Add(name_)
                     .Add(title_)
                     .Add(group_)
                     .Add(split_)
                     .Value();
  if (split_.empty() || split_ == "players" || split_ == "games") return {};
  return TemplateFault{source.Path().string(), 0,
                       "only the lists players and games can be split, not \"" + split_ + "\""};
}

/// The words of all tags: names, and the pieces of names with dots.
void Template::ReadWords(std::string_view text) {
  constexpr std::string_view kBetween = " \t\r\n.#^/&{}>!";
  for (std::size_t at = text.find("{{"); at != text.npos; at = text.find("{{", at)) {
    const std::size_t end = std::min(text.find("}}", at), text.size());
    std::string_view inside = text.substr(at + 2, end - at - 2);
    hasOtherTags_ = hasOtherTags_ || inside.starts_with('=');
    while (!inside.empty()) {
      const std::size_t length = std::min(inside.find_first_of(kBetween), inside.size());
      if (length > 0) words_.emplace(inside.substr(0, length));
      inside.remove_prefix(std::min(length + 1, inside.size()));
    }
    at = end;
  }
}

bool Template::MayAskFor(const std::string& name) const {
  return hasOtherTags_ || words_.contains(name);
}

std::string Template::Render(const SharedData& shared, std::vector<const Data*> layers) {
  PageContext context(shared, std::move(layers), &asked_);
  TextSink sink;
  sink.text.reserve(typicalSize_ + typicalSize_ / 4);
  parsed_->render(context, sink);
  typicalSize_ = sink.text.size();
  return std::move(sink.text);
}

Template::Template(const Template& other)
    : name_(other.name_),
      title_(other.title_),
      group_(other.group_),
      split_(other.split_),
      fingerprint_(other.fingerprint_),
      words_(other.words_),
      hasOtherTags_(other.hasOtherTags_),
      parsed_(other.parsed_ ? std::make_unique<mustache>(*other.parsed_) : nullptr) {}

}  // namespace morvane
