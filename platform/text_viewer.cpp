#include "platform/text_viewer.h"

#include <dlfcn.h>
#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include "platform/glib_pointers.h"

namespace platform {
namespace {

/// What is used here of GIO. The library is loaded when a file is first opened and stays: with all
/// that it needs in turn, it would be a twentieth of the editor's start.
struct Gio {
  void* library = dlopen("libgio-2.0.so.0", RTLD_LAZY);

  template <class F>
  F* Find(const char* name) const {
    return reinterpret_cast<F*>(dlsym(library, name));
  }
  explicit operator bool() const { return library != nullptr; }
};

#define FUNCTION_OF(gio, name) (gio).Find<decltype(name)>(#name)

}  // namespace

std::string OpenInTextViewer(const std::string& file) {
  static const Gio gio;
  if (!gio) return dlerror();
  const auto unref = FUNCTION_OF(gio, g_object_unref);
  const std::unique_ptr<GAppInfo, decltype(unref)> viewer(
      FUNCTION_OF(gio, g_app_info_get_default_for_type)("text/plain", FALSE), unref);
  if (!viewer) return "No program for text files (text/plain) is installed.";
  const OwnedText uri(g_filename_to_uri(file.c_str(), nullptr, nullptr));
  if (!uri) return "The path of the file is no full path.";
  GList files = {uri.get(), nullptr, nullptr};
  const auto flags = static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_STDOUT_TO_DEV_NULL |
                                              G_SPAWN_STDERR_TO_DEV_NULL);
  GError* error = nullptr;
  // On POSIX systems every GAppInfo is a GDesktopAppInfo.
  FUNCTION_OF(gio, g_desktop_app_info_launch_uris_as_manager)
  (reinterpret_cast<GDesktopAppInfo*>(viewer.get()), &files, nullptr, flags, BeginSession, nullptr,
   nullptr, nullptr, &error);
  const OwnedError owned(error);
  if (!owned) return {};
  return std::string(FUNCTION_OF(gio, g_app_info_get_name)(viewer.get())) + ": " + owned->message;
}

}  // namespace platform
