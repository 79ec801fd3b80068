#include "morvane/log/log_text.h"

#include "morvane/log/packed_log.h"

namespace morvane {

LogText::LogText(const std::filesystem::path& path, std::string& problem) {
  std::error_code error;
  file_ = MappedFile(path, error);
  problem = error ? error.message() : std::string();
  packed_ = morvane::IsPacked(file_.Bytes());
}

void LogText::Unpack(std::string& problem) {
  problem.clear();
  if (IsReady()) return;
  tried_ = true;
  unpacked_ = morvane::Unpack(file_, problem);
}

void LogText::Release(std::size_t begin, std::size_t end) const {
  (packed_ ? unpacked_ : file_).Release(begin, end);
}

}  // namespace morvane
