#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace platform {

/// The folder that holds the running executable, in the system's notation, without a trailing
/// separator (the root folder excepted). Falls back to the current folder when the system cannot
/// tell.
std::string ProgramDirectory();

/// The path that a text of the settings names on the file system. "\" and "/" both separate
/// folders; the text itself is never changed by this, only its use.
std::filesystem::path SystemPath(std::string_view text);

/// Whether a text names more than a bare file name, that is, holds a separator of either notation.
bool HasSeparator(std::string_view text);

/// The part of a path text after its last separator of either notation; the whole text when there
/// is none, empty when the text ends in a separator.
std::string_view FileNamePart(std::string_view text);

}  // namespace platform
