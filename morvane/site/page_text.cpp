#include "morvane/site/page_text.h"

#include "morvane/statistics/names.h"
#include "text/characters.h"

namespace morvane {

std::string NameHtml(std::string_view name, const NameStyles& styles) {
  std::string html = "<bdi>";
  for (const NameRun& run : VisibleRuns(name)) {
    if (run.color < 0) {
      html += EscapeHtml(run.text);
      continue;
    }
    const std::string& style = styles[static_cast<std::size_t>(run.color)];
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
