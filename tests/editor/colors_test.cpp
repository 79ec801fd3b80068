#include <gtest/gtest.h>

#include "tests/editor/fields_test.h"

namespace editor {
namespace {

using Colors = FieldsTest;

TEST_F(Colors, TheDialogOpensOnTheColorOfTheButton) {
  Open("[HTML]\nbg_color=#563412\n");
  const std::tuple<const char*, int, const char*> cases[] = {
      {"cmdBGColor", 0x123456, "Background Color"},
      {"cmdNameColor(3)", 0, "Name Color ^3"},
      {"cmdColumnColor(2)", 0, "Column 3 Color"}};
  for (const auto& [button, color, title] : cases) {
    Click(button);
    EXPECT_EQ(desktop.offeredColors.back(), color);
    EXPECT_EQ(desktop.colorTitles.back(), title);
    EXPECT_EQ(Color(button), color) << "a cancel changes nothing";
  }
  desktop.colors = {0x00FF00};
  Click("cmdBGColor");
  Click("Command4");
  EXPECT_EQ(desktop.offeredColors.back(), 0x00FF00) << "the last color that the dialog had";
  EXPECT_EQ(desktop.colorTitles.back(), "Highlight Color");
}

QColor Role(const QWidget& preview, const char* control, QPalette::ColorRole role) {
  return ui::Control<QWidget>(preview, control).palette().color(role);
}

TEST_F(Colors, ThePreviewShowsTheColorsOfTheMoment) {
  Open(
      "[HTML]\ntext_color=#010203\nlink_color=#111213\nvlink_color=#212223\n"
      "alink_color=#313233\nbg_color=#414243\n"
      "[KILL TABLES]\ncolumn0=#515253\ncolumn1=#616263\ncolumn2=#717273\n");
  for (const char* const button : {"cmdColorPreview", "cmdKillPreview"}) {
    support::DialogAnswers answers;
    answers.Then([&](QWidget& preview) {
      EXPECT_EQ(preview.windowTitle(), "Kill Tables");
      EXPECT_EQ(preview.size(), QSize(257, 208));
      const std::tuple<const char*, QPalette::ColorRole, const char*> cases[] = {
          {"picBack", QPalette::Window, "#414243"},
          {"lblText", QPalette::WindowText, "#010203"},
          {"lblLink", QPalette::WindowText, "#111213"},
          {"lblVLink", QPalette::WindowText, "#212223"},
          {"lblALink", QPalette::WindowText, "#313233"},
          {"lblcolumn1", QPalette::Window, "#515253"},
          {"lblcolumn2", QPalette::Window, "#616263"},
          {"lblcolumn3", QPalette::Window, "#717273"},
          {"lblTableHeader", QPalette::Window, "#414243"},
          {"lblTableHeader", QPalette::WindowText, "#010203"},
      };
      for (const auto& [control, role, color] : cases) {
        EXPECT_EQ(Role(preview, control, role).name(), color) << control;
      }
      EXPECT_EQ(preview.grab().toImage().pixelColor(100, 20), QColor("#414243"));
      EXPECT_EQ(preview.focusWidget(), &ui::Control<QWidget>(preview, "cdClose"));
      QTest::keyClick(&preview, Qt::Key_Return);
      EXPECT_FALSE(preview.isVisible());
    });
    Click(button);
    EXPECT_EQ(Window().focusWidget()->objectName(), button);
  }
  desktop.colors = {0x00FF00};
  Click("cmdBGColor");
  support::DialogAnswers answers;
  answers.Then([&](QWidget& preview) {
    EXPECT_EQ(Role(preview, "picBack", QPalette::Window).name(), "#00ff00");
    QTest::keyClick(&preview, Qt::Key_Escape);
  });
  Click("cmdColorPreview");
}

}  // namespace
}  // namespace editor
