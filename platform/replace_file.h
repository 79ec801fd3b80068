#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>

#include "platform/descriptor.h"

namespace platform {

// Files are replaced all or nothing: whoever reads the file, and whatever kills this process, meets
// the whole old or the whole new content. The new content is first written beside the file, under
// the name ".FILE.unfinished-PROCESS-NUMBER", and locked (flock) until it has taken its place, so
// that what a killed process has left can be told from what another one is writing at the moment.
// Where the file system knows no locks, what is left stays.

/// Puts `bytes` in the place of a file of the user's. The new file keeps the permissions (and,
/// where the system allows it, the owner and the group) of the old one; a symbolic link stays a
/// link and its target is replaced. A missing file is created. The bytes are on the disk when it
/// returns, and what killed calls for the same file left is gone.
/// Fails with `permission_denied` on a file without any write permission, for root too, with
/// `file_too_large` beyond the limit on file sizes, and on what is no regular file; on failure the
/// old content stands and nothing is left beside it.
std::error_code ReplaceFile(const std::filesystem::path& path, std::string_view bytes);

/// Whether bytes have to be on the disk before they take the place of others.
enum class Flush { kNo, kYes };

/// Puts `bytes` in the place of a file that a program makes anew at any time: with the permissions
/// of any new file, and where a symbolic link stands, in its place.
std::error_code PutFile(const std::filesystem::path& path, std::string_view bytes, Flush flush);

/// Makes a folder ready for PutFile: takes away what killed calls left in it, and finds out whether
/// files can be made there, for the file system may refuse what the permissions allow.
std::error_code PrepareFolder(const std::filesystem::path& folder);

/// Keeps a folder for this process while it lives; it goes with the process, however that ends. A
/// process may lock a folder again that it has.
class FolderLock {
 public:
  /// `error`: `FileErrors::InUse` where another process has the folder; one that is set already is
  /// left as it is, and nothing is locked. A folder that cannot be locked counts as free.
  FolderLock(const std::filesystem::path& folder, std::error_code& error);

  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;
  ~FolderLock();

 private:
  Descriptor folder_;  // -1: not locked, or locked already
};

}  // namespace platform
