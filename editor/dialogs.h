#pragma once

#include <optional>

#include <QString>
#include <QWidget>

#include "ui/desktop.h"

namespace editor {

/// A color dialog. It remembers the last color that it was given or that the user chose.
class ColorDialog {
 public:
  ColorDialog(ui::Desktop& desktop, QWidget& owner) : desktop_(desktop), owner_(owner) {}

  /// The color (0x00BBGGRR) that the next showing opens with; black at first.
  void SetColor(int color) { color_ = color; }

  /// Shows the dialog, titled by the color that is chosen with it. The chosen color, nothing when
  /// the user cancels.
  std::optional<int> Show(const QString& title);

 private:
  ui::Desktop& desktop_;
  QWidget& owner_;
  int color_ = 0;
};

/// An open-file dialog. It remembers the file of its last use.
class FileDialog {
 public:
  FileDialog(ui::Desktop& desktop, QWidget& owner) : desktop_(desktop), owner_(owner) {}

  void SetTitle(const QString& title) { request_.title = title; }
  /// Description and pattern pairs, all separated by "|".
  void SetFilter(const QString& filter) { request_.filter = filter; }
  void SetDefaultExtension(const QString& pattern) { request_.defaultExtension = pattern; }

  /// Shows the dialog. The full path of the chosen file, nothing when the user cancels.
  std::optional<QString> Show();

 private:
  ui::Desktop& desktop_;
  QWidget& owner_;
  ui::OpenFileRequest request_;
};

/// The dialogs that a main window keeps for its life, with what they remember from one use to the
/// next.
struct Dialogs {
  Dialogs(ui::Desktop& desktop, QWidget& window);

  ColorDialog CColorDialog;
  FileDialog CDialog;
  FileDialog CLogDialog;
};

}  // namespace editor
