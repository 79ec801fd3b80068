#include "ui/folder_list.h"

#include <algorithm>
#include <filesystem>

#include <QDir>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QStyle>

#include "platform/paths.h"

namespace ui {
namespace {

constexpr int kPathRole = Qt::UserRole;
constexpr int kIndentation = 12;

QString FullPath(const QString& path) {
  const std::string native = platform::SystemPath(path.toStdString()).string();
  return QDir::cleanPath(QDir::current().absoluteFilePath(QString::fromStdString(native)));
}

std::error_code CheckReadable(const QString& folder) {
  std::error_code error;
  const std::filesystem::directory_iterator probe(folder.toStdString(), error);
  return error;
}

/// The folders from the root down to `folder`.
QStringList WayTo(const QString& folder) {
  QStringList way{folder};
  QDir step(folder);
  while (step.cdUp()) way.prepend(step.path());
  return way;
}

QString NameOf(const QString& folder) {
  const QString name = QFileInfo(folder).fileName();
  return name.isEmpty() ? folder : name;
}

QTreeWidgetItem* NewItem(const QString& folder, const QIcon& icon) {
  auto* const item = new QTreeWidgetItem({NameOf(folder)});
  item->setData(0, kPathRole, folder);
  item->setIcon(0, icon);
  return item;
}

}  // namespace

FolderList::FolderList(QWidget* parent) : QTreeWidget(parent) {
  setHeaderHidden(true);
  setRootIsDecorated(false);
  setItemsExpandable(false);
  setExpandsOnDoubleClick(false);
  setIndentation(kIndentation);
  setUniformRowHeights(true);
  header()->setStretchLastSection(false);
  header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  connect(this, &QTreeWidget::itemDoubleClicked, this, [this](const QTreeWidgetItem* item) {
    if (open_) open_(item->data(0, kPathRole).toString());
  });
}

std::error_code FolderList::SetPath(const QString& path) {
  const QString folder = FullPath(path);
  if (const std::error_code error = CheckReadable(folder)) return error;
  path_ = folder;
  Fill();
  return {};
}

void FolderList::Fill() {
  clear();
  QTreeWidgetItem* current = invisibleRootItem();
  for (const QString& folder : WayTo(path_)) {
    QTreeWidgetItem* const item = NewItem(folder, style()->standardIcon(QStyle::SP_DirOpenIcon));
    current->addChild(item);
    current = item;
  }
  const QIcon closed = style()->standardIcon(QStyle::SP_DirClosedIcon);
  const QDir folder(path_);
  for (const QString& name : folder.entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot,
                                              QDir::Name | QDir::IgnoreCase)) {
    current->addChild(NewItem(folder.filePath(name), closed));
  }
  expandAll();
  setCurrentItem(current);
  ShowOpenFolder();
}

// Its subfolders as far as there is room, and what is left of the room for the folders around it.
// A deep folder and its subfolders begin at the left edge where they do not fit otherwise.
void FolderList::ShowOpenFolder() {
  QTreeWidgetItem* const open = currentItem();
  if (open == nullptr || open->data(0, kPathRole).toString() != path_) return;
  // At once, what the view would put off until it is painted: scrolling needs the places.
  doItemsLayout();
  resizeColumnToContents(0);
  updateGeometries();
  const int left = visualItemRect(open).left() + horizontalScrollBar()->value();
  int right = left + sizeHintForIndex(indexFromItem(open)).width();
  for (int at = 0; at < open->childCount(); ++at) {
    const int width = sizeHintForIndex(indexFromItem(open->child(at))).width();
    right = std::max(right, left + kIndentation + width);
  }
  if (open->childCount() > 0) scrollToItem(open->child(open->childCount() - 1));
  scrollToItem(open);
  horizontalScrollBar()->setValue(std::clamp(right - viewport()->width(), 0, left));
}

void FolderList::showEvent(QShowEvent* event) {
  QTreeWidget::showEvent(event);
  ShowOpenFolder();
}

void FolderList::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (!enter) {
    QTreeWidget::keyPressEvent(event);
    return;
  }
  const QString chosen =
      currentItem() != nullptr ? currentItem()->data(0, kPathRole).toString() : path_;
  if (chosen == path_ || !open_) {
    event->ignore();
    return;
  }
  open_(chosen);
}

}  // namespace ui
