#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <string>
#include <unistd.h>
#include <vector>

#include <QAction>
#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "help/frmAbout.h"
#include "help/links.h"
#include "help/system_info.h"
#include "tests/support/dialog_answers.h"
#include "tests/support/editor_test.h"
#include "ui/controls.h"
#include "ui/layout.h"

namespace help {
namespace {

using support::Choose;
using support::DialogAnswers;
using testing::IsEmpty;
using ui::Control;
using ui::Pixels;

class HelpTest : public support::EditorTest {
 protected:
  /// The machine's registry with these lines below HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft.
  platform::Registry RegistryWith(const std::string& lines) const {
    WriteFile("registry.reg", lines);
    return platform::Registry(PathOf("registry.reg"));
  }

  /// Lets FindProgram find nothing but what lies in the folder "tools".
  void HideInstalledTools() const {
    std::filesystem::create_directories(PathOf("tools"));
    qputenv("PATH", QByteArray::fromStdString(PathOf("tools")));
  }
};

TEST(VersionTextTest, IsANumberWithTwoDecimals) {
  const struct {
    unsigned major;
    unsigned minor;
    const char* text;
  } cases[] = {{1, 0, "1.00"},    {2, 5, "2.50"},   {2, 50, "2.50"},  {1, 10, "1.10"},
               {0, 7, "0.70"},    {1, 125, "1.13"}, {1, 124, "1.12"}, {1, 995, "2.00"},
               {12, 34, "12.34"}, {1, 1009, "1.10"}};
  for (const auto& [major, minor, text] : cases) EXPECT_EQ(VersionText(major, minor), text);
}

TEST_F(HelpTest, TheAboutDialogShowsTheVersionAndClosesWithItsButton) {
  app::frmMain& window = OpenWindow();
  DialogAnswers answers;
  for (int opening = 0; opening < 2; ++opening) {
    answers.Then([&](QWidget& dialog) {
      EXPECT_EQ(dialog.objectName(), "frmAbout");
      EXPECT_EQ(dialog.windowModality(), Qt::WindowModal);
      const QRect owner = window.frameGeometry();
      const QSize room = owner.size() - dialog.size();
      EXPECT_EQ(dialog.pos(), owner.topLeft() + QPoint(room.width(), room.height()) / 2);
      EXPECT_EQ(dialog.font().families().constFirst(), "Arial");
      EXPECT_EQ(dialog.font().pixelSize(), Pixels(165));
      EXPECT_EQ(dialog.font().weight(), QFont::Bold);
      EXPECT_TRUE(dialog.windowFlags().testFlag(Qt::FramelessWindowHint));
      EXPECT_EQ(Control<QLabel>(dialog, "lblVersion").text(), "Version [1.0.0]");
      EXPECT_EQ(Control<QLabel>(dialog, "lblTitle").text(), "Quillon's Vantorel for Quake 3 Arena");
      EXPECT_EQ(Control<QFrame>(dialog, "fraBox").y(), Pixels(2280));
      auto& ok = Control<QPushButton>(dialog, "cmdOK");
      EXPECT_EQ(dialog.focusWidget(), &ok);
      QTest::keyClick(&ok, Qt::Key_Escape);
      EXPECT_TRUE(dialog.isVisible());
      QTest::keyClick(&ok, Qt::Key_Return);
      EXPECT_FALSE(dialog.isVisible());
    });
    Choose(window, "mnuHelpAbout");
  }
  EXPECT_EQ(window.findChild<QTimer*>("tmrMain"), nullptr) << "the timer outlives the dialog";
}

TEST_F(HelpTest, TheTextRisesAndBeginsAgainBelow) {
  frmAbout dialog(nullptr, desktop);
  auto& timer = Control<QTimer>(dialog, "tmrMain");
  EXPECT_TRUE(timer.isActive());
  EXPECT_EQ(timer.interval(), 50);
  auto& text = Control<QFrame>(dialog, "fraBox");
  EXPECT_EQ(text.height(), Pixels(2280 + 3375) - Pixels(2280));
  const auto tick = [&](int times) {
    for (; times > 0; --times) QMetaObject::invokeMethod(&timer, "timeout");
  };
  tick(1);
  EXPECT_EQ(text.y(), Pixels(2270));
  tick(564);  // the last step before the text has left the viewport
  EXPECT_EQ(text.y(), Pixels(-3370));
  tick(1);
  EXPECT_EQ(text.y(), Pixels(2300));
  tick(1);
  EXPECT_EQ(text.y(), Pixels(2290));
}

TEST_F(HelpTest, AllOfTheAboutTextFits) {
  frmAbout dialog(nullptr, desktop);
  for (const QLabel* label : dialog.findChildren<QLabel*>()) {
    const QRect needed = label->fontMetrics().boundingRect(
        QRect(0, 0, label->width(), 1000), label->wordWrap() ? Qt::TextWordWrap : 0, label->text());
    EXPECT_LE(needed.width(), label->width()) << label->objectName().toStdString();
    EXPECT_LE(needed.height(), label->height()) << label->objectName().toStdString();
  }
}

// They stand closer than their letters are high.
TEST_F(HelpTest, TheLinesOfSmallPrintLeaveEachOtherAlone) {
  frmAbout dialog(nullptr, desktop);
  std::vector<QRect> texts;
  for (const char* name : {"lblDescription", "Label7", "Label3"}) {
    const auto& label = Control<QLabel>(dialog, name);
    texts.push_back(
        label.fontMetrics()
            .boundingRect(label.rect(), static_cast<int>(label.alignment()), label.text())
            .translated(label.pos()));
    EXPECT_FALSE(label.text().isEmpty());
  }
  EXPECT_LT(texts[0].right(), texts[1].left());
  EXPECT_LT(texts[1].right(), texts[2].left());
}

TEST_F(HelpTest, ReadsRegistryValues) {
  const platform::Registry registry = RegistryWith(
      "[HKEY_LOCAL_MACHINE\\K]\n\"Text\"=\"a\"\n\"Number\"=dword:0102AB04\n"
      "\"Zero\"=dword:00000100\n\"All\"=dword:ffffffff\n\"Bytes\"=hex:41\n\"Long\"=\"" +
      std::string(1100, 'x') + "\"\n");
  const struct {
    const char* name;
    bool found;
    const char* result;
  } cases[] = {
      {"Text", true, "a"},         {"Number", true, "76468"},  // 1, 2, AB and 4 joined: 12AB4
      {"Zero", true, "0"},  // the lowest byte is a zero byte: nothing before it
      {"All", true, "4294967295"}, {"Bytes", true, "as passed"},
      {"Long", false, ""},         {"Missing", false, ""}};
  for (const auto& [name, found, expected] : cases) {
    std::string result = "as passed";
    EXPECT_EQ(GetKeyValue(registry, platform::kHkeyLocalMachine, "K", name, result), found) << name;
    EXPECT_EQ(result, expected) << name;
  }
  std::string result = "as passed";
  EXPECT_FALSE(GetKeyValue(registry, platform::kHkeyLocalMachine, "L", "Text", result));
  EXPECT_EQ(result, "");
}

TEST_F(HelpTest, LooksTheSystemInformationToolUp) {
  HideInstalledTools();
  const std::string start = "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Shared Tools";
  const std::string path = start + "\\MSINFO]\n\"PATH\"=\"/opt/my tool\"\n";
  const std::string number = start + "\\MSINFO]\n\"PATH\"=hex:41\n";
  std::string location = start + " Location]\n\"MSINFO\"=\"" + Directory() + "/info\"\n";
  const auto started = [&](const std::string& lines) {
    desktop.detached.clear();
    desktop.messages.clear();
    StartSysInfo(desktop, nullptr, RegistryWith(lines));
    if (desktop.detached.empty() || !desktop.detachedFailure.empty()) {
      EXPECT_EQ(desktop.messages.size(), 1U);
      EXPECT_EQ(desktop.messages.at(0).text, "System Information Is Unavailable At This Time");
      EXPECT_EQ(desktop.messages.at(0).title, "vantrel3");
      EXPECT_EQ(desktop.messages.at(0).style, ui::MessageStyle::kOk);
    } else {
      EXPECT_THAT(desktop.messages, IsEmpty());
    }
    return desktop.detached.empty() ? std::string("nothing") : desktop.detached[0];
  };
  EXPECT_EQ(started(""), "nothing");
  EXPECT_EQ(started(path + location), "/opt/my tool");
  EXPECT_EQ(started(location), "nothing") << "there is no MSINFO32.EXE";
  WriteFile("tools/hardinfo", "");
  std::filesystem::permissions(PathOf("tools/hardinfo"), std::filesystem::perms::owner_all);
  EXPECT_EQ(started(location), "nothing") << "the registry has an entry";
  EXPECT_EQ(started(""), PathOf("tools/hardinfo"));
  WriteFile("info/MSINFO32.EXE", "");
  EXPECT_EQ(started(location), Directory() + "/info\\MSINFO32.EXE");

  desktop.detachedFailure = "cannot be started";
  EXPECT_EQ(started(path), "/opt/my tool");
  EXPECT_EQ(started(number), "");
}

}  // namespace
}  // namespace help
