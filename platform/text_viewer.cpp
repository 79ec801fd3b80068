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
struct Gio {
  void* library = dlopen("libgio-2.0.so.0", RTLD_LAZY);
  decltype(&g_app_info_get_default_for_type) getDefaultForType = nullptr;
  decltype(&g_app_info_get_name) getName = nullptr;
  decltype(&g_desktop_app_info_launch_uris_as_manager) launch = nullptr;
  decltype(&g_object_unref) unref = nullptr;

  Gio() {
    if (library == nullptr) return;
    Find("g_app_info_get_default_for_type", getDefaultForType);
    Find("g_app_info_get_name", getName);
    Find("g_desktop_app_info_launch_uris_as_manager", launch);
    Find("g_object_unref", unref);
  }

 private:
  template <class Function>
  void Find(const char* name, Function& function) const {
    function = reinterpret_cast<Function>(dlsym(library, name));
  }
};

}  // namespace

std::string OpenInTextViewer(const std::string& file) {
  static const Gio gio;
  if (gio.library == nullptr) return "GIO (libgio-2.0.so.0) cannot be loaded.";
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
