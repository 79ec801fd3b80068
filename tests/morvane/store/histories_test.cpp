// Random histories of logs, held against a model of all games ever written.
//
// The model. Servers write; each has a stream of all it ever wrote, which lies in pieces: the files
// that its log was rotated into. What has been seen is what a run with the database has read, and
// what stands in the files listed now. Expected are the games that one run over the whole of it,
// in one file, would give. Several kinds of history cannot be known from the bytes, and the model
// leaves them out:
// - Bytes that are gone before a run with the database has read them are lost.
// - A log that is shortened from the front or edited is known again by a game before the edit that
//   has three kills with stamps, or thirty without. What an edit changes after such a game follows
//   the file. An edited game before it would stay beside its new form.
// - A log is not shortened within the stamp of an "InitGame:": the game would lose its stamp.
// - A file that is shortened, edited or copied is not also renamed or left out before the next run;
//   one that is swapped has been read before, and does not grow before the next run: a few lines
//   that moved and grew at once might be those of any log.
// - A day that is left out before it was ever read was cut off between two games.
// - Whether the first line of a log is the end of a torn one shows when it is whole, and the stamp
//   of a torn "InitGame:" belongs to no game: a log after another one begins with three whole
//   lines.
// - An edited file stands under the name that the last run found it by, and no copy keeps its old
//   form; nor does the database, where it was shortened under a name that no run had found it by. A
//   game that goes on in a log that is not listed, or has lost its front, is not edited.
// - Where a log goes on in mid-game with one of another name, that one stands before it in the list
//   when a run first reads it.
// - A log that is no longer listed is not the beginning, byte for byte, of the next one.
// - A copy holds a game that can be known again, behind its first line. It stands before its log in
// the list only when the
//   database knows that one's name.
// - Without the database there is no more than the files that are listed.
//
// MORVANE_HISTORIES=first,count plays other histories than the usual ones.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "morvane/log/log_parser.h"
#include "morvane/statistics/figures.h"
#include "morvane/store/collect.h"
#include "morvane/store/game_record.h"
#include "tests/morvane/store/history_model.h"
#include "tests/morvane/test_support.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

class History {
 public:
  explicit History(unsigned seed) : random_(seed) {
    const std::size_t count = 1 + Pick(random_, 2);
    for (std::size_t i = 0; i < count; ++i) {
      Server& server = servers_.emplace_back();
      server.base = i == 0 ? "a" : "b";
      server.rotation = static_cast<Rotation>(Pick(random_, 3));
      plays_.emplace_back(random_, server.base);
    }
    betweenGames_ = Chance(random_, 40);
    currentOnly_ = Chance(random_, 30);
  }

  /// Plays it; false, with the story told, where games are lost or doubled.
  bool Go() {
    const std::size_t steps = 6 + Pick(random_, 14);
    for (std::size_t i = 0; i < steps; ++i) {
      Step();
      if (failed_) return false;
      if (Chance(random_, 55) && !Run(true)) return false;
      if (Chance(random_, 10) && !Run(false)) return false;
    }
    return Run(true) && Run(true);
  }

 private:
  void Note(const std::string& step) { story_ += "  " + step + "\n"; }

  void Step() {
    static constexpr void (History::*kSteps[])(Server&) = {
        &History::Rotate,   &History::Rotate, &History::Shorten,  &History::Edit,
        &History::CopyFile, &History::Swap,   &History::LeaveOut, &History::Touch,
        &History::Grow,     &History::Grow,   &History::Grow,     &History::Grow};
    Server& server = servers_[Pick(random_, servers_.size())];
    (this->*kSteps[Pick(random_, std::size(kSteps))])(server);
  }

  void Grow(Server& server) {
    while (server.pending.size() < 600 || Chance(random_, 40)) {
      server.pending += plays_[static_cast<std::size_t>(&server - servers_.data())].Game();
    }
    std::size_t bytes = 1 + Pick(random_, server.pending.size());
    if (Chance(random_, 15)) bytes = std::min<std::size_t>(bytes, 1 + Pick(random_, 70));
    if (server.Last().written.size() < 10 && server.pieces.size() > 1) {
      std::size_t begun = server.pending.find('\n') + 1;
      for (int line = 0; line < 2; ++line) begun = server.pending.find('\n', begun) + 1;
      bytes = std::max(bytes, begun);
    }
    const std::string written = server.Last().written + server.pending.substr(0, bytes);
    if (server.pieces.size() > 1) {
      const Piece& former = server.pieces[server.pieces.size() - 2];
      if (!former.listed && written.starts_with(former.File())) return;
    }
    server.Last().written = written;
    server.pending.erase(0, bytes);
    Write(server, server.pieces.size() - 1);
    Note("grow " + server.base + " by " + std::to_string(bytes));
  }

  void Rotate(Server& server) {
    const bool moves = server.rotation != Rotation::kByDate;
    if ((moves && needsRun_) || server.Last().written.empty()) return;
    if (moves && server.rotated) return;
    if (betweenGames_) {  // up to the next game's dashes
      std::size_t end = server.pending.find(kDashes_ + "\n");
      while (end != server.pending.npos) {
        const std::size_t next = server.pending.find('\n', end) + 1;
        if (server.pending.substr(next, 30).find("InitGame:") != std::string::npos) break;
        end = server.pending.find(kDashes_ + "\n", next);
      }
      if (end == server.pending.npos) return;
      end = server.pending.rfind('\n', end) + 1;
      server.Last().written += server.pending.substr(0, end);
      server.pending.erase(0, end);
      Write(server, server.pieces.size() - 1);
    }
    const std::size_t last = server.pieces.size() - 1;
    if (last > 0 && !server.pieces[last - 1].listed && !IsLinked(server, last - 1)) return;
    const bool leavesList = currentOnly_ && (betweenGames_ || moves);
    if (leavesList && (needsRun_ || !IsRead(server.Last())) && !Run(true)) {
      failed_ = true;
      return;
    }
    if (leavesList) server.Last().listed = false;
    server.rotated = true;
    if (moves) Remove(server);
    server.pieces.emplace_back();
    for (std::size_t i = 0; i < server.pieces.size(); ++i) {
      const bool fresh = i + 1 == server.pieces.size() ||
                         (i + 2 == server.pieces.size() && server.rotation == Rotation::kByCopy);
      if (moves) server.pieces[i].known = false;
      Put(server, i, fresh ? ++clock_ : server.pieces[i].changed);
    }
    Note("rotate " + server.base);
  }

  void Shorten(Server& server) {
    const std::size_t index = Pick(random_, server.pieces.size());
    Piece& piece = server.pieces[index];
    if (needsRun_ || server.rotated || !piece.exists || !piece.listed || !IsRead(piece)) return;
    const std::string file = piece.File();
    if (file.empty()) return;
    const std::size_t cut = 1 + Pick(random_, file.size());
    const std::size_t whole = file.find('\n', cut - 1);  // behind it nothing is torn
    const bool torn = file[cut - 1] != '\n';
    if (torn && file.substr(cut, whole - cut).find("InitGame:") != file.npos) return;
    if (whole == file.npos || EndOfKnownGame(file.substr(whole + 1)) == 0) return;
    piece.front += cut;
    piece.split |= !piece.known;
    Write(server, index);
    needsRun_ = true;
    Note("shorten " + server.base + " by " + std::to_string(cut));
  }

  void Edit(Server& server) {
    const std::size_t index = Pick(random_, server.pieces.size());
    Piece& piece = server.pieces[index];
    if (needsRun_ || server.rotated || !piece.exists || !piece.listed || !IsRead(piece)) return;
    if (!piece.known || piece.split || !others_.empty()) return;
    const std::size_t known = EndOfKnownGame(piece.File());
    if (known == 0) return;
    const Piece* next = &piece == &server.Last() ? nullptr : &piece + 1;
    const bool goesOn = next != nullptr && (!next->listed || next->front > 0);
    const std::size_t end =
        goesOn ? piece.front + ParseLog(piece.File(), false).resumeAt : piece.written.size();
    // A line of a kill that goes, somewhere behind.
    std::vector<std::size_t> kills;
    for (std::size_t at = piece.written.find("Kill:", piece.front + known); at < end;
         at = piece.written.find("Kill:", at + 1)) {
      if (piece.written.find('\n', at) != std::string::npos) kills.push_back(at);
    }
    if (kills.empty()) return;
    const std::size_t at = kills[Pick(random_, kills.size())];
    const std::size_t begin = piece.written.rfind('\n', at) + 1;
    piece.written.erase(begin, piece.written.find('\n', at) + 1 - begin);
    piece.read = piece.written.size();
    Write(server, index);
    needsRun_ = true;
    Note("edit " + server.base + " at " + std::to_string(begin));
  }

  /// All of a file, or what stands from some byte on that is not within a game's first line.
  std::string Tail(const std::string& file) {
    if (Chance(random_, 60)) return file;
    const std::size_t cut = Pick(random_, file.size() + 1);
    const std::size_t line = file.substr(0, cut).rfind('\n') + 1;
    const bool opens =
        file.substr(line, file.find('\n', cut) - line).find("InitGame:") != file.npos;
    return opens ? file : file.substr(cut);
  }

  void CopyFile(Server& server) {
    const std::size_t index = Pick(random_, server.pieces.size());
    const Piece& piece = server.pieces[index];
    if (needsRun_ || !piece.exists || !piece.listed) return;
    const std::string bytes = Tail(piece.File());
    if (EndOfKnownGame(bytes.substr(bytes.find('\n') + 1)) == 0) return;
    Other& other = others_.emplace_back();
    other.name = "copy" + std::to_string(others_.size()) + ".log";
    other.first = Chance(random_, 30) && piece.known;
    if (bytes == piece.File() && Chance(random_, 40)) {
      other.target = server.NameOf(index);
      fs::create_symlink(PathOf(other.target), PathOf(other.name));
      others_.back().bytes.clear();
    } else {
      other.bytes = bytes;
      test::WriteFile(PathOf(other.name), other.bytes);
      SetChanged(PathOf(other.name), ++clock_);
    }
    needsRun_ = true;
    Note("copy " + server.NameOf(index) + (other.target.empty() ? "" : " by a link") + ", " +
         std::to_string(bytes.size()) + " bytes" + (other.first ? ", first" : ""));
  }

  void Swap(Server& /*one*/) {
    if (servers_.size() < 2 || needsRun_) return;
    if (servers_[0].rotated || servers_[1].rotated) return;
    if (servers_[0].rotation != servers_[1].rotation) return;
    for (Server& server : servers_) {  // an empty file would lose its name unnoticed
      const std::size_t last = server.pieces.size() - 1;
      if (last > 0 && !IsLinked(server, last - 1)) return;
      if (!IsRead(server.Last())) return;
    }
    for (const Server& server : servers_) Remove(server);
    std::swap(servers_[0].base, servers_[1].base);
    for (Server& server : servers_) {
      for (std::size_t i = 0; i < server.pieces.size(); ++i) {
        Put(server, i, server.pieces[i].changed);
      }
    }
    needsRun_ = true;
    Note("swap");
    failed_ |= !Run(true);
  }

  void LeaveOut(Server& server) {
    const std::size_t index = Pick(random_, server.pieces.size());
    Piece& piece = server.pieces[index];
    if (!piece.listed) {
      if (currentOnly_ && Chance(random_, 50)) return;
      piece.listed = true;
      return Note("list again in " + server.base);
    }
    if (needsRun_ || &piece == &server.Last()) return;
    if (!IsRead(piece) && !(betweenGames_ && piece.read == 0)) return;
    if (!IsLinked(server, index)) return;
    piece.listed = false;
    if (IsRead(piece) && Chance(random_, 40)) {
      piece.exists = false;
      fs::remove(PathOf(server.NameOf(index)));
    }
    Note("leave out of " + server.base + (piece.exists ? "" : ", gone"));
  }

  void Touch(Server& server) {
    const std::size_t index = Pick(random_, server.pieces.size());
    if (server.pieces[index].exists) Write(server, index);
    Note("touch " + server.NameOf(index));
  }

  /// Whether nothing hangs on a file any more: what follows it has been read.
  bool IsLinked(const Server& server, std::size_t piece) const {
    const Piece& next = server.pieces[piece + 1];
    return betweenGames_ || next.written.substr(0, next.read).find('\n') != std::string::npos;
  }
  bool IsRead(const Piece& piece) const { return piece.read == piece.written.size(); }
  fs::path PathOf(const std::string& name) const { return folder_.Path() / name; }

  void SetChanged(const fs::path& path, std::int64_t changed) const {
    fs::last_write_time(path, start_ + std::chrono::seconds(changed));
  }
  void Put(Server& server, std::size_t index, std::int64_t changed) {
    Piece& piece = server.pieces[index];
    piece.changed = changed;
    if (!piece.exists) return;
    const fs::path path = PathOf(server.NameOf(index));
    test::WriteFile(path, piece.File());
    SetChanged(path, changed);
  }
  void Write(Server& server, std::size_t index) { Put(server, index, ++clock_); }
  void Remove(const Server& server) const {
    for (std::size_t i = 0; i < server.pieces.size(); ++i) fs::remove(PathOf(server.NameOf(i)));
  }

  /// The games that a run is to give, sorted; what it sees of the files is known from then on.
  /// `complete`, for one without a database: all that is to be known stands in the files,
  /// in order.
  std::vector<std::string> Expected(bool withDatabase, Vocabulary& common, bool& complete) {
    std::vector<std::string> expected;
    for (Server& server : servers_) {
      std::string stream;
      for (Piece& piece : server.pieces) {
        const bool seen = piece.exists && piece.listed;
        const bool isLast = &piece == &server.Last();
        if (!seen) complete &= others_.empty() && (betweenGames_ || isLast);
        complete &= piece.front == 0;
        if (seen && withDatabase) piece.read = piece.written.size();
        if (seen && withDatabase) piece.known = true;
        const std::size_t withoutDatabase = seen ? piece.written.size() : 0;
        stream += piece.written.substr(0, withDatabase ? piece.read : withoutDatabase);
      }
      if (withDatabase) server.rotated = false;
      ParsedLog log = ParseLog(stream, true);
      std::erase_if(log.games, [](const Game& game) { return game.entrants.empty(); });
      std::ranges::move(Texts(std::move(log.games), log.vocabulary, common),
                        std::back_inserter(expected));
    }
    std::ranges::sort(expected);
    return expected;
  }

  std::vector<LogFile> ListedLogs() const {
    std::vector<LogFile> logs;
    for (const Server& server : servers_) {
      for (std::size_t i = 0; i < server.pieces.size(); ++i) {
        const bool listed = server.pieces[i].exists && server.pieces[i].listed;
        if (listed) logs.push_back({server.NameOf(i), PathOf(server.NameOf(i))});
      }
    }
    for (const Other& other : others_) {
      logs.insert(other.first ? logs.begin() : logs.end(), {other.name, PathOf(other.name)});
    }
    return logs;
  }

  /// A run of the engine; false when it does not give what is expected.
  bool Run(bool withDatabase) {
    const Sources sources = {ListedLogs(), withDatabase, PathOf("db")};
    bool complete = std::ranges::none_of(others_, &Other::first);
    Vocabulary common;
    const std::vector<std::string> expected = Expected(withDatabase, common, complete);
    test::Told told;
    Collected collected = CollectGames(sources, told);
    if (withDatabase) needsRun_ = false;
    Note(std::string(withDatabase ? "run" : "run without database") + "\n" + told.severe +
         told.normal);
    if (told.severe.find("database") != told.severe.npos) return Fail("the database failed");
    if (!withDatabase && !complete) return true;
    if (withDatabase && !KeepsKnown(collected)) return Fail("a date or a number changed");
    if (withDatabase && !KeepsNumbers(collected)) return Fail("a number is lost or given again");
    const std::vector<std::string> games =
        Texts(std::move(collected.games), collected.vocabulary, common);
    if (games != expected) {
      return Fail(std::to_string(games.size()) + " games, expected " +
                  std::to_string(expected.size()) + "; missing:" + Difference(expected, games) +
                  "\n  too many:" + Difference(games, expected));
    }
    return true;
  }

  /// Whether every game has a number of its own, each that there was is still there, and new ones
  /// are higher than all before.
  bool KeepsNumbers(const Collected& collected) {
    std::set<std::uint32_t> now;
    for (const Game& game : collected.games) now.insert(game.number);
    const bool own = now.size() == collected.games.size() && !now.contains(0);
    const bool kept = std::ranges::includes(now, numbers_);
    const std::uint32_t highest = numbers_.empty() ? 0 : *numbers_.rbegin();
    const auto added = static_cast<std::size_t>(std::distance(now.upper_bound(highest), now.end()));
    const bool fresh = now.size() - added == numbers_.size();
    numbers_ = std::move(now);
    return own && kept && fresh;
  }

  /// Whether games have the dates and numbers that they had; those without kills are too much
  /// alike.
  bool KeepsKnown(const Collected& collected) {
    Vocabulary names;
    std::vector<Game> games = collected.games;
    Renumber(games, collected.vocabulary, names_);
    using Known = std::pair<std::int64_t, std::uint32_t>;
    std::map<std::string, Known> now;
    std::map<std::string, int> often;
    for (Game& game : games) {
      const Known known = {game.timed ? game.start : 0, game.number};
      game.start = 0;
      game.dated = Dated::kUnknown;
      const std::string text = PackGame(game);
      if (game.kills >= 3 && ++often[text] == 1) now[text] = known;
    }
    std::erase_if(now, [&](const auto& entry) { return often[entry.first] > 1; });
    const bool kept = std::ranges::all_of(now, [&](const auto& entry) {
      const auto before = known_.find(entry.first);
      return before == known_.end() || before->second == entry.second;
    });
    known_ = std::move(now);
    return kept;
  }

  bool Fail(const std::string& why) {
    ADD_FAILURE() << why << "\n" << story_;
    if (std::getenv("MORVANE_KEEP") != nullptr) {
      fs::copy(folder_.Path(), "/tmp/morvane_failed",
               fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    }
    return false;
  }

  const std::string kDashes_ = std::string(60, '-');
  Random random_;
  test::TempFolder folder_;
  std::vector<Server> servers_;
  std::vector<Play> plays_;
  std::vector<Other> others_;
  std::map<std::string, std::pair<std::int64_t, std::uint32_t>> known_;
  std::set<std::uint32_t> numbers_;
  Vocabulary names_;
  std::string story_;
  const fs::file_time_type start_ = fs::file_time_type::clock::now() - std::chrono::hours(10000);
  std::int64_t clock_ = 0;
  bool betweenGames_ = false;
  bool currentOnly_ = false;
  bool needsRun_ = false;
  bool failed_ = false;
};

TEST(Histories, EveryGameCountsOnce) {
  unsigned first = 1;
#ifdef NDEBUG
  unsigned count = 1000;
#else
  unsigned count = 100;
#endif
  // A disk that keeps every transaction would cost minutes.
  if (fs::exists("/dev/shm")) setenv("TMPDIR", "/dev/shm", 0);
  if (const char* wanted = std::getenv("MORVANE_HISTORIES")) {
    char* end = nullptr;
    first = static_cast<unsigned>(std::strtoul(wanted, &end, 10));
    if (*end == ',') count = static_cast<unsigned>(std::strtoul(end + 1, nullptr, 10));
  }
  int failed = 0;
  for (unsigned seed = first; seed < first + count && failed < 5; ++seed) {
    SCOPED_TRACE("history " + std::to_string(seed));
    if (!History(seed).Go()) ++failed;
  }
}

}  // namespace
}  // namespace morvane
