#include "editor/frmBrowseFolders.h"

#include <QComboBox>
#include <QPushButton>

#include "ui/controls.h"
#include "ui/drives.h"
#include "ui/failure.h"
#include "ui/folder_list.h"
#include "ui/layout.h"

namespace editor {
namespace {

using ui::Control;
using ui::ControlKind;
using ui::ControlRow;

constexpr int kWidth = 3525;
constexpr int kHeight = 3285;

constexpr ControlRow kRows[] = {
    ControlRow{ControlKind::kFolderList, "Folders", "", {120, 120, 3255, 2115}}.Named("Folders"),
    ControlRow{ControlKind::kDropDown, "Drives", "", {120, 2280, 3255, 315}}.Named("Drives"),
    {ControlKind::kButton, "cmdOK", "", {2400, 2760, 975, 375}, "OK"},
    {ControlKind::kButton, "cmdCancel", "", {1320, 2760, 975, 375}, "Cancel"},
};

}  // namespace

frmBrowseFolders::frmBrowseFolders(QWidget& owner, ui::Desktop& desktop, const QStringList& drives,
                                   const QString& start)
    : QDialog(&owner), desktop_(desktop), drives_(drives), selectedFolder_(start) {
  setObjectName("frmBrowseFolders");
  setWindowTitle("Select A Directory");
  ui::BuildFixedDialog(*this, kWidth, kHeight, kRows);

  auto& ok = Control<QPushButton>(*this, "cmdOK");
  ok.setDefault(true);
  connect(&ok, &QPushButton::clicked, this, &frmBrowseFolders::cmdOK_Click);
  connect(&Control<QPushButton>(*this, "cmdCancel"), &QPushButton::clicked, this,
          &frmBrowseFolders::cmdCancel_Click);

  auto& list = Control<QComboBox>(*this, "Drives");
  list.addItems(drives_);
  connect(&list, &QComboBox::activated, this, &frmBrowseFolders::Drives_Change);
  Control<ui::FolderList>(*this, "Folders").OnOpen([this](const QString& folder) {
    OpenFolder(folder);
  });
  Control<QWidget>(*this, "Folders").setFocus();
  OpenStart();
}

void frmBrowseFolders::cmdOK_Click() {
  selectedFolder_ = Control<ui::FolderList>(*this, "Folders").Path();
  accept();
}

void frmBrowseFolders::Drives_Change() {
  const QString drive = Control<QComboBox>(*this, "Drives").currentText();
  if (const auto error = Control<ui::FolderList>(*this, "Folders").SetPath(drive)) {
    desktop_.ShowMessage(this, QString::fromStdString(error.message()), ui::MessageStyle::kCritical,
                         "Drive Error");
  }
  ShowDrive();
}

void frmBrowseFolders::OpenStart() {
  auto& folders = Control<ui::FolderList>(*this, "Folders");
  if (folders.SetPath(selectedFolder_)) folders.SetPath(".");
  ShowDrive();
}

void frmBrowseFolders::OpenFolder(const QString& folder) {
  if (const auto error = Control<ui::FolderList>(*this, "Folders").SetPath(folder)) {
    ui::TellFailure(desktop_, this,
                    {.what = "This folder could not be opened:",
                     .path = folder.toStdString(),
                     .reason = error.message(),
                     .title = windowTitle().toStdString()});
  }
  ShowDrive();
}

void frmBrowseFolders::ShowDrive() {
  const QString folder = Control<ui::FolderList>(*this, "Folders").Path();
  Control<QComboBox>(*this, "Drives").setCurrentIndex(ui::DriveOf(drives_, folder));
}

}  // namespace editor
