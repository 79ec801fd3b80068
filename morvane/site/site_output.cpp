#include "morvane/site/site_output.h"

#include <system_error>

#include "platform/files.h"
#include "text/text.h"

namespace morvane {

namespace fs = std::filesystem;

void SiteOutput::Write(const std::string& name, std::string_view content,
                       const Digest128& fingerprint) {
  if (Claim(name)) {
    Tell(name, folder_.Write(name, content, fingerprint));
  } else {
    Fail("two pages have the name " + name + "; one of them was left out");
  }
}

void SiteOutput::WriteOwn(const std::string& name, std::string_view content,
                          const Digest128& fingerprint) {
  if (ClaimOwn(name)) Tell(name, folder_.Write(name, content, fingerprint));
}

bool SiteOutput::ClaimOwn(const std::string& name) {
  if (!Claim(name)) return false;
  std::error_code error;
  const bool isForeign = folder_.HoldsForeign(name, error);
  if (!error && !isForeign) return true;
  Tell(name, error);
  if (error) return false;
  report_.Normal(Log::kMain, "this file is not the engine's; it stays as it is",
                 (folder_.Path() / name).string());
  return false;
}

void SiteOutput::Copy(const fs::path& source, const std::string& name) {
  std::error_code error;
  if (fs::equivalent(source, folder_.Path() / name, error)) return;
  const std::string content = platform::ReadWholeFile(source, error);
  if (error) {
    Fail(source.string() + " cannot be read: " + error.message());
    const std::lock_guard lock(mutex_);
    lacking_.insert(name);
  } else {
    Write(name, content);
  }
}

void SiteOutput::Finish(const std::function<bool(const std::string& name)>& keep,
                        const PageList::Remarks& remarks) {
  const auto keepAlso = [&](const std::string& name) {
    return lacking_.contains(name) || keep(name);
  };
  TellUnwritten();
  if (const std::error_code error = folder_.Finish(keepAlso, remarks)) {
    ++failed_;
    Fail("the pages of earlier runs in " + folder_.Path().string() +
         " cannot be taken away or listed: " + error.message());
  }
}

bool SiteOutput::Stands(const std::string& name, const Digest128& fingerprint) {
  {
    const std::lock_guard lock(mutex_);
    if (names_.contains(text::FoldCase(name))) return false;
  }
  return folder_.Stands(name, fingerprint) && Claim(name);
}

bool SiteOutput::Claim(const std::string& name) {
  const std::lock_guard lock(mutex_);
  return names_.insert(text::FoldCase(name)).second;
}

void SiteOutput::Tell(const std::string& name, const std::error_code& error) {
  if (!error) return;
  const std::lock_guard lock(mutex_);
  Unwritten& unwritten = unwritten_[error.message()];
  if (unwritten.count++ == 0) unwritten.first = (folder_.Path() / name).string();
  lacking_.insert(name);
  ++failed_;
}

void SiteOutput::Fail(const std::string& text) { report_.Severe(Log::kMain, text); }

void SiteOutput::TellUnwritten() {
  for (const auto& [reason, unwritten] : unwritten_) {
    const std::string others =
        unwritten.count == 2 ? "; nor can 1 other file"
                             : "; nor can " + std::to_string(unwritten.count - 1) + " other files";
    report_.Severe(Log::kMain, "cannot be written: " + reason + (unwritten.count > 1 ? others : ""),
                   unwritten.first);
  }
}

}  // namespace morvane
