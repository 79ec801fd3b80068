// A template: read, checked, rendered.

#include <algorithm>
#include <optional>
#include <string>

#include "morvane/site/template.h"
#include "morvane/site/template_source.h"
#include "tests/fuzz/scratch_file.h"
#include "tests/fuzz/target.h"

namespace {

using kainjow::mustache::list;
using morvane::Data;

const std::string kHostile = "<script>'\"&{{name}}";

Data Variables() {
  Data players(list{});
  for (const char* const name : {"Ann", "Bob"}) {
    Data player;
    player.set("name", name);
    player.set("score", "7");
    players.push_back(player);
  }
  Data data;
  data.set("name", kHostile);
  data.set("yes", true);
  data.set("no", false);
  data.set("players", players);
  return data;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const fuzz::ScratchFile scratch("page.htmlt");
  static const Data variables = Variables();
  static const morvane::SharedData shared;
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
  const std::string once = page.Render(shared, {&variables});
  morvane::Template copy(page);
  fuzz::Require(copy.Render(shared, {&variables}) == once, "a copy gives the same page");
  const bool raw = text.find("{{{") != text.npos || text.find('&') != text.npos ||
                   text.find("{{=") != text.npos || text.find("<script>") != text.npos;
  fuzz::Require(raw || once.find("<script>") == once.npos, "a value is escaped");
  return 0;
}
