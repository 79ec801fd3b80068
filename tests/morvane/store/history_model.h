#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "morvane/log/log_parser.h"
#include "morvane/statistics/figures.h"
#include "morvane/store/game_record.h"

// What random histories of logs are made of.
namespace morvane {

using Random = std::mt19937;

inline std::size_t Pick(Random& random, std::size_t below) {
  return below == 0 ? 0 : random() % below;
}

inline bool Chance(Random& random, unsigned percent) { return random() % 100 < percent; }

/// Plays one server's games, one line after the other.
class Play {
 public:
  Play(Random& random, std::string name) : random_(random), name_(std::move(name)) {
    timed_ = !Chance(random, 20);
  }

  std::string Game() {
    seconds_ = 0;
    const int type = Chance(random_, 15) ? 3 : 0;
    std::string text = Line(std::string(60, '-'));
    text += Line("InitGame: \\g_gametype\\" + std::to_string(type) + "\\mapname\\q3dm" +
                 std::to_string(Pick(random_, 3)));
    const std::size_t players = Pick(random_, 3) + 1;
    for (std::size_t slot = 0; slot < players; ++slot) text += Enter(slot);
    for (std::size_t kills = Kills(); kills > 0; --kills) text += Event(players);
    if (Chance(random_, 50)) {
      text += Line("Exit: Fraglimit hit.");
      if (players > 1) text += Line("score: 7  ping: 1  client: 1 x");
    }
    if (Chance(random_, 80)) {
      text += Line("ShutdownGame:");
      text += Line(std::string(60, '-'));
    }
    return text;
  }

 private:
  std::size_t Kills() {
    if (Chance(random_, 35)) return Pick(random_, 3);
    return timed_ ? 3 + Pick(random_, 6) : 40 + Pick(random_, 10);
  }
  std::string Line(const std::string& text) {
    if (!timed_) return text + "\n";
    seconds_ += Pick(random_, 20);
    const std::string number = std::to_string(seconds_ / 60);
    const std::string rest = std::to_string(seconds_ % 60);
    return std::string(3 - number.size(), ' ') + number + ":" + (rest.size() < 2 ? "0" : "") +
           rest + " " + text + "\n";
  }
  std::string Enter(std::size_t slot) {
    const std::string number = std::to_string(slot);
    const std::string team = std::to_string(slot % 2 + 1);
    std::string text = Line("ClientConnect: " + number);
    text += Line("ClientUserinfoChanged: " + number + " n\\" + name_ +
                 std::to_string(Pick(random_, 4)) + "\\t\\" + team);
    return text + Line("ClientBegin: " + number);
  }
  std::string Event(std::size_t players) {
    static const char* const kMeans[] = {"RAILGUN", "ROCKET", "PLASMA", "BFG"};
    const std::string victim = std::to_string(Pick(random_, players));
    if (Chance(random_, 20)) return Line("Item: " + victim + " item_quad");
    return Line("Kill: " + std::to_string(Pick(random_, players)) + " " + victim +
                " 1: x killed y by MOD_" + kMeans[Pick(random_, 4)]);
  }

  Random& random_;
  std::string name_;
  bool timed_;
  std::size_t seconds_ = 0;
};

/// A file of a log, as it was rotated.
struct Piece {
  std::string written;    // all that was ever written to it
  std::size_t front = 0;  // so much of it has been cut off the file
  std::size_t read = 0;   // so much has been seen by a run with the database
  bool exists = true;
  bool listed = true;
  bool known = false;  // by its name, since the last run
  bool split = false;  // was shortened under a name that no run had found it by
  std::int64_t changed = 0;

  std::string File() const { return written.substr(front); }
};

enum class Rotation { kByDate, kByRename, kByCopy };

struct Server {
  std::string base;
  Rotation rotation = Rotation::kByDate;
  std::vector<Piece> pieces{1};
  std::string pending;   // will be written next
  bool rotated = false;  // since the last run

  Piece& Last() { return pieces.back(); }
  std::string NameOf(std::size_t piece) const {
    if (rotation == Rotation::kByDate) return base + "-" + std::to_string(100 + piece) + ".log";
    const std::size_t age = pieces.size() - 1 - piece;
    return base + ".log" + (age == 0 ? "" : "." + std::to_string(age));
  }
};

/// A file that was copied, and does not change any more; or a second name.
struct Other {
  std::string name;
  std::string bytes;
  std::string target;  // of a symbolic link; empty: a copy
  bool first = false;  // in the list; else last
  std::int64_t changed = 0;
};

/// The end of the first game in a text that is known again wherever it stands; 0: none.
inline std::size_t EndOfKnownGame(const std::string& text) {
  const ParsedLog log = ParseLog(text, false);
  for (std::size_t i = 0; i + (log.openAtEnd ? 1 : 0) < log.games.size(); ++i) {
    if (log.games[i].kills >= (log.games[i].timed ? 3U : 40U)) {
      std::size_t varied = 0;
      std::string last;
      for (std::size_t at = log.texts[i].begin; at < log.texts[i].end;) {
        const std::size_t end = text.find('\n', at);
        const std::string line = text.substr(at, end - at);
        if (line.find("Kill:") != line.npos && line != last) ++varied, last = line;
        at = end == text.npos ? text.size() : end + 1;
      }
      if (log.games[i].timed || varied >= 30) return log.texts[i].end;
    }
  }
  return 0;
}

/// Games as texts, without their order and the times that are only reckoned.
inline std::vector<std::string> Texts(std::vector<Game> games, const Vocabulary& words,
                                      Vocabulary& common) {
  Renumber(games, words, common);
  std::vector<std::string> texts;
  for (Game& game : games) {
    game.start = 0;
    game.dated = Dated::kUnknown;
    game.events.clear();
    texts.push_back(PackGame(game));
  }
  std::ranges::sort(texts);
  return texts;
}

/// The games of one list that the other has not.
inline std::string Difference(const std::vector<std::string>& list,
                              const std::vector<std::string>& other) {
  std::vector<std::string> only;
  std::ranges::set_difference(list, other, std::back_inserter(only));
  std::string text;
  for (const std::string& record : only) {
    const Game game = UnpackGame(record, kRecordVersion, Names::kMost, Names::kMost);
    text += "\n    " + game.map + ", " + std::to_string(game.length) + " s, " +
            std::to_string(game.kills) + " kills, " + std::to_string(game.entrants.size()) +
            " players" + (game.timed ? "" : ", no stamps") + (game.complete ? ", complete" : "");
  }
  return text;
}

}  // namespace morvane
