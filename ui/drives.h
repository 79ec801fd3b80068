#pragma once

#include <QString>
#include <QStringList>

namespace ui {

/// The folders at which the machine's drives are found: the root folder first, then the mounted
/// volumes that a person would call a drive (disks, removable media, network shares), sorted.
QStringList Drives();

/// The one of `drives` that holds a folder, given by its full path: the longest that leads to it;
/// -1 when none does.
int DriveOf(const QStringList& drives, const QString& folder);

}  // namespace ui
