#pragma once

#include <string>

namespace platform {

/// Opens a file, given by its full path, in the desktop's application for plain text, as the
/// application's desktop entry asks for it. The application lives on its own, as in
/// StartDetachedProcess. The result is empty, or says why it could not be started.
std::string OpenInTextViewer(const std::string& file);

}  // namespace platform
