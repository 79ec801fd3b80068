#include "morvane/messages.h"

#include <chrono>
#include <ctime>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "config/file_names.h"
#include "platform/files.h"
#include "text/characters.h"

namespace morvane {
namespace {

constexpr std::array<const char*, 4> kFileNames = {
    config::kMainLog, config::kLogParserLog, config::kTemplateParserLog, config::kCustomRankLog};
constexpr double kQuietSeconds = 1;
constexpr double kSecondsBetween = 0.1;

double Now() {
  using Clock = std::chrono::steady_clock;
  return std::chrono::duration<double>(Clock::now().time_since_epoch()).count();
}

std::string TimeText() {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  localtime_r(&now, &parts);
  std::array<char, 32> text{};
  std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &parts);
  return text.data();
}

/// The bytes of a control character at the start of a UTF-8 text: 0x00-0x1F, 0x7F, U+0080-U+009F,
/// and the marks that turn the direction of writing; 0 for anything else.
std::size_t ControlLength(std::string_view text) {
  const auto byte = [&](std::size_t i) {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
  };
  if (byte(0) < 0x20 || byte(0) == 0x7F) return 1;
  if (byte(0) == 0xC2 && byte(1) >= 0x80 && byte(1) < 0xA0) return 2;
  const bool turns = byte(0) == 0xE2 && ((byte(1) == 0x80 && byte(2) >= 0xA8 && byte(2) <= 0xAE) ||
                                         (byte(1) == 0x81 && byte(2) >= 0xA6 && byte(2) <= 0xA9));
  return turns ? 3 : 0;
}

/// A text that does nothing to a terminal and stays on its line.
std::string Harmless(std::string_view bytes) {
  const std::string decoded = text::DecodeText(bytes);
  std::string_view rest = decoded;
  std::string text;
  while (!rest.empty()) {
    const std::size_t control = ControlLength(rest);
    text += control > 0 ? '?' : rest[0];
    rest.remove_prefix(control > 0 ? control : 1);
  }
  return text;
}

std::string LineOf(const Message& message) {
  std::string line = TimeText() + (message.severe ? " severe " : " normal ");
  if (!message.file.empty()) {
    line += Harmless(message.file);
    if (message.line > 0) line += ":" + std::to_string(message.line);
    line += ": ";
  }
  return line + Harmless(message.text) + "\n";
}

/// A screen that is gone is nothing to stop for.
void PutOnScreen(int descriptor, const std::string& text) {
  [[maybe_unused]] const std::error_code ignored = platform::WriteAll(descriptor, text);
}

}  // namespace

std::vector<std::string> Messages::Files(const std::string& directory) {
  std::vector<std::string> paths;
  paths.reserve(std::size(kFileNames));
  for (const char* name : kFileNames) paths.push_back(directory + "/" + name);
  return paths;
}

Messages::Messages(const std::string& directory, const std::array<int, 4>& options)
    : options_(options), start_(Now()) {
  const std::vector<std::string> paths = Files(directory);
  for (std::size_t log = 0; log < files_.size(); ++log) {
    std::error_code error;
    files_[log] = {paths[log], platform::CreateRegularFile(paths[log], error)};
    if (error) GiveUp(files_[log], error.message());
  }
}

Messages::~Messages() {
  ClearProgress();
  for (const File& file : files_) {
    if (file.descriptor >= 0) close(file.descriptor);
  }
}

bool Messages::PutIntoFile(File& file, const std::string& line) {
  if (file.descriptor < 0) return false;
  const std::error_code error = platform::WriteAll(file.descriptor, line);
  if (error) GiveUp(file, error.message());
  return !error;
}

void Messages::GiveUp(File& file, const std::string& reason) {
  if (file.descriptor >= 0) close(file.descriptor);
  file.descriptor = -1;
  ClearProgress();
  PutOnScreen(STDERR_FILENO, LineOf({Log::kMain, true, "cannot be written: " + reason, file.path}));
}

void Messages::Write(const Message& message) {
  const std::lock_guard lock(mutex_);
  const auto log = static_cast<std::size_t>(message.log);
  const std::string line = LineOf(message);
  const int options = options_[log];
  bool onScreen = (options & (message.severe ? kSevereScreen : kNormalScreen)) != 0;
  const bool inFile = (options & (message.severe ? kSevereFile : kNormalFile)) != 0;
  if (inFile && !PutIntoFile(files_[log], line)) onScreen = onScreen || message.severe;
  if (!onScreen) return;
  ClearProgress();
  PutOnScreen(message.severe ? STDERR_FILENO : STDOUT_FILENO, line);
}

void Messages::Progress(std::string_view what, std::size_t done, std::size_t all) {
  const std::lock_guard lock(mutex_);
  const bool wanted = (options_[static_cast<std::size_t>(Log::kMain)] & kNormalScreen) != 0;
  const double now = Now();
  if (!wanted || all == 0 || now - start_ < kQuietSeconds || now - shown_ < kSecondsBetween ||
      isatty(STDOUT_FILENO) == 0) {
    return;
  }
  shown_ = now;
  progressOn_ = true;
  const auto percent =
      static_cast<int>(100.0 * static_cast<double>(done) / static_cast<double>(all));
  PutOnScreen(STDOUT_FILENO, "\r\033[K" + Harmless(what) + " " + std::to_string(percent) + "%");
}

void Messages::ClearProgress() {
  if (!progressOn_) return;
  PutOnScreen(STDOUT_FILENO, "\r\033[K");
  progressOn_ = false;
}

}  // namespace morvane
