#include "platform/text_viewer.h"

#include <dlfcn.h>
#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include "platform/glib_pointers.h"

namespace platform {
namespace {

/// The functions of GIO that are used here. The library is loaded when a file is first opened, and
/// stays: with all that it needs in turn, it would be 4 % of the memory that the editor starts
/// with.
class Gio {
  void* library_ = dlopen("libgio-2.0.so.0", RTLD_LAZY);

  template <class Function>
  Function* Find(const char* name) const {
    return library_ != nullptr ? reinterpret_cast<Function*>(dlsym(library_, name)) : nullptr;
  }

 public:
  bool IsThere() const { return library_ != nullptr; }

  decltype(g_app_info_get_default_for_type)* const getDefaultForType =
      Find<decltype(g_app_info_get_default_for_type)>("g_app_info_get_default_for_type");
  decltype(g_app_info_get_name)* const getName =
      Find<decltype(g_app_info_get_name)>("g_app_info_get_name");
  decltype(g_desktop_app_info_launch_uris_as_manager)* const launch =
      Find<decltype(g_desktop_app_info_launch_uris_as_manager)>(
          "g_desktop_app_info_launch_uris_as_manager");
  decltype(g_object_unref)* const unref = Find<decltype(g_object_unref)>("g_object_unref");
};

}  // namespace

std::string OpenInTextViewer(const std::string& file) {
  static const Gio gio;
  if (!gio.IsThere()) return "GIO (libgio-2.0.so.0) cannot be loaded.";
  const std::unique_ptr<GAppInfo, decltype(gio.unref)> viewer(
      gio.getDefaultForType("text/plain", FALSE), gio.unref);
  if (!viewer) return "No program for text files (text/plain) is installed.";
  const OwnedText uri(g_filename_to_uri(file.c_str(), nullptr, nullptr));
  if (!uri) return "The path of the file is no full path.";
  GList files = {uri.get(), nullptr, nullptr};
  const auto flags = static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_STDOUT_TO_DEV_NULL |
                                              G_SPAWN_STDERR_TO_DEV_NULL);
  GError* error = nullptr;
  // On POSIX systems every GAppInfo is a GDesktopAppInfo.
  gio.launch(reinterpret_cast<GDesktopAppInfo*>(viewer.get()), &files, nullptr, flags, BeginSession,
             nullptr, nullptr, nullptr, &error);
  const OwnedError owned(error);
  if (!owned) return {};
  return std::string(gio.getName(viewer.get())) + ": " + owned->message;
}

}  // namespace platform
