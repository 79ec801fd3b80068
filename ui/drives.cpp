#include "ui/drives.h"

#include <algorithm>
#include <array>

#include <QFileInfo>
#include <QStorageInfo>

namespace ui {
namespace {

constexpr std::array kNetworkFileSystems = {"nfs", "nfs4", "cifs", "smb3", "fuse.sshfs", "9p"};

/// Systems mount much that is no drive: process tables, images of packages, single files.
bool IsDrive(const QStorageInfo& volume) {
  if (volume.isRoot() || !QFileInfo(volume.rootPath()).isDir()) return false;
  const QByteArray device = volume.device();
  const QByteArray kind = volume.fileSystemType();
  const bool disk = device.startsWith("/dev/") && kind != "squashfs";
  return disk || std::find(kNetworkFileSystems.begin(), kNetworkFileSystems.end(), kind) !=
                     kNetworkFileSystems.end();
}

bool Holds(const QString& drive, const QString& folder) {
  const QString prefix = drive.endsWith('/') ? drive : drive + '/';
  return folder == drive || folder.startsWith(prefix);
}

}  // namespace

QStringList Drives() {
  QStringList drives;
  for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
    if (IsDrive(volume)) drives.append(volume.rootPath());
  }
  drives.sort();
  drives.removeDuplicates();
  drives.prepend("/");
  return drives;
}

int DriveOf(const QStringList& drives, const QString& folder) {
  int best = -1;
  for (int i = 0; i < drives.size(); ++i) {
    const bool longer = best < 0 || drives[i].size() > drives[best].size();
    if (longer && Holds(drives[i], folder)) best = i;
  }
  return best;
}

}  // namespace ui
