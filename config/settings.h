#pragma once

#include <array>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "config/settings_file.h"

namespace config {

/// The section of the user variables, the only one whose keys no table names.
inline constexpr std::string_view kUserVars = "USER VARS";

/// How the value of a setting is written and read.
enum class Encoding {
  kText,            // as the field holds it
  kPath,            // written as the field holds it, read with every "/" turned into "\"
  kFlag,            // "0" or "1"; the number 1 checks the box, any other number clears it
  kFlagUnlessZero,  // "0" or "1"; the number 0 clears the box, any other number checks it
  kMessageOptions,  // 0 to 15, one bit a check box
  kColor,           // "#RRGGBB"; eight color names are read too
  kColorWithoutNames,
  kBackgroundImage,  // text, trimmed of blanks when it is saved
  kFileExtension,    // text, "." put in front when it is missing
  kCount,            // how many entries a list has
  kEntries,          // the entries of a list, numbered from 0
  kUserVariables,    // every key of its section
};

/// One entry of a list: its text and, where the list has a second key for each entry, that key's.
struct Entry {
  std::string first;
  std::string second;
  bool operator==(const Entry&) const = default;
};

/// A default entry, as the table holds it.
struct DefaultEntry {
  std::string_view first;
  std::string_view second = {};
};

/// One setting of the file: where it stands, which field of the window holds it, its default.
struct Setting {
  std::string_view section;  // spelled as it is created
  std::string_view key;      // kEntries: the stem of the first key of an entry
  Encoding encoding;
  /// Name of the control. kMessageOptions: empty, see `options`. kCount: the list.
  std::string_view field;
  std::string_view defaultValue = {};  // as the file holds it; lists: see `defaultEntries`
  /// kEntries: the stem of the second key of each entry, empty where there is none.
  std::string_view secondKey = {};
  /// kEntries: the value of every second key where the field does not hold it ("1000" for logs).
  std::string_view secondConstant = {};
  /// kEntries: the key that counts the entries.
  std::string_view countKey = {};
  std::span<const DefaultEntry> defaultEntries = {};
  /// kMessageOptions: the check boxes of the bits 1, 2, 4 and 8.
  std::array<std::string_view, 4> options = {};
};

/// Every setting in the order of the file.
std::span<const Setting> Settings();

/// The row of a key; of a list, of the stem of its entries' first key. Throws std::out_of_range for
/// a key that no row has: a mistake in the program.
const Setting& SettingOf(std::string_view key);

/// The entries of a numbered list. A count up to 32767 yields exactly that many, empty ones for
/// missing keys; beyond it entries are read while their keys exist. `secondKey` may be empty.
std::vector<Entry> ReadEntries(const SettingsFile& file, std::string_view section,
                               std::string_view countKey, std::string_view key,
                               std::string_view secondKey = {});

/// Empties the seven sections of the settings, user variables included, before a save writes them
/// afresh. `pumpEvents` is called during and after the work on each section.
void ClearSections(SettingsFile& file, const std::function<void()>& pumpEvents);

}  // namespace config
