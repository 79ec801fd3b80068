#include "editor/fields.h"

#include <algorithm>

#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QStringDecoder>
#include <QTreeWidget>

#include "config/colors.h"
#include "config/profile_text.h"
#include "text/text.h"
#include "ui/controls.h"

namespace editor {
namespace {

using config::Encoding;
using config::Entry;
using config::Setting;
using ui::Control;

QLineEdit& TextBox(const QWidget& window, std::string_view name) {
  return Control<QLineEdit>(window, ToQt(name));
}

QCheckBox& CheckBox(const QWidget& window, std::string_view name) {
  return Control<QCheckBox>(window, ToQt(name));
}

QWidget& ColorButton(const QWidget& window, std::string_view name) {
  return Control<QWidget>(window, ToQt(name));
}

/// Whether a setting's field is a list view; the other lists are list boxes.
QTreeWidget* ListView(const QWidget& window, const Setting& setting) {
  return window.findChild<QTreeWidget*>(ToQt(setting.field));
}

QListWidget& ListBox(const QWidget& window, const Setting& setting) {
  return Control<QListWidget>(window, ToQt(setting.field));
}

// Message options: bit i of the number is the check box `options[i]`.

void ShowOptions(QWidget& window, const Setting& setting, int number) {
  for (std::size_t bit = setting.options.size(); bit-- > 0;) {
    const int weight = 1 << bit;
    const bool checked = number >= weight;
    CheckBox(window, setting.options[bit]).setChecked(checked);
    if (checked) number -= weight;
  }
}

int OptionsOf(const QWidget& window, const Setting& setting) {
  int number = 0;
  for (std::size_t bit = 0; bit < setting.options.size(); ++bit) {
    if (CheckBox(window, setting.options[bit]).isChecked()) number += 1 << bit;
  }
  return number;
}

void ShowColor(QWidget& window, const Setting& setting, const std::string& intermediate) {
  ColorButton(window, setting.field).setProperty(kBackColor, config::ColorValue(intermediate));
}

std::string ColorOf(const QWidget& window, const Setting& setting) {
  const int color = ColorButton(window, setting.field).property(kBackColor).toInt();
  return config::ColorToHtml(std::to_string(color));
}

std::string PathAsShown(std::string_view value) {
  std::string path(value);
  std::replace(path.begin(), path.end(), '/', '\\');
  return path;
}

std::string TextOf(const QWidget& window, const Setting& setting) {
  return TextBox(window, setting.field).text().toStdString();
}

std::string WithLeadingDot(const std::string& extension) {
  return extension.starts_with('.') ? extension : "." + extension;
}

std::string CountOf(const QWidget& window, const Setting& setting) {
  const auto* const view = ListView(window, setting);
  const int count = view != nullptr ? view->topLevelItemCount() : ListBox(window, setting).count();
  return std::to_string(count);
}

std::string DigitOf(bool checked) { return checked ? "1" : "0"; }

}  // namespace

QString TrimSpaces(const QString& text) {
  qsizetype first = 0;
  qsizetype last = text.size();
  while (first < last && text[first] == u' ') ++first;
  while (last > first && text[last - 1] == u' ') --last;
  return text.mid(first, last - first);
}

QString ToQt(std::string_view text) {
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
  return decoder(QByteArrayView(text.data(), static_cast<qsizetype>(text.size())));
}

std::string BackgroundImageAsStored(std::string_view text) {
  return std::string(text::TrimBlanks(config::ProfileText::OneLine(text)));
}

void ShowValue(QWidget& window, const Setting& setting, std::string_view value) {
  switch (setting.encoding) {
    case Encoding::kText:
    case Encoding::kBackgroundImage:
    case Encoding::kFileExtension:
      TextBox(window, setting.field).setText(ToQt(value));
      break;
    case Encoding::kPath:
      TextBox(window, setting.field).setText(ToQt(PathAsShown(value)));
      break;
    case Encoding::kFlag:
      CheckBox(window, setting.field).setChecked(text::NumberOf(value) == 1);
      break;
    case Encoding::kFlagUnlessZero:
      CheckBox(window, setting.field).setChecked(text::NumberOf(value) != 0);
      break;
    case Encoding::kMessageOptions:
      ShowOptions(window, setting, text::WholeNumberOf(value));
      break;
    case Encoding::kColor:
      ShowColor(window, setting, config::NamedColor(value));
      break;
    case Encoding::kColorWithoutNames:
      ShowColor(window, setting, config::HtmlToColor(value));
      break;
    case Encoding::kCount:
    case Encoding::kEntries:
    case Encoding::kUserVariables:
      break;
  }
}

std::string ValueOf(const QWidget& window, const Setting& setting) {
  switch (setting.encoding) {
    case Encoding::kText:
    case Encoding::kPath:
      return TextOf(window, setting);
    case Encoding::kBackgroundImage:
      return BackgroundImageAsStored(TextOf(window, setting));
    case Encoding::kFileExtension:
      return WithLeadingDot(TextOf(window, setting));
    case Encoding::kFlag:
    case Encoding::kFlagUnlessZero:
      return DigitOf(CheckBox(window, setting.field).isChecked());
    case Encoding::kMessageOptions:
      return std::to_string(OptionsOf(window, setting));
    case Encoding::kColor:
    case Encoding::kColorWithoutNames:
      return ColorOf(window, setting);
    case Encoding::kCount:
      return CountOf(window, setting);
    case Encoding::kEntries:
    case Encoding::kUserVariables:
      break;
  }
  return {};
}

void ShowEntries(QWidget& window, const Setting& setting, const std::vector<Entry>& entries) {
  if (QTreeWidget* const view = ListView(window, setting)) {
    QList<QTreeWidgetItem*> rows;
    for (const Entry& entry : entries) {
      rows.append(new QTreeWidgetItem({ToQt(entry.first), ToQt(entry.second)}));
    }
    view->clear();
    view->addTopLevelItems(rows);
    return;
  }
  QStringList texts;
  for (const Entry& entry : entries) texts.append(ToQt(entry.first));
  ListBox(window, setting).clear();
  ListBox(window, setting).addItems(texts);
}

std::vector<Entry> EntriesOf(const QWidget& window, const Setting& setting) {
  std::vector<Entry> entries;
  if (const QTreeWidget* const view = ListView(window, setting)) {
    for (int row = 0; row < view->topLevelItemCount(); ++row) {
      const QTreeWidgetItem& item = *view->topLevelItem(row);
      entries.push_back({item.text(0).toStdString(), item.text(1).toStdString()});
    }
    return entries;
  }
  const QListWidget& box = ListBox(window, setting);
  for (int row = 0; row < box.count(); ++row) {
    entries.push_back({box.item(row)->text().toStdString(), {}});
  }
  return entries;
}

}  // namespace editor
