#pragma once

// For sources of this folder only: no header of GLib reaches another folder.

#include <glib.h>
#include <memory>

namespace platform {

template <auto kFree>
struct FreeWith {
  void operator()(auto* pointer) const { kFree(pointer); }
};

using OwnedText = std::unique_ptr<char, FreeWith<g_free>>;
using OwnedError = std::unique_ptr<GError, FreeWith<g_error_free>>;

/// A setup of a child process: puts it into a session of its own.
void BeginSession(void* unused);

}  // namespace platform
