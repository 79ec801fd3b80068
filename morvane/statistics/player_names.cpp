#include "morvane/statistics/player_names.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include "morvane/statistics/names.h"
#include "platform/files.h"
#include "text/characters.h"
#include "text/text.h"

namespace morvane {
namespace {

constexpr std::string_view kForms = "neither \"old name = name\" nor \"- name\"";

/// Takes the first name off a line: what stands in quotes, or else before "="; blanks around it do
/// not count. Nothing where quotes do not end.
std::optional<std::string_view> TakeName(std::string_view& line) {
  line = text::TrimBlanks(line);
  const bool quoted = line.starts_with('"');
  if (quoted) line.remove_prefix(1);
  const std::size_t end = quoted ? line.find('"') : std::min(line.find('='), line.size());
  if (end == line.npos) return std::nullopt;
  const std::string_view name = line.substr(0, end);
  line = text::TrimBlanks(line.substr(end + (quoted ? 1 : 0)));
  return quoted ? name : text::TrimBlanks(name);
}

}  // namespace

PlayerNames::PlayerNames(std::string_view text, const std::string& file, Report& report) {
  text = text::WithoutMark(text);
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    const std::string_view line = text::TrimBlanks(text.substr(0, end));
    const bool isCrLf = text.substr(end).starts_with("\r\n");
    text.remove_prefix(std::min(end + (isCrLf ? 2 : 1), text.size()));
    if (line.empty() || line.starts_with("//") || line.starts_with(';')) continue;
    const std::string why = TakeLine(line, number);
    if (!why.empty()) report.Severe(Log::kMain, why + "; line skipped", file, number);
  }
}

std::string PlayerNames::TakeLine(std::string_view line, std::size_t number) {
  const bool leavesOut = line.starts_with("- ") || line.starts_with("-\t");
  if (leavesOut) line.remove_prefix(1);
  const auto first = TakeName(line);
  if (!first) return "quotes that do not end";
  if (first->empty()) return "a name is missing";
  if (leavesOut && line.empty()) return LeaveOut(*first, number);
  if (leavesOut) return "more than one name; one that holds a \"=\" has to stand in quotes";
  if (!line.starts_with('=')) return std::string(kForms);
  line.remove_prefix(1);
  const auto second = TakeName(line);
  if (!second) return "quotes that do not end";
  if (second->empty()) return "a name is missing";
  if (!line.empty()) return "more than two names; one that holds a \"=\" has to stand in quotes";
  return AddJoin(*first, *second, number);
}

std::string PlayerNames::Taken(const std::string& key, std::size_t number) {
  const auto [known, isNew] = lines_.try_emplace(key, number);
  return isNew ? std::string() : "the name stands already in line " + std::to_string(known->second);
}

std::string PlayerNames::LeaveOut(std::string_view name, std::size_t number) {
  std::string key = PlayerKey(name);
  std::string taken = Taken(key, number);
  if (taken.empty()) leftOut_.insert(std::move(key));
  return taken;
}

std::string PlayerNames::AddJoin(std::string_view old, std::string_view name, std::size_t number) {
  const std::string key = PlayerKey(old);
  const std::string to = PlayerKey(name);
  // Joins may follow each other, but must not come back to where they began.
  const auto goesOn = [&](const std::string& at) { return joined_.find(at); };
  std::string at = to;
  for (auto next = goesOn(at); next != joined_.end() && at != key; next = goesOn(at)) {
    at = next->second.key;
  }
  if (at == key) return "joins a name to itself";
  std::string taken = Taken(key, number);
  if (taken.empty()) joined_.try_emplace(key, Join{std::string(name), to, number});
  return taken;
}

const std::string* PlayerNames::JoinedTo(const std::string& key) const {
  const std::string* name = nullptr;
  for (auto join = joined_.find(key); join != joined_.end();
       join = joined_.find(join->second.key)) {
    name = &join->second.name;
  }
  return name;
}

PlayerNames ReadPlayerNames(const std::string& folder, Report& report) {
  const std::filesystem::path path = std::filesystem::path(folder) / PlayerNames::kFileName;
  std::error_code error;
  const std::string text = platform::ReadWholeFile(path, error);
  if (!error) return {text, PlayerNames::kFileName, report};
  if (error != std::errc::no_such_file_or_directory) {
    report.Severe(Log::kMain, "cannot be read: " + error.message(), PlayerNames::kFileName);
  }
  return {};
}

}  // namespace morvane
