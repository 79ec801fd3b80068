#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace platform {

/// Whether a file stands at the path. Only regular files count: a folder, a pipe or a device of
/// that name is none. A symbolic link counts as what it points to.
bool FileExists(const std::filesystem::path& path);

/// Opens a regular file for reading and hands out its descriptor, which the caller closes. Anything
/// else (a folder, a pipe, a device) is not opened for longer than it takes to see what it is, and
/// nothing waits for it. On failure the result is -1 and `error` says why.
int OpenRegularFile(const std::filesystem::path& path, std::error_code& error);

/// Begins a regular file anew for writing, or makes it, and hands out its descriptor, which the
/// caller closes. Otherwise as above.
int CreateRegularFile(const std::filesystem::path& path, std::error_code& error);

/// The bytes of a regular file. On failure the result is empty and `error` says why (a folder and a
/// file that does not exist are failures too).
std::string ReadWholeFile(const std::filesystem::path& path, std::error_code& error);

/// Writes all of `bytes` to an open file descriptor, however many calls that takes. Beyond the
/// limit on file sizes it fails with `file_too_large`; the signal that comes with it is kept from
/// ending the program.
std::error_code WriteAll(int descriptor, std::string_view bytes);

/// Deletes one file. A file that does not exist is a failure; so is a folder.
std::error_code DeleteOneFile(const std::filesystem::path& path);

}  // namespace platform
