#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>

#include <QSettings>
#include <QString>
#include <QTemporaryDir>

#include "app/frmMain.h"
#include "config/modIni.h"
#include "tests/support/recorder_desktop.h"

/// Lets GoogleTest print texts.
inline void PrintTo(const QString& text, std::ostream* stream) { *stream << qPrintable(text); }

namespace support {

/// Gives each test a program directory, a home and per-user settings of its own, and the current
/// folder back at its end.
class EditorTest : public ::testing::Test {
 protected:
  EditorTest();
  ~EditorTest() override;

  /// The program directory, and the path of a file in it.
  std::string Directory() const;
  std::string PathOf(const std::string& name) const;

  void WriteFile(const std::string& name, std::string_view bytes) const;
  std::string ReadFile(const std::string& name) const;

  /// Opens the main window on the program directory's settings file (an empty one when the test
  /// wrote none) and makes it the active window. Every call opens a new window.
  app::frmMain& OpenWindow();

  /// Closes the window and forgets it.
  void CloseWindow() { window_.reset(); }

  /// Per-user settings as the program sees them at its next start.
  QSettings& Settings() { return settings_; }

  RecorderDesktop desktop;

 private:
  QTemporaryDir root_;
  std::string formerFolder_;
  config::modIni ini_;
  QSettings settings_;
  std::unique_ptr<app::frmMain> window_;
};

/// A click of the mouse on a button, check box or other control of the window.
void Click(app::frmMain& window, const QString& control);

/// Chooses a menu item, as if by the mouse; a disabled item does nothing.
void Choose(app::frmMain& window, const QString& item);

/// The text in the second panel of the status bar.
QString StatusText(const app::frmMain& window);

}  // namespace support
