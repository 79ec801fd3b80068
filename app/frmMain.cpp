#include "app/frmMain.h"

#include <algorithm>
#include <optional>

#include <QAction>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QLayout>
#include <QScreen>
#include <QStatusBar>
#include <QTabWidget>

#include "app/handlers.h"
#include "app/layout.h"
#include "app/menus.h"
#include "app/modMain.h"
#include "app/tabs.h"
#include "editor/list_editors.h"
#include "editor/load_settings.h"
#include "editor/switches.h"
#include "ui/controls.h"

namespace app {
namespace {

using ui::Control;

// Sizes of the designed window in twips; its frame, title and menu bar take a part of them.
constexpr int kWindowWidth = 8940;
constexpr std::int16_t kHeightWithStatusBar = 6540;
constexpr std::int16_t kHeightWithoutStatusBar = 6135;
constexpr int kFrameWidth = 120;
constexpr int kFrameHeight = 690;
constexpr int kTwipsPerPixel = 15;

constexpr int kAboutTab = 7;

constexpr char kTopKey[] = "WindowPos/Top";
constexpr char kLeftKey[] = "WindowPos/Left";
constexpr char kShowStatusKey[] = "WindowPos/ShowStatus";

/// A stored position in twips as pixels; `centred` (twips) when nothing usable is stored.
int StoredPixels(const QSettings& settings, const char* key, int centred) {
  bool isNumber = false;
  const float stored = settings.value(key).toString().toFloat(&isNumber);
  const float twips = isNumber && qIsFinite(stored) ? stored : static_cast<float>(centred);
  // The window system counts pixels in 16 bits.
  return qRound(std::clamp(twips / kTwipsPerPixel, -32767.0F, 32767.0F));
}

/// "True" and "False", or a number other than 0 and 0; nothing for any other text.
std::optional<bool> ToBoolean(const QString& text) {
  if (text.compare("True", Qt::CaseInsensitive) == 0) return true;
  if (text.compare("False", Qt::CaseInsensitive) == 0) return false;
  bool isNumber = false;
  const double number = text.toDouble(&isNumber);
  if (!isNumber) return std::nullopt;
  return number != 0;
}

// The order of building is that of the Tab key.
void BuildLayout(QWidget& area) {
  ui::BuildControls(area, WindowLayout());
  BuildTabs(area);
  ui::BuildControls(area, StripLayout());
}

QString ShortVersion() {
  return QString("%1.%2").arg(VANTREL3_VERSION_MAJOR).arg(VANTREL3_VERSION_MINOR);
}

}  // namespace

frmMain::frmMain(const config::modIni& ini, ui::Desktop& desktop, QSettings& settings)
    : ini_(ini),
      desktop_(desktop),
      settings_(settings),
      dialogs_(desktop, *this),
      editMenu_(*this),
      FixedHeight(kHeightWithStatusBar) {
  setObjectName("frmMain");
  setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                 Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                 Qt::WindowCloseButtonHint);
  setCentralWidget(new QWidget(this));
  layout()->setSizeConstraint(QLayout::SetFixedSize);
  ui::HoldSizeOnEveryScreen(*this);
  BuildMenus(*this);
  BuildLayout(*centralWidget());
  editor::ShowEntriesOnOneLine(*this);
  auto& tabs = Control<QTabWidget>(*this, "SSTab1");
  tabs.setCurrentIndex(kAboutTab);
  tabs.setFocus();
  LinkColorButtons("Frame1(4)", "cmdColorPreview");
  LinkColorButtons("Frame1(5)", "cmdKillPreview");
  ConnectHandlers(*this);
  Form_Load();
}

Context frmMain::ContextFor(int index) {
  return {{{*this, desktop_, ini_.ProgramDirectory(), index}, dialogs_, editMenu_}, *this};
}

void frmMain::Form_Load() {
  RestorePosition();
  RestoreStatusBar();
  setWindowTitle("Quillon's Vantorel v" + ShortVersion());
  Control<QLabel>(*this, "lblSplashVersion").setText("Version " + ShortVersion());
  Control<QAction>(*this, "mnuHelpAbout").setText("About Vantorel...");
  const config::SettingsFile file = ini_.Load();
  loadFailure_ = file.LoadFailure();
  editor::LoadSettings(*this, file);
  editor::UpdateCustomRank(*this);
  SetStatus("Ready.");
}

void frmMain::Form_Unload() { ReleaseMainWindow(*this); }

void frmMain::closeEvent(QCloseEvent* event) {
  Form_Unload();
  QMainWindow::closeEvent(event);
}

void frmMain::RestorePosition() {
  const QRect screen = QGuiApplication::primaryScreen()->geometry();
  const QSize room = screen.size() * kTwipsPerPixel - QSize(kWindowWidth, kHeightWithStatusBar);
  const QPoint middle = screen.topLeft() * kTwipsPerPixel + QPoint(room.width(), room.height()) / 2;
  const int top = StoredPixels(settings_, kTopKey, middle.y());
  const int left = StoredPixels(settings_, kLeftKey, middle.x());
  move(left, top);
}

void frmMain::RestoreStatusBar() {
  ShowStatusBar(ToBoolean(settings_.value(kShowStatusKey).toString()).value_or(true));
}

void frmMain::ShowStatusBar(bool shown) {
  Control<QAction>(*this, "mnViewStatusBar").setChecked(shown);
  FixedHeight = shown ? kHeightWithStatusBar : kHeightWithoutStatusBar;
  Form_Resize();
  Control<QStatusBar>(*this, "StatBar").setVisible(shown);
}

// The window takes the size of its area and the menu bar; nothing else can change it.
void frmMain::Form_Resize() {
  centralWidget()->setFixedSize(ui::Pixels(kWindowWidth - kFrameWidth),
                                ui::Pixels(FixedHeight - kFrameHeight));
  // At once: a window that changes its size after it was placed loses the room for its frame.
  layout()->activate();
}

void frmMain::LinkColorButtons(const QString& frame, const QString& preview) {
  std::vector<QWidget*> ring;
  for (QPushButton* button : Control<QWidget>(*this, frame).findChildren<QPushButton*>()) {
    if (dynamic_cast<ui::ColorButton*>(button) != nullptr) ring.push_back(button);
  }
  ring.push_back(&Control<QWidget>(*this, preview));
  new ui::ArrowRing(std::move(ring), this);
}

void frmMain::SetStatus(const QString& text) {
  Control<QLabel>(*this, "StatBarPanel2").setText(text);
}

void frmMain::ToggleStatusBar() {
  ShowStatusBar(!Control<QAction>(*this, "mnViewStatusBar").isChecked());
}

void frmMain::SaveWindowState() {
  const bool shown = Control<QAction>(*this, "mnViewStatusBar").isChecked();
  settings_.setValue(kTopKey, QString::number(y() * kTwipsPerPixel));
  settings_.setValue(kLeftKey, QString::number(x() * kTwipsPerPixel));
  settings_.setValue(kShowStatusKey, shown ? "True" : "False");
  settings_.sync();
}

}  // namespace app
