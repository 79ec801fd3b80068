#include "tests/support/editor_test.h"

#include <filesystem>

#include <QAction>
#include <QLabel>
#include <QTest>

#include "platform/files.h"
#include "tests/support/files.h"
#include "ui/controls.h"

namespace support {
namespace {

std::string MakeFolder(const QTemporaryDir& root, const char* name) {
  const std::filesystem::path folder = std::filesystem::path(root.path().toStdString()) / name;
  std::filesystem::create_directories(folder);
  return folder.string();
}

}  // namespace

EditorTest::EditorTest()
    : formerFolder_(std::filesystem::current_path().string()),
      ini_(MakeFolder(root_, "program")),
      settings_(QString::fromStdString(MakeFolder(root_, "settings")) + "/vantrel3.ini",
                QSettings::IniFormat) {
  const QByteArray home = QByteArray::fromStdString(MakeFolder(root_, "home"));
  for (const char* variable :
       {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME"}) {
    qputenv(variable, home);
  }
}

EditorTest::~EditorTest() { std::filesystem::current_path(formerFolder_); }

std::string EditorTest::Directory() const { return ini_.ProgramDirectory(); }

std::string EditorTest::PathOf(const std::string& name) const {
  return (std::filesystem::path(Directory()) / name).string();
}

void EditorTest::WriteFile(const std::string& name, std::string_view bytes) const {
  support::WriteFile(PathOf(name), bytes);
}

std::string EditorTest::ReadFile(const std::string& name) const {
  EXPECT_TRUE(std::filesystem::exists(PathOf(name))) << name;
  return support::ReadFile(PathOf(name));
}

app::frmMain& EditorTest::OpenWindow() {
  if (!platform::FileExists(ini_.ConfigFilePath())) WriteFile("morvane.cfg", "");
  window_ = std::make_unique<app::frmMain>(ini_, desktop, settings_);
  window_->show();
  window_->activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(window_.get()));
  return *window_;
}

void Click(app::frmMain& window, const QString& control) {
  QTest::mouseClick(&ui::Control<QWidget>(window, control), Qt::LeftButton);
}

void Choose(app::frmMain& window, const QString& item) {
  ui::Control<QAction>(window, item).trigger();
}

QString StatusText(const app::frmMain& window) {
  return ui::Control<QLabel>(window, "StatBarPanel2").text();
}

}  // namespace support
