// A settings file and what is done to it, against the naive model. The first part is the file, the
// others are calls: "e", section; "h"; anything else, section, key, value.

#include <string>

#include "config/profile_text.h"
#include "tests/config/naive_text.h"
#include "tests/fuzz/target.h"
#include "text/text.h"

namespace {

using config::NaiveText;
using config::ProfileText;
using Fields = std::vector<std::string_view>;

template <class Profile>
void Call(Profile& text, const Fields& call) {
  if (call[0] == "e") {
    text.EmptySection(call[1]);
  } else if (call[0] == "h") {
    text.SpaceHeaders();
  } else {
    text.Set(call[1], call[2], call[3]);
  }
}

/// What a call wrote reads back, as far as it can stand in a file.
void ReadsBack(const ProfileText& text, const Fields& call) {
  if (call[0] == "e" || call[0] == "h" || !text.IsUsable()) return;
  const std::string section = ProfileText::OneLine(call[1]);
  const std::string_view name = text::TrimBlanks(section);
  if (name.empty() || name[0] == '[' || name.find(']') != name.npos) return;
  if (!ProfileText::IsKeyName(call[2])) return;
  const std::string line = ProfileText::OneLine(call[2]) + "=" + ProfileText::OneLine(call[3]);
  const std::string wanted = "[x]\n" + line;
  const std::string key = line.substr(0, line.find('='));
  fuzz::Require(text.Get(section, key) == ProfileText(wanted).Get("x", key), "a value reads back");
}

/// All that was asked for reads as the model says, and so does a text that is made of its bytes.
void ReadsAlike(const ProfileText& text, const NaiveText& model, const std::vector<Fields>& calls) {
  const ProfileText again(text.Bytes());
  fuzz::Require(again.IsUsable() == text.IsUsable(), "a text stays usable");
  for (const Fields& call : calls) {
    const auto value = model.Get(call[1], call[2]);
    fuzz::Require(text.Get(call[1], call[2]) == value, "the same value as the model's");
    fuzz::Require(again.Get(call[1], call[2]) == value, "the same value when it is read again");
    const std::vector<std::string> names = model.KeyNames(call[1]);
    fuzz::Require(text.KeyNames(call[1]) == names, "the same names as the model's");
    fuzz::Require(again.KeyNames(call[1]) == names, "the same names when it is read again");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::vector<std::string_view> parts = fuzz::Split(fuzz::Text(bytes, size), fuzz::kPart);
  ProfileText text(parts[0]);
  NaiveText model(parts[0]);
  fuzz::Require(text.Bytes() == parts[0], "a file that nobody changes keeps every byte");
  std::vector<Fields> calls;
  for (std::size_t i = 1; i < parts.size(); ++i) {
    Fields& call = calls.emplace_back(fuzz::Split(parts[i], fuzz::kField));
    call.resize(4);
    Call(text, call);
    Call(model, call);
    fuzz::Require(text.Bytes() == model.Bytes(), "the same bytes as the model's");
    ReadsBack(text, call);
  }
  ReadsAlike(text, model, calls);
  return 0;
}
