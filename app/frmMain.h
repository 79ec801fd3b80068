#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include <QMainWindow>
#include <QSettings>
#include <QString>

#include "app/context.h"
#include "config/modIni.h"
#include "editor/dialogs.h"
#include "editor/edit_menu.h"
#include "ui/desktop.h"

namespace app {

/// What the window is in the middle of. Saving and running handle window events while they last,
/// so other handlers run inside them.
enum class Activity { kIdle, kSaving, kRunning };

/// The editor's main window. Its fields are the settings while the program runs.
class frmMain : public QMainWindow {
 public:
  /// Builds the window and loads it (Form_Load); it is not shown yet. All three outlive the window.
  /// `settings` are the per-user settings.
  frmMain(const config::modIni& ini, ui::Desktop& desktop, QSettings& settings);

  const config::modIni& Ini() const { return ini_; }
  ui::Desktop& Desktop() const { return desktop_; }

  /// What a handler is handed. `index`: of the member of a control array that was used, -1 for
  /// other controls.
  Context ContextFor(int index = -1);

  /// What goes on; changed by an ActivityScope only.
  Activity CurrentActivity() const { return activity_; }

  /// Why the settings file could not be read when the window was loaded; empty when it was read.
  const std::string& LoadFailure() const { return loadFailure_; }

  /// Asks the save in progress to print the file when it is done; whether that was asked for, and
  /// is now answered.
  void RequestPrint() { printRequested_ = true; }
  bool TakePrintRequest() { return std::exchange(printRequested_, false); }

  /// Puts a text into the second panel of the status bar, whether the bar is shown or not.
  void SetStatus(const QString& text);

  /// Shows the status bar if it is hidden and hides it if it is shown. The check mark of
  /// `mnViewStatusBar` is the one record of that; the window's height follows.
  void ToggleStatusBar();

  /// Stores the window's position and whether the status bar is shown in the per-user settings.
  void SaveWindowState();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  friend class ActivityScope;

  void Form_Load();
  void Form_Unload();
  void RestorePosition();
  void RestoreStatusBar();
  void ShowStatusBar(bool shown);
  void Form_Resize();
  void LinkColorButtons(const QString& frame, const QString& preview);

  const config::modIni& ini_;
  ui::Desktop& desktop_;
  QSettings& settings_;
  editor::Dialogs dialogs_;
  editor::EditMenu editMenu_;
  Activity activity_ = Activity::kIdle;
  std::string loadFailure_;
  bool printRequested_ = false;
  std::int16_t FixedHeight;  // height in force, in twips, frame and menu bar included
};

/// Marks the window as saving or running while it lives; then what went on before goes on again.
class ActivityScope {
 public:
  ActivityScope(frmMain& window, Activity activity) : window_(window), before_(window.activity_) {
    window_.activity_ = activity;
  }
  ActivityScope(const ActivityScope&) = delete;
  ActivityScope& operator=(const ActivityScope&) = delete;
  ~ActivityScope() { window_.activity_ = before_; }

 private:
  frmMain& window_;
  Activity before_;
};

}  // namespace app
