#include "morvane/site/stats_file.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

#include "platform/threads.h"

namespace morvane {
namespace {

constexpr std::size_t kTogether = 16;  // pieces that are held at the same time

/// Where a piece lies in the file.
struct Place {
  std::size_t begin = 0;
  std::size_t size = 0;
};

/// The pieces of the file that the last run wrote.
class EarlierFile {
 public:
  explicit EarlierFile(const PageFolder& folder) {
    const auto remark = folder.Remarked().find(kStatsJson);
    if (remark == folder.Remarked().end()) return;
    Fingerprint all;
    ReadPlaces(remark->second, all);
    file_ = folder.OpenAsWritten(kStatsJson, all.Value());
  }
  EarlierFile(const EarlierFile&) = delete;
  EarlierFile& operator=(const EarlierFile&) = delete;
  ~EarlierFile() {
    if (file_ >= 0) close(file_);
  }

  /// The place of a piece of this fingerprint; nullptr where there is none.
  const Place* Find(const Digest128& fingerprint) const {
    const auto place = places_.find(fingerprint);
    return file_ < 0 || place == places_.end() ? nullptr : &place->second;
  }

  /// The bytes of a piece; false where they cannot be read.
  bool Read(const Place& place, std::string& bytes) const {
    bytes.resize(place.size);
    for (std::size_t done = 0; done < place.size;) {
      const ssize_t count = pread(file_, bytes.data() + done, place.size - done,
                                  static_cast<off_t>(place.begin + done));
      if (count <= 0) return false;
      done += static_cast<std::size_t>(count);
    }
    return true;
  }

 private:
  /// A fingerprint and a size for each piece, in order. `all`: of the file made of them.
  void ReadPlaces(std::string_view text, Fingerprint& all) {
    std::size_t begin = 0;
    while (!text.empty()) {
      const std::string_view field = text.substr(0, text.find(' '));
      text.remove_prefix(std::min(field.size() + 1, text.size()));
      const std::size_t colon = std::min(field.find(':'), field.size() - 1);
      Place place{begin, 0};
      std::from_chars(field.data() + colon + 1, field.data() + field.size(), place.size);
      begin += place.size;
      const Digest128 print = DigestFromText(field.substr(0, colon));
      places_[print] = place;
      all.Add(print);
    }
  }

  std::map<Digest128, Place> places_;
  int file_ = -1;
};

std::vector<Digest128> FingerprintsOf(const StatsJson& json, const Digest128& base) {
  std::vector<Digest128> prints(json.Pieces());
  platform::ForEachOnThreads(prints.size(), 0, [&](std::size_t piece) {
    prints[piece] = Fingerprint().Add(base).Add(json.FingerprintOf(piece)).Value();
  });
  return prints;
}

/// Hands out all pieces in order, some of them made at the same time; the result is what to remark.
std::string PutPieces(const StatsJson& json, const std::vector<Digest128>& prints,
                      const EarlierFile& earlier, const platform::Sink& put) {
  std::string remark;
  for (std::size_t first = 0; first < prints.size(); first += kTogether) {
    std::vector<std::string> texts(std::min(kTogether, prints.size() - first));
    platform::ForEachOnThreads(texts.size(), 0, [&](std::size_t i) {
      const Place* const place = earlier.Find(prints[first + i]);
      const bool isThere = place != nullptr && earlier.Read(*place, texts[i]);
      if (!isThere) texts[i] = json.TextOf(first + i);
    });
    for (std::size_t i = 0; i < texts.size(); ++i) {
      put(texts[i]);
      remark += (remark.empty() ? "" : " ") + TextOf(prints[first + i]) + ":" +
                std::to_string(texts[i].size());
    }
  }
  return remark;
}

}  // namespace

void WriteStatsJson(const StatsJson& json, const Digest128& base, SiteOutput& output,
                    PageList::Remarks& remarks) {
  const std::vector<Digest128> prints = FingerprintsOf(json, base);
  Fingerprint all;
  for (const Digest128& print : prints) all.Add(print);
  const auto earlier = output.Folder().Remarked().find(kStatsJson);
  if (earlier != output.Folder().Remarked().end() && output.Stands(kStatsJson, all.Value())) {
    remarks[kStatsJson] = earlier->second;
    return;
  }
  std::string remark;
  const auto make = [&](const platform::Sink& put) {
    remark = PutPieces(json, prints, EarlierFile(output.Folder()), put);
  };
  if (output.WriteOwnInPieces(kStatsJson, make, all.Value())) remarks[kStatsJson] = remark;
}

}  // namespace morvane
