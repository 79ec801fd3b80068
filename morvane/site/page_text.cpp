#include "morvane/site/page_text.h"

#include <algorithm>

#include "morvane/statistics/names.h"
#include "text/characters.h"

namespace morvane {
namespace {

const NameGround& GroundOf(const std::vector<NameRun>& runs, const NameStyles& styles) {
  std::bitset<10> used;
  for (const NameRun& run : runs) {
    if (run.color >= 0) used.set(static_cast<std::size_t>(run.color));
  }
  const bool suitsPage = (used & ~styles.page.own).none();
  if (suitsPage || styles.chips.empty()) return styles.page;
  return *std::max_element(styles.chips.begin(), styles.chips.end(),
                           [&](const NameGround& one, const NameGround& other) {
                             return (used & one.own).count() < (used & other.own).count();
                           });
}

}  // namespace

std::string NameHtml(std::string_view name, const NameStyles& styles) {
  const std::vector<NameRun> runs = VisibleRuns(name);
  const NameGround& ground = GroundOf(runs, styles);
  std::string html = ground.style.empty() ? "<bdi>" : "<bdi style=\"" + ground.style + "\">";
  for (const NameRun& run : runs) {
    if (run.color < 0) {
      html += EscapeHtml(run.text);
      continue;
    }
    const std::string& style = ground.colors[static_cast<std::size_t>(run.color)];
    html += "<span style=\"" + EscapeHtml(style) + "\">" + EscapeHtml(run.text) + "</span>";
  }
  return html + "</bdi>";
}

std::string EscapeHtml(std::string_view text) {
  std::string html;
  html.reserve(text.size() + text.size() / 8);
  for (const char c : text) {
    switch (c) {
      case '&':
        html += "&amp;";
        break;
      case '<':
        html += "&lt;";
        break;
      case '>':
        html += "&gt;";
        break;
      case '"':
        html += "&quot;";
        break;
      case '\'':
        html += "&#39;";
        break;
      default:
        html += c;
    }
  }
  return html;
}

std::string PageText(std::string_view bytes) { return VisibleText(text::DecodeText(bytes)); }

}  // namespace morvane
