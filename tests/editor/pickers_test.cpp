#include <filesystem>
#include <gtest/gtest.h>

#include <QComboBox>
#include <QPushButton>

#include "tests/editor/fields_test.h"
#include "ui/folder_list.h"

namespace editor {
namespace {

using Pickers = FieldsTest;

constexpr char kImages[] = "JPEG Files (*.jpg)|*.jpg|GIF Files (*.gif)|*.gif|All Files (*.*)|*.*";
constexpr char kTemplates[] = "Template Files (*.htmlt)|*.htmlt";
constexpr char kLogs[] = "Log Files (*.log) |*.log|All Files (*.*)|*.*";

TEST_F(Pickers, EachKindOfFileHasItsFilterAndItsWayOfCancelling) {
  const struct {
    const char* button;
    const char* field;
    const char* filter;
    const char* afterCancel;  // of a field that held "  x  "
  } cases[] = {
      {"cmdBkgndImageBrowse", "txtBkgndImage", kImages, "  x  "},
      {"cmdBrowse5", "txtCustomRankTemplate", kTemplates, "x"},
      {"cmdLogFileBrowse", "txtLogFilePath", kLogs, "  x  "},
  };
  Open("[Main]\nuse_cust_rank=1\n");
  for (const auto& [button, field, filter, afterCancel] : cases) {
    Type(field, "  x  ");
    desktop.files = {std::nullopt};
    Click(button);
    EXPECT_EQ(Text(field), afterCancel) << button;
    EXPECT_EQ(desktop.fileRequests.back().filter, filter) << button;

    desktop.files = {"/some/where/file of mine"};
    Click(button);
    EXPECT_EQ(Text(field), "/some/where/file of mine") << button;
  }
}

TEST_F(Pickers, EachDialogRemembersItsLastFile) {
  Open("");
  desktop.files = {"/a/back.jpg", std::nullopt, "/b/games.log", "/c/main.htmlt"};
  for (const char* const button : {"cmdBkgndImageBrowse", "cmdBrsTemplate", "cmdLogFileBrowse",
                                   "cmdBrsGame", "cmdLogFileBrowse", "cmdBkgndImageBrowse"}) {
    Click(button);
  }
  QStringList offered;
  for (const auto& request : desktop.fileRequests) offered.append(request.fileName);
  EXPECT_EQ(offered,
            (QStringList{"", "/a/back.jpg", "", "/a/back.jpg", "/b/games.log", "/c/main.htmlt"}));
  const ui::OpenFileRequest& log = desktop.fileRequests[2];
  EXPECT_EQ(log.title, "Select Quake 3 Arena Log File");
  EXPECT_EQ(log.defaultExtension, "*.log");
  EXPECT_EQ(desktop.fileRequests[0].title, "");
}

/// The folder browser on folders made for the test; the program's current folder is `tree`.
class BrowseFolders : public FieldsTest {
 protected:
  BrowseFolders() {
    for (const char* const folder : {"tree/.hidden", "tree/Beta", "tree/alpha/inner"}) {
      std::filesystem::create_directories(PathOf(folder));
    }
    WriteFile("tree/file", "");
    std::filesystem::current_path(PathOf("tree"));
    Open("");
  }

  QString Full(const char* folder) { return QString::fromStdString(PathOf(folder)); }

  /// Browses from `start` with `use` in the open browser; what the field holds then.
  QString Browse(const QString& start, support::DialogAnswers::Action use) {
    Type("txtDestPath", start);
    support::DialogAnswers answers;
    answers.Then(std::move(use));
    Click("cmdBrowse3");
    EXPECT_EQ(Window().focusWidget()->objectName(), "cmdBrowse3");
    return Text("txtDestPath");
  }

  static ui::FolderList& Folders(const QWidget& browser) {
    return ui::Control<ui::FolderList>(browser, "Folders");
  }

  static void ClickOn(const QWidget& browser, const char* button) {
    QTest::mouseClick(&ui::Control<QPushButton>(browser, button), Qt::LeftButton);
  }

  static void DoubleClick(ui::FolderList& folders, const QString& name) {
    const auto items = folders.findItems(name, Qt::MatchExactly | Qt::MatchRecursive);
    ASSERT_EQ(items.size(), 1) << name.toStdString();
    folders.scrollToItem(items[0]);
    const QPoint place = folders.visualItemRect(items[0]).center();
    QTest::mouseClick(folders.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(folders.viewport(), Qt::LeftButton, {}, place);
  }
};

TEST_F(BrowseFolders, OkAtOnceGivesTheFullPathOfTheStart) {
  const std::pair<QString, const char*> cases[] = {{".\\alpha", "tree/alpha"},
                                                   {"alpha/inner", "tree/alpha/inner"},
                                                   {"", "tree"},
                                                   {"missing", "tree"},
                                                   {"file", "tree"},
                                                   {" alpha", "tree"},
                                                   {Full("tree/Beta"), "tree/Beta"}};
  for (const auto& [start, folder] : cases) {
    EXPECT_EQ(Browse(start, [](QWidget& browser) { ClickOn(browser, "cmdOK"); }), Full(folder))
        << start.toStdString();
  }
}

TEST_F(BrowseFolders, ShowsThePathAndTheSubfolders) {
  Browse(".", [&](QWidget& browser) {
    EXPECT_EQ(browser.windowTitle(), "Select A Directory");
    EXPECT_EQ(browser.size(), QSize(235, 219));
    QStringList names;
    for (QTreeWidgetItemIterator item(&Folders(browser)); *item != nullptr; ++item) {
      names.append((*item)->text(0));
    }
    EXPECT_EQ(names.front(), "/");
    EXPECT_EQ(names.mid(names.indexOf("tree")), (QStringList{"tree", ".hidden", "alpha", "Beta"}));
    EXPECT_EQ(Folders(browser).currentItem()->text(0), "tree");
    EXPECT_EQ(browser.focusWidget(), &Folders(browser));
    QTest::keyClick(&Folders(browser), Qt::Key_Escape);
  });
}

TEST_F(BrowseFolders, FoldersOpenWithDoubleClickAndEnter) {
  EXPECT_EQ(Browse(".",
                   [](QWidget& browser) {
                     DoubleClick(Folders(browser), "alpha");
                     DoubleClick(Folders(browser), "inner");
                     DoubleClick(Folders(browser), "tree");
                     DoubleClick(Folders(browser), "Beta");
                     ClickOn(browser, "cmdOK");
                   }),
            Full("tree/Beta"));
  EXPECT_EQ(Browse(".",
                   [](QWidget& browser) {
                     QTest::keyClicks(&Folders(browser), "alpha");
                     QTest::keyClick(&Folders(browser), Qt::Key_Return);
                     EXPECT_TRUE(browser.isVisible()) << "Enter opened alpha";
                     QTest::keyClick(&Folders(browser), Qt::Key_Down);
                     QTest::keyClick(&Folders(browser), Qt::Key_Enter);
                     QTest::keyClick(&Folders(browser), Qt::Key_Enter);
                     EXPECT_FALSE(browser.isVisible()) << "nothing is left to open";
                   }),
            Full("tree/alpha/inner"));
}

TEST_F(BrowseFolders, CancelLeavesTheFieldAsItWas) {
  const support::DialogAnswers::Action ways[] = {
      [](QWidget& browser) { ClickOn(browser, "cmdCancel"); },
      [](QWidget& browser) { QTest::keyClick(&browser, Qt::Key_Escape); },
      [](QWidget& browser) { browser.close(); },
  };
  for (const auto& leave : ways) {
    EXPECT_EQ(Browse(" .\\alpha ",
                     [&](QWidget& browser) {
                       DoubleClick(Folders(browser), "Beta");
                       leave(browser);
                     }),
              " .\\alpha ");
  }
  EXPECT_TRUE(desktop.messages.empty());
}

TEST_F(BrowseFolders, ADriveOpensItsRootFolder) {
  EXPECT_EQ(Browse(".",
                   [](QWidget& browser) {
                     auto& drives = ui::Control<QComboBox>(browser, "Drives");
                     ASSERT_EQ(drives.itemText(0), "/");
                     drives.setFocus();
                     QTest::keyClick(&drives, Qt::Key_Home);
                     emit drives.activated(0);
                     EXPECT_EQ(Folders(browser).Path(), "/");
                     EXPECT_EQ(drives.currentIndex(), 0);
                     ClickOn(browser, "cmdOK");
                   }),
            "/");
}

}  // namespace
}  // namespace editor
