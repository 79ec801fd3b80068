#include "morvane/log/packed_log.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <unistd.h>
#include <vector>

#define ZLIB_CONST
#include <zlib.h>

#include "platform/descriptor.h"
#include "platform/files.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kMagic = "\x1F\x8B";
constexpr int kGzip = 16 + MAX_WBITS;  // asks zlib for gzip's header and trailer
constexpr std::size_t kBlock = std::size_t{256} << 10;
constexpr std::size_t kReleaseEvery = std::size_t{8} << 20;

/// A file without a name, open for reading and writing.
platform::Descriptor OpenNameless(std::error_code& error) {
  const fs::path folder = fs::temp_directory_path(error);
  if (error) return platform::Descriptor();
  int descriptor = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
  if (descriptor < 0) {  // not every file system can
    std::string pattern = (folder / "morvane.XXXXXX").string();
    descriptor = mkostemp(pattern.data(), O_CLOEXEC);
    if (descriptor >= 0) unlink(pattern.c_str());
  }
  if (descriptor < 0) error = platform::LastError();
  return platform::Descriptor(descriptor);
}

/// Unpacks members into a file.
class Unpacker {
 public:
  Unpacker(const MappedFile& packed, int target, std::uint64_t most)
      : packed_(packed), rest_(packed.Bytes()), target_(target), most_(most), block_(kBlock) {
    usable_ = inflateInit2(&stream_, kGzip) == Z_OK;
  }
  Unpacker(const Unpacker&) = delete;
  Unpacker& operator=(const Unpacker&) = delete;
  ~Unpacker() { inflateEnd(&stream_); }

  /// Unpacks everything; why that failed, or nothing.
  std::string Run() {
    if (!usable_) return "zlib cannot be used";
    while (true) {
      int state = Z_OK;
      if (std::string problem = Step(state); !problem.empty()) return problem;
      if (state != Z_STREAM_END) continue;
      if (!IsPacked(rest_)) break;
      inflateReset(&stream_);
    }
    // Some tapes and tools fill the last block up.
    const bool isPadding = std::all_of(rest_.begin(), rest_.end(), [](char c) { return c == 0; });
    return isPadding ? std::string()
                     : "it is packed and damaged: something else follows the packed text";
  }

 private:
  /// Unpacks a block.
  std::string Step(int& state) {
    const std::size_t given = std::min(rest_.size(), kReleaseEvery);
    stream_.next_in = reinterpret_cast<const Bytef*>(rest_.data());
    stream_.avail_in = static_cast<uInt>(given);
    stream_.next_out = block_.data();
    stream_.avail_out = static_cast<uInt>(block_.size());
    state = inflate(&stream_, Z_NO_FLUSH);
    if (state == Z_MEM_ERROR) throw std::bad_alloc();
    const std::size_t made = block_.size() - stream_.avail_out;
    rest_.remove_prefix(given - stream_.avail_in);
    if (state == Z_BUF_ERROR) return "it is packed and its end is missing";
    if (state != Z_OK && state != Z_STREAM_END) return "it is packed and damaged: " + Complaint();
    Release();
    return Put(made);
  }

  std::string Complaint() const {
    return stream_.msg != nullptr ? stream_.msg : "not packed by gzip";
  }

  std::string Put(std::size_t size) {
    size_ += size;
    if (size_ > most_) {
      return "it is packed and would unpack to more than " + std::to_string(most_ >> 20) +
             " MB; unpack it by hand if that is right";
    }
    const std::error_code error =
        platform::WriteAll(target_, {reinterpret_cast<const char*>(block_.data()), size});
    return error ? "it cannot be unpacked into the folder for temporary files: " + error.message()
                 : std::string();
  }

  /// Gives back the memory of what was unpacked.
  void Release() {
    const std::size_t done = packed_.Bytes().size() - rest_.size();
    if (done - released_ < kReleaseEvery) return;
    packed_.Release(released_, done);
    released_ = done;
  }

  const MappedFile& packed_;
  std::string_view rest_;
  int target_;
  std::uint64_t most_;
  std::vector<Bytef> block_;
  z_stream stream_ = {};
  bool usable_ = false;
  std::uint64_t size_ = 0;
  std::size_t released_ = 0;
};

}  // namespace

bool IsPacked(std::string_view bytes) { return bytes.starts_with(kMagic); }

MappedFile Unpack(const MappedFile& packed, std::string& problem, std::uint64_t most) {
  std::error_code error;
  const platform::Descriptor target = OpenNameless(error);
  if (error) {
    problem = "it cannot be unpacked into the folder for temporary files: " + error.message();
    return {};
  }
  problem = Unpacker(packed, target.Get(), most).Run();
  if (!problem.empty()) return {};
  MappedFile unpacked(target.Get(), error);
  if (error) problem = error.message();
  return unpacked;
}

}  // namespace morvane
