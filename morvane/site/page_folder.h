#pragma once

#include <atomic>
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include "morvane/site/inputs.h"

namespace morvane {

/// The folder of the pages. A page appears whole or not at all, and one whose content is already
/// there is left alone. May be used from several threads, each with pages of its own.
class PageFolder {
 public:
  /// Creates the folder where it is missing and takes away what an interrupted run left.
  /// `error` says why the folder cannot be used. `inputs`, which must outlive this, are no pages.
  PageFolder(std::filesystem::path folder, const Inputs& inputs, std::error_code& error);

  /// Puts a page in place, by way of a temporary file beside it. `name`: a file name. In the place
  /// of an input nothing is put, see IsAnInput.
  std::error_code Write(const std::string& name, std::string_view content);

  const std::filesystem::path& Path() const { return folder_; }
  /// Pages written, and pages found as they should be.
  std::size_t Written() const { return written_; }
  std::size_t Unchanged() const { return unchanged_; }

 private:
  std::filesystem::path folder_;
  std::filesystem::path canonical_;
  const Inputs& inputs_;
  std::atomic<std::size_t> written_ = 0;
  std::atomic<std::size_t> unchanged_ = 0;
};

}  // namespace morvane
