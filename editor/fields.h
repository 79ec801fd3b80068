#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <QString>
#include <QWidget>

#include "config/settings.h"

namespace editor {

/// Qt property of a color button: its color value, 0x00BBGGRR.
inline constexpr char kBackColor[] = "BackColor";

/// The text without the spaces (U+0020 only) at both ends.
QString TrimSpaces(const QString& text);

/// A text of the settings file, UTF-8, as the window has it. A U+FEFF at its start is a character
/// like any other.
QString ToQt(std::string_view text);

/// The path of the background image as it goes into the file: on one line, trimmed of blanks.
std::string BackgroundImageAsStored(std::string_view text);

/// Puts the value of a setting, as the file holds it, into its field. Settings of lists (kCount,
/// kEntries, kUserVariables) have no single value and change nothing.
void ShowValue(QWidget& window, const config::Setting& setting, std::string_view value);

/// The value of a setting as it goes into the file; for kCount the number of the list's entries.
std::string ValueOf(const QWidget& window, const config::Setting& setting);

/// Makes `entries` the content of the list that a setting of kind kEntries or kUserVariables
/// names. A list box shows the first text of each.
void ShowEntries(QWidget& window, const config::Setting& setting,
                 const std::vector<config::Entry>& entries);

/// The entries of that list from first to last. Of a list box they have no second text.
std::vector<config::Entry> EntriesOf(const QWidget& window, const config::Setting& setting);

}  // namespace editor
