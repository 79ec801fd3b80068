#include "help/frmAbout.h"

#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "help/system_info.h"
#include "ui/controls.h"
#include "ui/fonts.h"
#include "ui/layout.h"

namespace help {
namespace {

using ui::Control;
using ui::ControlKind;
using ui::ControlRow;
using ui::FontFace;
using ui::FontSpec;

constexpr FontSpec kDialogFont{FontFace::kArial, 8.25, QFont::Bold};
constexpr FontSpec kTitleFont{FontFace::kCopperplate, 14.25, QFont::DemiBold};
constexpr FontSpec kVersionFont{FontFace::kCourier, 9.75, QFont::Normal};
constexpr FontSpec kTextFont{FontFace::kArial, 9.75, QFont::Normal};
constexpr FontSpec kSmallPrintFont{FontFace::kArial, 8.25, QFont::Normal};

constexpr QRgb kDarkRed = qRgb(128, 0, 0);
constexpr QRgb kBlack = qRgb(0, 0, 0);
constexpr QRgb kWhite = qRgb(255, 255, 255);
constexpr QRgb kLightGrey = qRgb(192, 192, 192);

// Sizes in twips.
constexpr int kWidth = 6015;
constexpr int kHeight = 3555;
constexpr int kTextLeft = 120;
constexpr int kTextWidth = 5535;
constexpr int kTextHeight = 3375;

// The scrolling text rises by a step on every tick. It begins with its first lines in sight, and
// begins again a little lower once it has left the viewport.
constexpr int kTickMilliseconds = 50;
constexpr int kStep = 10;
constexpr int kFirstTop = 2280;
constexpr int kNextTop = 2300;

constexpr ControlRow Paragraph(const char* name, int top, int height, const char* text) {
  return ControlRow{ControlKind::kLabel, name, "fraBox", {120, top, 5295, height}, text}
      .In(kTextFont)
      .Ink(kWhite)
      .Wrapped();
}

// The lines of small print stand closer than their letters are high, so they go down in steps from
// the left edge to the right one.
constexpr ControlRow SmallPrint(const char* name, const ui::Place& place, Qt::Alignment side,
                                const char* text) {
  ControlRow row = ControlRow{ControlKind::kLabel, name, "fraBox", place, text}
                       .In(kSmallPrintFont)
                       .Ink(kLightGrey);
  row.align = side | Qt::AlignTop;
  return row;
}

const ControlRow kRows[] = {
    ControlRow{ControlKind::kPanel, "Frame1", "", {0, 0, 6015, 615}}.Paper(kDarkRed),
    ControlRow{ControlKind::kLabel, "lblTitle", "Frame1", {0, 0, 6015, 360}}
        .In(kTitleFont)
        .Ink(kWhite)
        .Centered(),
    ControlRow{ControlKind::kLabel, "lblVersion", "Frame1", {120, 360, 3135, 345}}
        .In(kVersionFont)
        .Ink(kWhite)
        .AtTop(),
    ControlRow{ControlKind::kPanel, "Picture1", "", {120, 720, 5805, 2340}}.Paper(kBlack),
    ControlRow{
        ControlKind::kPanel, "fraBox", "Picture1", {kTextLeft, kFirstTop, kTextWidth, kTextHeight}}
        .Paper(kBlack),
    Paragraph("Label2", 0, 495,
              "Quillon's Vantorel is the ultimate tool for generating statistics by parsing the "
              "Quake 3 Arena log files."),
    Paragraph("Label1", 600, 975,
              "The Morvane stats engine is based on templates.  This in combination with the "
              "nemurous settings that are available for configuration, bring limitless "
              "possibilities to the types of stats possible."),
    Paragraph("Label6", 1680, 1095,
              "Thank you to everyone who keeps a server running for friends, to the players who "
              "fill its logs, and to the people who write free software and give it away: this "
              "program stands on their work."),
    SmallPrint("lblDescription", {120, 2730, 5295, 210}, Qt::AlignLeft, "Your logs,"),
    SmallPrint("Label7", {120, 2865, 4935, 255}, Qt::AlignHCenter, "your rules,"),
    SmallPrint("Label3", {120, 3000, 4935, 255}, Qt::AlignRight, "your pages."),
    {ControlKind::kButton, "cmdOK", "", {4680, 3120, 1185, 350}, "OK"},
    {ControlKind::kButton, "cmdSysInfo", "", {3000, 3120, 1665, 350}, "&System Info..."},
};

}  // namespace

frmAbout::frmAbout(QWidget* owner, ui::Desktop& desktop)
    : QDialog(owner, Qt::Dialog | Qt::FramelessWindowHint), desktop_(desktop) {
  setObjectName("frmAbout");
  setAccessibleName("About Vantorel");
  ui::BlockOwnerOnly(*this);
  setFont(ui::MakeFont(kDialogFont));
  auto* border = new QFrame;
  border->setFrameStyle(QFrame::WinPanel | QFrame::Raised);
  auto* area = new QWidget;
  area->setFixedSize(ui::Pixels(kWidth), ui::Pixels(kHeight));
  auto* inside = new QVBoxLayout(border);
  inside->setContentsMargins(0, 0, 0, 0);
  inside->addWidget(area);
  auto* outside = new QVBoxLayout(this);
  outside->setContentsMargins(0, 0, 0, 0);
  outside->setSizeConstraint(QLayout::SetFixedSize);
  outside->addWidget(border);
  ui::BuildControls(*area, kRows);

  auto& ok = Control<QPushButton>(*this, "cmdOK");
  ok.setFocus();
  connect(&ok, &QPushButton::clicked, this, &frmAbout::cmdOK_Click);
  connect(&Control<QPushButton>(*this, "cmdSysInfo"), &QPushButton::clicked, this,
          &frmAbout::cmdSysInfo_Click);
  Form_Load();
  layout()->activate();
  if (owner != nullptr) CenterOn(owner->frameGeometry());
}

void frmAbout::CenterOn(const QRect& place) {
  const QSize room = place.size() - size();
  move(place.topLeft() + QPoint(room.width(), room.height()) / 2);
}

void frmAbout::Form_Load() {
  Control<QLabel>(*this, "lblVersion")
      .setText(QStringLiteral("Version [%1.%2.%3]")
                   .arg(VANTREL3_VERSION_MAJOR)
                   .arg(VANTREL3_VERSION_MINOR)
                   .arg(VANTREL3_VERSION_REVISION));
  auto* timer = new QTimer(this);
  timer->setObjectName("tmrMain");
  timer->setTimerType(Qt::PreciseTimer);
  connect(timer, &QTimer::timeout, this, &frmAbout::tmrMain_Timer);
  timer->start(kTickMilliseconds);
  Control<QLabel>(*this, "lblTitle").setText("Quillon's Vantorel for Quake 3 Arena");
  MoveTextTo(kFirstTop);
}

void frmAbout::tmrMain_Timer() {
  const int top = textTop_ - kStep;
  MoveTextTo(top <= -kTextHeight ? kNextTop : top);
}

void frmAbout::MoveTextTo(int top) {
  textTop_ = top;
  Control<QFrame>(*this, "fraBox").move(ui::Pixels(kTextLeft), ui::Pixels(top));
}

void frmAbout::cmdOK_Click() { accept(); }

void frmAbout::cmdSysInfo_Click() { StartSysInfo(desktop_, this, platform::Registry()); }

void frmAbout::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return;
  QDialog::keyPressEvent(event);
}

void mnuHelpAbout_Click(const ui::Context& context) {
  frmAbout(&context.window, context.desktop).exec();
}

}  // namespace help
