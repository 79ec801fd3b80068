#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "morvane/report/report.h"

namespace morvane {

/// What the user says about the names of players, a text with one of these a line:
///
///     old name = name      both are one player, who bears the second name
///     - name               this player is left out of all pages
///
/// Names are compared as players are, see PlayerKey. One that holds a "=" or begins with "- ", with
/// "//", ";" or quotes, stands in double quotes. Lines that begin with "//" or ";" are comments.
class PlayerNames {
 public:
  static constexpr const char* kFileName = "players.txt";

  PlayerNames() = default;
  /// Takes the lines of a text. One that cannot be used is a severe message with its line in
  /// `file`, and is skipped.
  PlayerNames(std::string_view text, const std::string& file, Report& report);

  bool IsEmpty() const { return joined_.empty() && leftOut_.empty(); }
  /// The name that the player of a key bears, where that is joined to another; else nullptr.
  const std::string* JoinedTo(const std::string& key) const;
  /// Whether the player of a key, which is joined to no other, is left out.
  bool IsLeftOut(const std::string& key) const { return leftOut_.contains(key); }

 private:
  struct Join {
    std::string name;  // as the text writes it
    std::string key;
    std::size_t line;
  };
  /// Why a line cannot be used; empty when it can.
  std::string TakeLine(std::string_view line, std::size_t number);
  std::string LeaveOut(std::string_view name, std::size_t number);
  std::string AddJoin(std::string_view old, std::string_view name, std::size_t number);
  /// Why the name of a key can be no line's subject any more; empty when it can.
  std::string Taken(const std::string& key, std::size_t number);

  std::unordered_map<std::string, Join> joined_;  // by the key of the old name
  std::unordered_set<std::string> leftOut_;
  std::unordered_map<std::string, std::size_t> lines_;  // of the keys that were a line's subject
};

/// The names of players.txt in a folder, none where it does not exist. What is wrong with it is a
/// severe message.
PlayerNames ReadPlayerNames(const std::string& folder, Report& report);

}  // namespace morvane
