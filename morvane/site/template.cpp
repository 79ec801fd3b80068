#include "morvane/site/template.h"

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

void SharedData::Define(const std::string& name, Maker maker) {
  auto entry = std::make_unique<Entry>();
  entry->maker = std::move(maker);
  entries_[name] = std::move(entry);
}

const Data* SharedData::Get(const std::string& name) const {
  const auto found = entries_.find(name);
  if (found == entries_.end()) return nullptr;
  Entry& entry = *found->second;
  std::call_once(entry.made, [&entry] { entry.value = entry.maker(); });
  return &entry.value;
}

const Data* PageContext::Find(const std::string& name) const {
  for (auto layer = layers_.rbegin(); layer != layers_.rend(); ++layer) {
    if (const Data* value = (*layer)->get(name)) return value;
  }
  return shared_.Get(name);
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
  if (split_.empty() || split_ == "players" || split_ == "games") return {};
  return TemplateFault{source.Path().string(), 0,
                       "only the lists players and games can be split, not \"" + split_ + "\""};
}

std::string Template::Render(PageContext& context) {
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
      parsed_(other.parsed_ ? std::make_unique<mustache>(*other.parsed_) : nullptr) {}

}  // namespace morvane
