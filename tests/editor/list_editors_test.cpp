#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QStyledItemDelegate>

#include "tests/editor/fields_test.h"

namespace editor {
namespace {

using Lists = FieldsTest;

TEST_F(Lists, ListBoxesTakeNewEntriesAtTheTop) {
  Open("");
  for (const char* const typed : {"a", "  b c ", "", "a", "   "}) {
    Type("txtLogFilePath", typed);
    Click("cmdAddLog");
    EXPECT_EQ(Text("txtLogFilePath"), "");
  }
  EXPECT_EQ(Entries("lstLogFiles"), (QStringList{"", "a", "b c", "a"}));
  Click("cmdRemovelog");
  EXPECT_EQ(Entries("lstLogFiles").size(), 4) << "nothing is selected";
  Select("lstLogFiles", 2);
  Click("cmdRemovelog");
  EXPECT_EQ(Entries("lstLogFiles"), (QStringList{"", "a", "a"}));
  Click("cmdRemovelog");
  EXPECT_EQ(Entries("lstLogFiles").size(), 3) << "nothing is selected afterwards";
}

TEST_F(Lists, UserVariablesAreAppendedAsTyped) {
  Open("[USER VARS]\nold=1\n");
  const struct {
    const char* name;
    const char* value;
    bool added;
  } cases[] = {{" n ", " v ", true}, {"", "v", true}, {"n", "", false}, {"a=b", " ", true}};
  for (const auto& [name, value, added] : cases) {
    Type("txtVariable", name);
    Type("txtValue", value);
    Click("cmdAddUserVar");
    EXPECT_EQ(Text("txtVariable"), added ? "" : name);
    EXPECT_EQ(Text("txtValue"), "");
  }
  EXPECT_EQ(Entries("lvwUserVars"), (QStringList{"old|1", " n | v ", "|v", "a=b| "}));
  Select("lvwUserVars", 1);
  Click("cmdRemoveUserVar");
  Click("cmdRemoveUserVar");
  EXPECT_EQ(Entries("lvwUserVars"), (QStringList{"old|1", "|v", "a=b| "}));
}

TEST_F(Lists, HighlightLevelsAskForAColorFirst) {
  Open("[KILL TABLES]\nhilite_levels=1\nhilite_level0=50\nhilite_color0=#abcdef\n");
  const struct {
    const char* typed;
    std::optional<int> color;
    const char* left;
    QStringList rows;
  } cases[] = {
      {"90", std::nullopt, "90", {"50|#abcdef"}},
      {"", 0x0000FF, "", {"50|#abcdef"}},
      {" abc ", 0x00FF80, "", {" abc |#80FF00", "50|#abcdef"}},
  };
  for (const auto& [typed, color, left, rows] : cases) {
    desktop.colors = {color};
    Type("txtMinHiliteLevel", typed);
    Click("Command4");
    EXPECT_EQ(Text("txtMinHiliteLevel"), left);
    EXPECT_EQ(Entries("lvwHiliteLevels"), rows);
  }
  EXPECT_EQ(desktop.offeredColors, (std::vector<int>{0, 0, 0x0000FF}));
  Select("lvwHiliteLevels", 1);
  Click("cmdRemoveHiLiteLevel");
  Click("cmdRemoveHiLiteLevel");
  EXPECT_EQ(Entries("lvwHiliteLevels"), QStringList{" abc |#80FF00"});
}

TEST_F(Lists, NewEntriesAreScrolledIntoView) {
  std::string bytes = "[Logs]\nnumber_of_logs=99\n[KILL TABLES]\nhilite_levels=99\n[USER VARS]\n";
  for (int i = 0; i < 99; ++i) bytes += "v" + std::to_string(i) + "=1\n";
  Open(bytes);
  const auto view = [this](const char* list) -> QAbstractItemView& {
    return ui::Control<QAbstractItemView>(Window(), list);
  };
  const auto shows = [&](const char* list, int row) {
    const QRect place = view(list).visualRect(view(list).model()->index(row, 0));
    return view(list).viewport()->rect().contains(place.center());
  };
  for (const auto& [list, entry, add] : {std::tuple{"lstLogFiles", "txtLogFilePath", "cmdAddLog"},
                                         {"lvwHiliteLevels", "txtMinHiliteLevel", "Command4"}}) {
    Focus(list);
    view(list).scrollToBottom();
    ASSERT_FALSE(shows(list, 0));
    Type(entry, "new");
    desktop.colors = {0};
    Click(add);
    EXPECT_TRUE(shows(list, 0)) << list;
  }
  Type("txtValue", "new");
  ASSERT_FALSE(shows("lvwUserVars", 98));
  Click("cmdAddUserVar");
  EXPECT_TRUE(shows("lvwUserVars", 99));
}

TEST_F(Lists, TheKeyboardStaysWhereAnEntryWasRemoved) {
  Open(
      "[Logs]\nnumber_of_logs=4\nlogpath0=a\nlogpath1=b\nlogpath2=c\nlogpath3=d\n"
      "[USER VARS]\na=1\nb=2\nc=3\nd=4\n");
  for (const auto& [list, remove] :
       {std::pair{"lstLogFiles", "cmdRemovelog"}, {"lvwUserVars", "cmdRemoveUserVar"}}) {
    const auto& view = ui::Control<QAbstractItemView>(Window(), list);
    Select(list, 1);
    Click(remove);
    EXPECT_FALSE(view.selectionModel()->hasSelection()) << list;
    EXPECT_EQ(view.currentIndex().row(), 1) << list;
    Focus(list);
    Press(Qt::Key_Down);
    EXPECT_EQ(view.selectionModel()->selectedRows().value(0).row(), 2) << list;
    Click(remove);
    EXPECT_FALSE(view.selectionModel()->hasSelection()) << list;
    EXPECT_EQ(view.currentIndex().row(), 1) << list << ", the last entry went";
  }
}

TEST_F(Lists, AnEntryWithALineBreakIsShownOnOneLine) {
  Open("");
  for (const char* const text : {"one", "two\r\nlines"}) {
    Box("txtLogFilePath").setText(text);
    Click("cmdAddLog");
    Box("txtVariable").setText(text);
    Box("txtValue").setText(text);
    Click("cmdAddUserVar");
  }
  EXPECT_EQ(Entries("lstLogFiles").at(0), "two\r\nlines") << "the entry is as it was typed";
  for (const char* const list : {"lstLogFiles", "lvwUserVars"}) {
    Focus(list);
    const auto& view = ui::Control<QAbstractItemView>(Window(), list);
    const QModelIndex first = view.model()->index(0, 0);
    const QModelIndex second = view.model()->index(1, 0);
    EXPECT_EQ(view.visualRect(first).height(), view.visualRect(second).height()) << list;
    const auto* delegate = qobject_cast<QStyledItemDelegate*>(view.itemDelegate());
    EXPECT_EQ(delegate->displayText("two\r\nlines", {}), "two lines") << list;
  }
}

}  // namespace
}  // namespace editor
