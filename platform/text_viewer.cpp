#include "platform/text_viewer.h"

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include "platform/glib_pointers.h"

namespace platform {

std::string OpenInTextViewer(const std::string& file) {
  const OwnedObject<GAppInfo> viewer(g_app_info_get_default_for_type("text/plain", FALSE));
  if (!viewer) return "No program for text files (text/plain) is installed.";
  const OwnedText uri(g_filename_to_uri(file.c_str(), nullptr, nullptr));
  if (!uri) return "The path of the file is no full path.";
  GList files = {uri.get(), nullptr, nullptr};
  const auto flags = static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_STDOUT_TO_DEV_NULL |
                                              G_SPAWN_STDERR_TO_DEV_NULL);
  GError* error = nullptr;
  g_desktop_app_info_launch_uris_as_manager(G_DESKTOP_APP_INFO(viewer.get()), &files, nullptr,
                                            flags, BeginSession, nullptr, nullptr, nullptr, &error);
  const OwnedError owned(error);
  if (!owned) return {};
  return std::string(g_app_info_get_name(viewer.get())) + ": " + owned->message;
}

}  // namespace platform
