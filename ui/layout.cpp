#include "ui/layout.h"

#include <stdexcept>
#include <string>

#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>
#include <QTreeWidget>
#include <QWindow>

#include "ui/controls.h"
#include "ui/folder_list.h"

namespace ui {
namespace {

constexpr int kTwipsPerPixel = 15;

QWidget* BuildLabel(const ControlRow& row, QWidget* container) {
  auto* label = new QLabel(container);
  label->setTextFormat(Qt::PlainText);
  label->setText(row.caption);
  label->setWordWrap(row.wraps);
  if (row.align != Qt::Alignment()) label->setAlignment(row.align);
  label->setFrameStyle(row.frame);
  return label;
}

QWidget* BuildPanel(const ControlRow& row, QWidget* container) {
  auto* panel = new QFrame(container);
  panel->setFrameStyle(row.frame);
  return panel;
}

QWidget* BuildLine(QWidget* container) {
  auto* line = new QFrame(container);
  line->setFrameStyle(QFrame::HLine | QFrame::Plain);
  return line;
}

QWidget* BuildTextBox(const ControlRow& row, QWidget* container) {
  auto* box = new QLineEdit(row.caption, container);
  if (row.align != Qt::Alignment()) box->setAlignment(row.align);
  return box;
}

QWidget* BuildButton(const ControlRow& row, QWidget* container) {
  auto* button = new QPushButton(row.caption, container);
  button->setAutoDefault(true);  // Enter presses the focused button
  return button;
}

QWidget* BuildColorButton(const ControlRow& row, QWidget* container) {
  auto* button = new ColorButton(container);
  button->setText(row.caption);
  button->setAutoDefault(true);
  return button;
}

QWidget* BuildListView(const ControlRow& row, QWidget* container) {
  auto* view = new QTreeWidget(container);
  view->setHeaderLabels(QString(row.caption).split('|'));
  view->setRootIsDecorated(false);
  view->setUniformRowHeights(true);
  view->setAllColumnsShowFocus(true);
  view->header()->setStretchLastSection(false);
  view->header()->setSectionsMovable(false);
  for (int column = 0; column < view->columnCount(); ++column) {
    view->setColumnWidth(column, Pixels(kColumnWidth));
  }
  return view;
}

QWidget* BuildTabPage(const ControlRow& row, QWidget* container) {
  auto* tabs = static_cast<QTabWidget*>(container);
  auto* page = new TabPage;
  tabs->addTab(page, row.caption);
  return page;
}

QWidget* BuildStatusBar(QWidget* container) {
  auto* bar = new QStatusBar(container);
  bar->setSizeGripEnabled(false);
  return bar;
}

QWidget* Build(const ControlRow& row, QWidget* container) {
  switch (row.kind) {
    case ControlKind::kLabel:
      return BuildLabel(row, container);
    case ControlKind::kTextBox:
      return BuildTextBox(row, container);
    case ControlKind::kCheckBox:
      return new QCheckBox(row.caption, container);
    case ControlKind::kButton:
      return BuildButton(row, container);
    case ControlKind::kColorButton:
      return BuildColorButton(row, container);
    case ControlKind::kListBox:
      return new QListWidget(container);
    case ControlKind::kListView:
      return BuildListView(row, container);
    case ControlKind::kFrame:
      return new Frame(row.caption, container);
    case ControlKind::kPanel:
      return BuildPanel(row, container);
    case ControlKind::kTabs:
      return new TabControl(container);
    case ControlKind::kTabPage:
      return BuildTabPage(row, container);
    case ControlKind::kPicture:
      return new Picture(row.caption, container);
    case ControlKind::kStatusBar:
      return BuildStatusBar(container);
    case ControlKind::kDropDown:
      return new QComboBox(container);
    case ControlKind::kFolderList:
      return new FolderList(container);
    case ControlKind::kLine:
      return BuildLine(container);
  }
  throw std::logic_error(std::string("A control of no kind: ") + row.name);
}

const FontSpec& UsualFont(ControlKind kind) {
  switch (kind) {
    case ControlKind::kButton:
      return kButtonFont;
    case ControlKind::kLabel:
    case ControlKind::kCheckBox:
    case ControlKind::kStatusBar:
      return kLabelFont;
    case ControlKind::kFrame:
      return kFrameTitleFont;
    case ControlKind::kColorButton:
      return kBoldFieldFont;
    default:
      return kFieldFont;
  }
}

bool IsField(ControlKind kind) {
  return kind == ControlKind::kTextBox || kind == ControlKind::kColorButton ||
         kind == ControlKind::kListBox || kind == ControlKind::kListView;
}

void SetColors(const ControlRow& row, QWidget& control) {
  if (row.ink == 0 && row.paper == 0) return;
  QPalette palette = control.palette();
  if (row.ink != 0) palette.setColor(QPalette::WindowText, QColor(row.ink));
  if (row.paper != 0) {
    palette.setColor(QPalette::Window, QColor(row.paper));
    control.setAutoFillBackground(true);
  }
  control.setPalette(palette);
}

/// A control is named for assistive tools by its row or, where it is a field, by the label before.
void SetAccessibleName(const ControlRow& row, QWidget& control, QLabel* labelBefore) {
  QString name = row.accessibleName;
  if (labelBefore != nullptr && IsField(row.kind)) {
    labelBefore->setBuddy(&control);
    if (name.isEmpty()) name = labelBefore->text().remove(':').trimmed();
  }
  if (!name.isEmpty()) control.setAccessibleName(name);
}

QWidget* ContainerOf(const ControlRow& row, QWidget& area) {
  if (*row.container == '\0') return &area;
  return &Control<QWidget>(area, row.container);
}

void SetPlace(const ControlRow& row, const QWidget& container, QWidget& control) {
  if (row.kind == ControlKind::kTabPage) return;
  QRect rect = PixelRect(row.place);
  // Pages begin below the strip; what lies on them is placed relative to the whole tab control.
  if (dynamic_cast<const TabPage*>(&container) != nullptr) {
    rect.translate(0, -TabControl::StripHeight());
  }
  control.setGeometry(rect);
}

/// Gives a window its size again whenever another screen has taken it.
class SizeHolder : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::WinIdChange)
      Follow(static_cast<QWidget*>(watched)->windowHandle());
    return false;
  }

 private:
  void Follow(QWindow* window) {
    if (window == nullptr) return;
    // Once the window has heard of its place there, too.
    connect(
        window, &QWindow::screenChanged, this, [window] { window->resize(window->minimumSize()); },
        Qt::QueuedConnection);
  }
};

}  // namespace

int Pixels(int twips) { return qRound(static_cast<double>(twips) / kTwipsPerPixel); }

QRect PixelRect(const Place& place) {
  return {QPoint(Pixels(place.left), Pixels(place.top)),
          QPoint(Pixels(place.left + place.width) - 1, Pixels(place.top + place.height) - 1)};
}

void BuildControls(QWidget& area, std::span<const ControlRow> rows) {
  QLabel* labelBefore = nullptr;
  for (const ControlRow& row : rows) {
    QWidget* container = ContainerOf(row, area);
    QWidget* control = Build(row, container);
    control->setObjectName(row.name);
    control->setFont(MakeFont(row.font != nullptr ? *row.font : UsualFont(row.kind)));
    control->setToolTip(row.tooltip);
    SetPlace(row, *container, *control);
    SetColors(row, *control);
    SetAccessibleName(row, *control, labelBefore);
    labelBefore = qobject_cast<QLabel*>(control);
  }
}

void BlockOwnerOnly(QDialog& dialog) {
  if (dialog.parentWidget() != nullptr) dialog.setWindowModality(Qt::WindowModal);
}

void GiveDialogFrame(QDialog& dialog) {
  BlockOwnerOnly(dialog);
  dialog.setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                        Qt::WindowCloseButtonHint);
}

void HoldSizeOnEveryScreen(QWidget& window) { window.installEventFilter(new SizeHolder(&window)); }

void BuildFixedDialog(QDialog& dialog, int width, int height, std::span<const ControlRow> rows) {
  GiveDialogFrame(dialog);
  HoldSizeOnEveryScreen(dialog);
  dialog.setFixedSize(Pixels(width), Pixels(height));
  BuildControls(dialog, rows);
}

}  // namespace ui
