#include <gtest/gtest.h>

#include "tests/editor/fields_test.h"

namespace editor {
namespace {

using Colors = FieldsTest;

TEST_F(Colors, EveryButtonTakesTheChosenColour) {
  Open("");
  QStringList buttons = {"cmdTextColor", "cmdLinkColor", "cmdVLinkColor", "cmdALinkColor",
                         "cmdBGColor"};
  for (int i = 0; i < 10; ++i) buttons.append(QString("cmdNameColor(%1)").arg(i));
  for (int i = 0; i < 3; ++i) buttons.append(QString("cmdColumnColor(%1)").arg(i));
  int color = 0x123456;
  for (const QString& button : buttons) {
    desktop.colors = {color};
    Click(button);
    EXPECT_EQ(Color(button), color) << button.toStdString();
    desktop.offeredColors.clear();
    Click(button);
    EXPECT_EQ(desktop.offeredColors, std::vector<int>{color}) << "opens on the button's colour";
    EXPECT_EQ(Color(button), color) << "a cancel changes nothing";
    color += 0x010203;
  }
  Click("Command4");
  EXPECT_EQ(desktop.offeredColors.back(), Color(buttons.back())) << "the last colour it had";
}

QColor Role(const QWidget& preview, const char* control, QPalette::ColorRole role) {
  return ui::Control<QWidget>(preview, control).palette().color(role);
}

TEST_F(Colors, ThePreviewShowsTheColoursOfTheMoment) {
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
