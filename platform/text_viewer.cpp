// Without Qt's headers: their keywords and GLib's field names clash.
#include "platform/text_viewer.h"

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>
#include <memory>
#include <string_view>

namespace platform {
namespace {

template <class T, auto kFree>
struct FreeWith {
  void operator()(T* pointer) const { kFree(pointer); }
};
using GObjectPointer = std::unique_ptr<void, FreeWith<void, g_object_unref>>;
using OwnedText = std::unique_ptr<char, FreeWith<void, g_free>>;

std::string TextOf(const char* text) { return text != nullptr ? text : ""; }

/// The words of an Exec line; none when its quotes do not match.
std::vector<std::string> SplitExecLine(const std::string& line) {
  int count = 0;
  char** words = nullptr;
  if (g_shell_parse_argv(line.c_str(), &count, &words, nullptr) == FALSE) return {};
  std::vector<std::string> result(words, words + count);
  g_strfreev(words);
  return result;
}

std::string UriOf(const std::string& file) {
  const OwnedText uri(g_filename_to_uri(file.c_str(), nullptr, nullptr));
  return uri ? uri.get() : file;
}

/// Fills in the field codes of the words of an Exec line.
class FieldCodes {
 public:
  FieldCodes(const DesktopApplication& application, const std::string& file)
      : application_(application), file_(file) {}

  void Append(const std::string& word, std::vector<std::string>& arguments) {
    if (word == "%i") {
      if (application_.icon.empty()) return;
      arguments.emplace_back("--icon");
      arguments.push_back(application_.icon);
      return;
    }
    std::string argument = Expand(word);
    // A code that stands for nothing leaves no empty argument behind.
    if (!argument.empty() || word.empty()) arguments.push_back(std::move(argument));
  }
  bool NamedFile() const { return namedFile_; }

 private:
  std::string Expand(std::string_view word) {
    std::string argument;
    for (std::size_t at = 0; at < word.size(); ++at) {
      if (word[at] == '%' && at + 1 < word.size()) {
        argument += ValueOf(word[++at]);
      } else {
        argument += word[at];
      }
    }
    return argument;
  }

  std::string ValueOf(char code) {
    switch (code) {
      case 'f':
      case 'F':
        namedFile_ = true;
        return file_;
      case 'u':
      case 'U':
        namedFile_ = true;
        return UriOf(file_);
      case 'c':
        return application_.name;
      case 'k':
        return application_.entryFile;
      case '%':
        return "%";
      default:  // codes that are no longer in use stand for nothing
        return {};
    }
  }

  const DesktopApplication& application_;
  const std::string& file_;
  bool namedFile_ = false;
};

}  // namespace

std::vector<std::string> ArgumentsToOpen(const DesktopApplication& application,
                                         const std::string& file) {
  const std::vector<std::string> words = SplitExecLine(application.command);
  if (words.empty()) return {};
  std::vector<std::string> arguments;
  if (application.runsInTerminal) arguments = {"x-terminal-emulator", "-e"};
  FieldCodes codes(application, file);
  for (const std::string& word : words) codes.Append(word, arguments);
  if (!codes.NamedFile()) arguments.push_back(file);
  return arguments;
}

std::optional<DesktopApplication> TextViewer() {
  const GObjectPointer info(g_app_info_get_default_for_type("text/plain", FALSE));
  if (!info || !G_IS_DESKTOP_APP_INFO(info.get())) return std::nullopt;
  GAppInfo* application = G_APP_INFO(info.get());
  GDesktopAppInfo* entry = G_DESKTOP_APP_INFO(info.get());
  const OwnedText icon(g_desktop_app_info_get_string(entry, "Icon"));
  return DesktopApplication{TextOf(g_app_info_get_commandline(application)),
                            TextOf(g_app_info_get_name(application)), TextOf(icon.get()),
                            TextOf(g_desktop_app_info_get_filename(entry)),
                            g_desktop_app_info_get_boolean(entry, "Terminal") != FALSE};
}

}  // namespace platform
