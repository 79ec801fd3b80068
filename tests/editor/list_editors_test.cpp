#include <gtest/gtest.h>

#include <QAbstractItemView>

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

}  // namespace
}  // namespace editor
