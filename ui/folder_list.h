#pragma once

#include <functional>
#include <system_error>

#include <QString>
#include <QTreeWidget>

namespace ui {

/// A list of folders: the current folder's path as a tree, the root first, and below the current
/// folder its subfolders (hidden ones left out). A double click or Enter on another folder asks
/// for it to be opened; Enter on the current one is left to the window's default button.
class FolderList : public QTreeWidget {
 public:
  explicit FolderList(QWidget* parent);

  /// The current folder: a full path in the system's notation, empty before the first SetPath.
  QString Path() const { return path_; }

  /// Makes a folder the current one. A relative path is taken from the program's current folder.
  /// On failure (no such folder, not readable) the list stays as it is.
  std::error_code SetPath(const QString& path);

  /// `open` is called with the full path of the folder that the user wants opened.
  void OnOpen(std::function<void(const QString& path)> open) { open_ = std::move(open); }

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;
  /// The tree is always open, so it shows no arrows to open it with.
  void drawBranches(QPainter* /*painter*/, const QRect& /*rect*/,
                    const QModelIndex& /*index*/) const override {}

 private:
  void Fill();
  void ShowOpenFolder();

  QString path_;
  std::function<void(const QString&)> open_;
};

}  // namespace ui
