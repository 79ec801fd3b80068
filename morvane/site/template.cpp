#include "morvane/site/template.h"

#include <charconv>

#include "morvane/site/page_context.h"
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

std::string NoteOr(const TemplateSource& source, const std::string& name,
                   const std::string& otherwise) {
  const auto note = source.Notes().find(name);
  return note == source.Notes().end() ? otherwise : note->second;
}

}  // namespace

std::optional<TemplateFault> Template::Load(const fs::path& folder, std::string_view name) {
  TemplateSource source;
  if (std::optional<TemplateFault> fault = source.Read(folder, name)) return fault;
  return Parse(source, TemplatePath(folder, name).stem().string());
}

std::optional<TemplateFault> Template::Parse(const TemplateSource& source, std::string name) {
  auto parsed = std::make_shared<mustache>(source.Text());
  if (!parsed->is_valid()) return FaultOf(source, parsed->error_message());
  parsed->set_custom_escape([](const std::string& text) { return EscapeHtml(text); });
  parsed_ = std::move(parsed);
  name_ = std::move(name);
  title_ = NoteOr(source, "title", name_);
  group_ = NoteOr(source, "group", title_);
  split_ = NoteOr(source, "split", {});
  names_ = std::make_shared<const TagNames>(source.Text());
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

std::string Template::Render(const SharedData& shared, std::vector<Data> layers) {
  PageContext context(shared, std::move(layers), &asked_);
  TextSink sink;
  sink.text.reserve(typicalSize_ + typicalSize_ / 4);
  parsed_->render(context, sink);
  typicalSize_ = sink.text.size();
  return std::move(sink.text);
}

}  // namespace morvane
