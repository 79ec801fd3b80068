#include <gtest/gtest.h>
#include <regex>

#include "tests/editor/fields_test.h"
#include "tests/support/files.h"

namespace editor {
namespace {

using Defaults = FieldsTest;

/// The settings file that is installed, without its user variables.
std::string ShippedFile() {
  const std::string bytes = support::ReadFile(VANTREL3_SHARE_DIR "/morvane.cfg");
  const std::size_t header = bytes.find("[USER VARS]");
  return bytes.substr(0, bytes.find('\n', header) + 1);
}

TEST_F(Defaults, SavedTheyAreTheShippedFile) {
  const std::string shipped = ShippedFile();
  ASSERT_GT(shipped.size(), 1000U);
  const std::string changed = std::regex_replace(shipped, std::regex("=[^\r\n]*"), "=1");
  Open(changed);
  ASSERT_TRUE(Checked("ckUseCustomRank"));
  desktop.answers = {ui::Answer::kYes};
  Click("cmdDefaults");
  EXPECT_EQ(Status(), "Defaults Restored.");
  EXPECT_FALSE(Box("txtCustomRankStart").isEnabled());
  EXPECT_EQ(File(), changed) << "only a save writes";
  Click("cmdSave");
  EXPECT_EQ(File(), shipped);
  ASSERT_EQ(desktop.messages.size(), 1U);
  EXPECT_EQ(desktop.messages[0].text,
            "This will reset defaults for ALL settings.  Do you want to continue?");
  EXPECT_EQ(desktop.messages[0].title, "Restore Defaults");
  EXPECT_EQ(desktop.messages[0].style, ui::MessageStyle::kYesNoQuestion);
}

TEST_F(Defaults, EntryBoxesAndUserVariablesStay) {
  Open("[USER VARS]\nv=1\n");
  const QStringList boxes = {"txtLogFilePath", "txtTemplate", "txtGameTemplate",  "txtMapTemplate",
                             "txtVariable",    "txtValue",    "txtMinHiliteLevel"};
  for (const QString& box : boxes) Type(box, "mine");
  desktop.answers = {ui::Answer::kYes};
  Click("cmdDefaults");
  for (const QString& box : boxes) EXPECT_EQ(Text(box), "mine") << box.toStdString();
  EXPECT_EQ(Entries("lvwUserVars"), QStringList{"v|1"});
}

TEST_F(Defaults, NoMeansNo) {
  Open("[Main]\ntime_format=mine\n");
  Click("cmdDefaults");
  EXPECT_EQ(Text("txtTimeFormat"), "mine");
  EXPECT_EQ(Entries("lstLogFiles"), QStringList());
  EXPECT_EQ(Status(), "Ready.");
}

}  // namespace
}  // namespace editor
