// A template: read, checked, rendered.

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "morvane/site/page_data.h"
#include "morvane/site/template.h"
#include "morvane/site/template_source.h"
#include "tests/fuzz/scratch_file.h"
#include "tests/fuzz/target.h"

namespace {

const std::string kHostile = "<script>'\"&{{name}}";

/// What is asked for of these.
morvane::Data Variables(morvane::Demand demand) {
  morvane::Object data(demand);
  Set(data, "name", kHostile);
  SetFlag(data, "yes", true);
  SetFlag(data, "no", false);
  SetRows(data, "players", std::vector<std::string>{"Ann", "Bob"},
          [](morvane::Object& player, const std::string& name) {
            Set(player, "name", name);
            Set(player, "score", 7);
            SetData(player, "players", [&](morvane::Demand asked) {
              morvane::Object object(asked);
              Set(object, "yes", name);
              return object.Done();
            });
          });
  return data.Done();
}

std::string Render(morvane::Template& page, const morvane::TagNames& asked) {
  static const morvane::SharedData shared;
  morvane::ValueStore store;
  return page.Render(shared, {Variables(morvane::Demand(asked, store))});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const fuzz::ScratchFile scratch("page.htmlt");
  static const morvane::TagNames everything("{{= =}}");
  const std::string_view text = fuzz::Text(bytes, size);
  scratch.Write(text);
  morvane::TemplateSource source;
  std::optional<morvane::TemplateFault> fault = source.Read(scratch.Folder(), "page");
  morvane::Template page;
  if (!fault) fault = page.Parse(source, "page");
  if (fault) {
    const auto lines = std::count(text.begin(), text.end(), '\n') + 1;
    fuzz::Require(!fault->text.empty() && fault->line >= 0 && fault->line <= lines,
                  "a fault has a place");
    return 0;
  }
  const std::string once = Render(page, page.Names());
  morvane::Template copy(page);
  fuzz::Require(Render(copy, page.Names()) == once, "a copy gives the same page");
  fuzz::Require(Render(page, everything) == once, "what was left out is not asked for");
  const bool raw = text.find("{{{") != text.npos || text.find('&') != text.npos ||
                   text.find("{{=") != text.npos || text.find("<script>") != text.npos;
  fuzz::Require(raw || once.find("<script>") == once.npos, "a value is escaped");
  return 0;
}
