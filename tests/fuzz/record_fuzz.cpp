// Records of games as a damaged database may hold them: the first byte is the version, the parts
// are records. What can be read goes into statistics.

#include <string>

#include "morvane/store/database_error.h"
#include "morvane/store/game_record.h"
#include "tests/fuzz/game_checks.h"
#include "tests/fuzz/target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  if (size == 0) return 0;
  static const morvane::Vocabulary words = [] {
    morvane::Vocabulary made;
    for (const char* name : {"ROCKET", "ROCKET_SPLASH", "RAILGUN"}) made.weapons.Number(name);
    for (const char* name : {"item_quad", "weapon_railgun"}) made.items.Number(name);
    return made;
  }();
  const int version = bytes[0] % (morvane::kRecordVersion + 2);
  std::vector<morvane::Game> games;
  for (const std::string_view record : fuzz::Split(fuzz::Text(bytes + 1, size - 1), fuzz::kPart)) {
    try {
      games.push_back(
          morvane::UnpackGame(record, version, words.weapons.size(), words.items.size()));
    } catch (const morvane::DatabaseError&) {
      continue;
    }
  }
  fuzz::MakeStatistics(std::move(games), words);
  return 0;
}
