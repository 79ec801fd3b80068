#include <filesystem>
#include <gtest/gtest.h>

#include <QComboBox>
#include <QScrollBar>

#include "editor/frmBrowseFolders.h"
#include "tests/editor/fields_test.h"
#include "ui/drives.h"
#include "ui/folder_list.h"

namespace editor {
namespace {

using Drives = FieldsTest;

TEST_F(Drives, ADriveThatCannotBeReadGoesBack) {
  Open("");
  const QString disk = QString::fromStdString(Directory());
  frmBrowseFolders browser(Window(), desktop, {"/", disk, "/no such volume"}, disk);
  auto& drives = ui::Control<QComboBox>(browser, "Drives");
  const auto& folders = ui::Control<ui::FolderList>(browser, "Folders");
  EXPECT_EQ(drives.currentText(), disk) << "the drive of the folder that it opens on";
  browser.show();
  drives.setFocus();
  QTest::keyClick(&drives, Qt::Key_End);
  ASSERT_EQ(desktop.messages.size(), 1U);
  EXPECT_EQ(desktop.messages[0].title, "Drive Error");
  EXPECT_EQ(desktop.messages[0].style, ui::MessageStyle::kCritical);
  EXPECT_EQ(desktop.messages[0].text, "No such file or directory");
  EXPECT_EQ(drives.currentText(), disk);
  EXPECT_EQ(folders.Path(), disk);
  QTest::keyClick(&drives, Qt::Key_Home);
  EXPECT_EQ(folders.Path(), "/");
}

TEST_F(Drives, AFolderThatCannotBeOpenedIsNamed) {
  Open("");
  std::filesystem::create_directories(PathOf("tree/gone"));
  const QString tree = QString::fromStdString(PathOf("tree"));
  frmBrowseFolders browser(Window(), desktop, {"/"}, tree);
  browser.show();
  std::filesystem::remove(PathOf("tree/gone"));
  auto& folders = ui::Control<ui::FolderList>(browser, "Folders");
  QTest::keyClick(&folders, Qt::Key_Down);
  QTest::keyClick(&folders, Qt::Key_Return);
  ASSERT_EQ(desktop.messages.size(), 1U);
  EXPECT_EQ(desktop.messages[0].title, "Select A Directory");
  EXPECT_EQ(desktop.messages[0].text,
            "This folder could not be opened:\n" + tree + "/gone\n\nNo such file or directory");
  EXPECT_EQ(folders.Path(), tree);
}

TEST_F(Drives, ADeepFolderAndItsSubfoldersAreInView) {
  Open("");
  std::string deep = "tree";
  for (int level = 0; level < 40; ++level) deep += "/level " + std::to_string(level);
  for (const char* name : {"/first", "/.hidden", "/last"}) {
    std::filesystem::create_directories(PathOf(deep) + name);
  }
  for (int sibling = 0; sibling < 50; ++sibling) {
    std::filesystem::create_directories(PathOf("many/" + std::to_string(sibling)));
  }
  frmBrowseFolders browser(Window(), desktop, {"/"}, QString::fromStdString(PathOf(deep)));
  browser.show();
  auto& folders = ui::Control<ui::FolderList>(browser, "Folders");
  const QTreeWidgetItem* const open = folders.currentItem();
  EXPECT_EQ(open->text(0), "level 39");
  ASSERT_EQ(open->childCount(), 3) << "hidden folders are shown";
  const QRect view = folders.viewport()->rect();
  for (const QTreeWidgetItem* item : {open, static_cast<const QTreeWidgetItem*>(open->child(0)),
                                      static_cast<const QTreeWidgetItem*>(open->child(2))}) {
    const QRect place = folders.visualItemRect(item);
    EXPECT_TRUE(view.contains(place.topLeft()) && view.contains(place.bottomLeft()))
        << item->text(0).toStdString();
    EXPECT_LE(place.left() + folders.fontMetrics().horizontalAdvance(item->text(0)), view.right());
  }
  ASSERT_FALSE(folders.SetPath(QString::fromStdString(PathOf("many"))));
  EXPECT_LE(folders.visualItemRect(folders.currentItem()).top(), view.height() / 4)
      << "as many subfolders as there is room for";
  ASSERT_FALSE(folders.SetPath("/"));
  EXPECT_EQ(folders.horizontalScrollBar()->value(), 0);
}

TEST(DriveOf, IsTheDeepestThatHoldsTheFolder) {
  const QStringList drives = {"/", "/media", "/media/disk"};
  const std::pair<const char*, int> cases[] = {
      {"/", 0}, {"/mediateka", 0}, {"/media", 1}, {"/media/diskette", 1}, {"/media/disk/a", 2}};
  for (const auto& [folder, drive] : cases) EXPECT_EQ(ui::DriveOf(drives, folder), drive);
  EXPECT_EQ(ui::Drives().first(), "/");
}

}  // namespace
}  // namespace editor
