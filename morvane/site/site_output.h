#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <system_error>
#include <unordered_set>

#include "morvane/report/report.h"
#include "morvane/site/page_folder.h"

namespace morvane {

/// Puts files into an output folder and tells what fails. May be used from several threads.
class SiteOutput {
 public:
  /// Both arguments must outlive the output.
  SiteOutput(PageFolder& folder, Report& report) : folder_(folder), report_(report) {}

  /// Two pages never share a file, also where the file system does not tell A from a.
  /// `fingerprint`: see PageFolder::Write.
  void Write(const std::string& name, std::string_view content, const Digest128& fingerprint = {});
  /// Whether a page need not be made, see PageFolder::Stands.
  bool Stands(const std::string& name, const Digest128& fingerprint);
  /// Writes what no template asked for: not in the place of a page, and not of a file that the
  /// engine did not write.
  void WriteOwn(const std::string& name, std::string_view content, const Digest128& fingerprint);
  /// Writes a file of another folder under its name. One of this very folder stays as it is.
  void Copy(const std::filesystem::path& source, const std::string& name);

  /// Tells what could not be written, each reason once: a full disk fails thousands of pages. Then
  /// takes away what earlier runs wrote and this one did not, see PageFolder::Finish; what could
  /// not be copied stays. To be called once, at the end. `remarks`: for the list.
  void Finish(const std::function<bool(const std::string& name)>& keep,
              const PageList::Remarks& remarks = {});

  const PageFolder& Folder() const { return folder_; }
  /// How many files could not be written.
  std::size_t Failed() const { return failed_; }

 private:
  struct Unwritten {
    std::string first;
    std::size_t count = 0;
  };

  bool Claim(const std::string& name);
  bool ClaimOwn(const std::string& name);
  void Tell(const std::string& name, const std::error_code& error);
  void Fail(const std::string& text);
  void TellUnwritten();

  PageFolder& folder_;
  Report& report_;
  std::mutex mutex_;
  std::unordered_set<std::string> names_;       // in lower case
  std::unordered_set<std::string> lacking_;     // could not be read or written
  std::map<std::string, Unwritten> unwritten_;  // by reason
  std::size_t failed_ = 0;
};

}  // namespace morvane
