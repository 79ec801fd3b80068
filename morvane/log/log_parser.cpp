#include "morvane/log/log_parser.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstring>
#include <ctime>
#include <optional>
#include <thread>
#include <utility>

#include "morvane/log/game_builder.h"
#include "morvane/log/log_line.h"
#include "morvane/statistics/figures.h"
#include "platform/threads.h"
#include "text/text.h"

namespace morvane {
namespace {

// Longer ones come from no game; they are cut so that a hostile log cannot fill the memory.
constexpr std::size_t kLongestName = 128;
constexpr std::size_t kLongestWord = 64;
constexpr std::size_t kStretchBytes = std::size_t{8} << 20;

/// Takes `beginning` off the text, if it begins so.
inline bool Take(std::string_view& text, std::string_view beginning) {
  if (!text.starts_with(beginning)) return false;
  text.remove_prefix(beginning.size());
  return true;
}

/// Takes a number of at most nine digits and the blanks before it off the text. An `optional` would
/// be put together in memory, which costs a tenth of the reading of a log.
inline bool TakeNumber(std::string_view& text, int& number) {
  constexpr std::size_t kMostDigits = 9;
  std::size_t at = 0;
  while (at < text.size() && text[at] == ' ') ++at;
  const bool negative = at < text.size() && text[at] == '-';
  if (negative) ++at;
  const std::size_t first = at;
  int digits = 0;
  while (at < text.size() && text[at] >= '0' && text[at] <= '9') {
    if (at - first == kMostDigits) return false;
    digits = digits * 10 + (text[at++] - '0');
  }
  if (at == first) return false;
  text.remove_prefix(at);
  number = negative ? -digits : digits;
  return true;
}

/// Takes the number of a client's slot off the text.
inline bool TakeSlot(std::string_view& text, std::size_t& slot) {
  int number = 0;
  if (!TakeNumber(text, number)) return false;
  if (number < 0 || number >= static_cast<int>(GameBuilder::kSlots)) return false;
  slot = static_cast<std::size_t>(number);
  return true;
}

/// Takes "key\value\" off a text of such pairs; false at its end.
bool TakePair(std::string_view& text, std::string_view& key, std::string_view& value) {
  const std::size_t keyEnd = text.find('\\');
  if (keyEnd == text.npos) return false;
  key = text.substr(0, keyEnd);
  const std::size_t valueEnd = std::min(text.find('\\', keyEnd + 1), text.size());
  value = text.substr(keyEnd + 1, valueEnd - keyEnd - 1);
  text.remove_prefix(std::min(valueEnd + 1, text.size()));
  return true;
}

constexpr std::array<bool, 256> kIsWordCharacter = [] {
  std::array<bool, 256> table{};
  for (std::size_t c = 0; c < table.size(); ++c) {
    table[c] =
        (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
  }
  return table;
}();

/// The word at the start of a text.
std::string_view Word(std::string_view text) {
  const std::size_t most = std::min(text.size(), kLongestWord);
  std::size_t size = 0;
  while (size < most && kIsWordCharacter[static_cast<unsigned char>(text[size])]) ++size;
  return text.substr(0, size);
}

/// What follows the " by " of "... by MOD_NAME ...". Players' names stand before it and may hold
/// anything, so the last one counts.
std::string_view TextAfterBy(std::string_view text) {
  constexpr std::string_view kBy = " by ";
  const void* blank = memrchr(text.data(), ' ', text.size());  // nearly always that of " by "
  if (blank == nullptr) return {};
  const auto last = static_cast<std::size_t>(static_cast<const char*>(blank) - text.data());
  const bool usual = last >= 3 && text.substr(last - 3, kBy.size()) == kBy;
  const std::size_t by = usual ? last - 3 : text.rfind(kBy);
  return by == text.npos ? std::string_view() : text.substr(by + kBy.size());
}

/// Whether a known text tells what happens in a game; talk, dashes and warm-ups do not.
bool IsGameText(std::string_view text) {
  static constexpr auto kBeginnings = std::to_array<std::string_view>(
      {"Item: ", "Kill: ", "Client", "ShutdownGame:", "Exit:", "score: ", "red:"});
  return std::ranges::any_of(
      kBeginnings, [&](std::string_view beginning) { return text.starts_with(beginning); });
}

bool IsKey(std::string_view key, std::string_view name) {
  return key.size() == name.size() && text::SameName(key, name);
}

/// "20190304173140", local time as the server's, as seconds since 1970; 0 where it is none.
std::int64_t DateFrom(std::string_view text) {
  constexpr std::array<std::size_t, 6> kDigits = {4, 2, 2, 2, 2, 2};
  std::array<int, 6> parts{};
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::string_view digits = text.substr(0, kDigits[i]);
    if (digits.size() < kDigits[i] || digits.find_first_not_of("0123456789") != digits.npos) {
      return 0;
    }
    for (const char digit : digits) parts[i] = parts[i] * 10 + (digit - '0');
    text.remove_prefix(kDigits[i]);
  }
  const auto [year, month, day, hour, minute, second] = parts;
  const auto date = std::chrono::year(year) / month / day;
  if (!date.ok() || hour > 23 || minute > 59 || second > 60) return 0;
  std::tm time = {};
  time.tm_year = year - 1900;
  time.tm_mon = month - 1;
  time.tm_mday = day;
  time.tm_hour = hour;
  time.tm_min = minute;
  time.tm_sec = second;
  time.tm_isdst = -1;
  return std::max<std::int64_t>(0, std::mktime(&time));
}

// Stamps: 0:00, and one that lies before another by more than the odd tenth that a mod is off.
bool IsZero(std::int64_t tenths) { return tenths < 10; }
bool IsLower(std::int64_t tenths, std::int64_t before) { return tenths + 10 < before; }

Team TeamFrom(std::string_view value) {
  const bool known = value.size() == 1 && value[0] >= '0' && value[0] <= '3';
  return known ? static_cast<Team>(value[0] - '0') : Team::kFree;
}

class Parser {
 public:
  /// `known`: names that have numbers before the stretch is read.
  Parser(std::string_view log, bool keepEvents, const Vocabulary& known)
      : reader_(log), game_(keepEvents), size_(log.size()) {
    log_.vocabulary = known;
  }

  ParsedLog Run();

 private:
  void TakeLine(std::string_view line);
  void SetClock(const LogLine& line);
  /// Whether the text is a line of the game; damaged ones are noted.
  bool TakeText(const LogLine& line);
  bool TakeClient(std::string_view text);
  bool TakeEnd(std::string_view text);
  bool OpenGame(std::string_view text, const LogLine& line);
  void ServerTime(std::string_view text);
  void CloseGame(std::size_t end);
  void Kill(std::string_view text);
  /// The number of "MOD_NAME ..."; Names::kUnknown where it begins with no name.
  std::uint16_t WeaponOf(std::string_view means);
  void Item(std::string_view text);
  void Userinfo(std::string_view text);
  void Score(std::string_view text);
  void TeamScores(std::string_view text);
  void Award(std::string_view text);
  void Flag(std::string_view text);
  void Achieve(std::string_view text, std::optional<Feat> feat);
  void Exit(std::string_view text);
  void Damaged(std::string_view what);

  LineReader reader_;
  GameBuilder game_;
  ParsedLog log_;
  std::size_t size_;
  GameTime time_;             // of the open game; its date is that of `datedAt_`
  std::int64_t datedAt_ = 0;  // on the log's clock
  std::size_t openStart_ = 0;
  std::size_t openLine_ = 0;
};

ParsedLog Parser::Run() {
  std::string_view line;
  while (reader_.Next(line)) TakeLine(line);
  log_.lines = reader_.LineNumber();
  log_.openAtEnd = game_.IsOpen();
  if (log_.openAtEnd) {
    CloseGame(size_);
    log_.resumeAt = openStart_;
    log_.resumeLine = openLine_;
  } else {
    log_.resumeAt = reader_.HadLineEnd() ? size_ : reader_.LineStart();
    log_.resumeLine = log_.lines - (reader_.HadLineEnd() ? 0 : 1);
  }
  return std::move(log_);
}

void Parser::TakeLine(std::string_view line) {
  const LogLine cut = CutLine(line);
  if (cut.text.empty()) return;
  if (EndsInSeparator(cut.text)) {
    // A stump in front of the dashes belongs to a crash, and its stamp to nothing.
    if (cut.text.find_first_not_of('-') != cut.text.npos) ++log_.skipped;
    return;
  }
  // In a log with stamps a line without one is a copy from the console or no line of the game.
  const bool foreign = game_.IsOpen() && game_.IsTimed() && !cut.stamped;
  if (!foreign && cut.stamped) SetClock(cut);
  if (foreign || !TakeText(cut)) ++log_.skipped;
}

void Parser::SetClock(const LogLine& line) {
  const bool opens = line.text.starts_with("InitGame:");
  if (!log_.stamped) {
    log_.firstStamp = log_.lastStamp = line.tenths;
    log_.beginsAnew = opens && IsZero(line.tenths);
  } else if (IsLower(line.tenths, log_.lastStamp) || (opens && IsZero(line.tenths))) {
    ++log_.runs;
  }
  log_.stamped = true;
  if (line.tenths > log_.lastStamp) log_.clock += line.tenths - log_.lastStamp;
  log_.lastStamp = line.tenths;
  // The next game's first stamp is no part of the one before it.
  if (game_.IsOpen() && !opens) game_.SetClock(line.tenths);
}

bool Parser::TakeText(const LogLine& line) {
  std::string_view text = line.text;
  if (game_.IsOpen()) {  // the two most frequent kinds first
    if (Take(text, "Item: ")) return Item(text), true;
    if (Take(text, "Kill: ")) return Kill(text), true;
  }
  if (Take(text, "InitGame:")) return OpenGame(text, line);
  if (!IsKnownText(text)) return false;
  if (!game_.IsOpen()) {
    if (log_.games.empty() && IsGameText(text)) ++log_.strayLines;
    return true;
  }
  return Take(text, "Client") ? TakeClient(text) : TakeEnd(text);
}

bool Parser::TakeClient(std::string_view text) {
  if (Take(text, "UserinfoChanged: ")) {
    Userinfo(text);
    return true;
  }
  void (GameBuilder::*event)(std::size_t) = nullptr;
  if (Take(text, "Begin:")) event = &GameBuilder::Begin;
  if (Take(text, "Connect:")) event = &GameBuilder::Connect;
  if (Take(text, "Disconnect:")) event = &GameBuilder::Disconnect;
  if (event == nullptr) return false;
  if (std::size_t slot = 0; TakeSlot(text, slot)) {
    (game_.*event)(slot);
  } else {
    Damaged("client");
  }
  return true;
}

bool Parser::TakeEnd(std::string_view text) {
  if (Take(text, "ShutdownGame:")) {
    CloseGame(reader_.LineEnd());
  } else if (Take(text, "Exit:")) {
    Exit(text);
  } else if (Take(text, "score: ")) {
    Score(text);
  } else if (Take(text, "red:")) {
    TeamScores(text);
  } else if (text.starts_with("Warmup:")) {
    game_.Warmup();
  } else if (text.starts_with("InitRound:")) {
    if (game_.Round()) time_.clock = log_.clock;
  } else if (Take(text, "Award: ")) {
    Award(text);
  } else if (Take(text, "CTF: ")) {
    Flag(text);
  } else if (Take(text, "ServerTime:")) {
    ServerTime(text);
  }
  return true;  // what is left is talk
}

bool Parser::OpenGame(std::string_view text, const LogLine& line) {
  if (game_.IsOpen()) CloseGame(reader_.LineStart());
  std::string_view map;
  int type = 0;
  std::string_view key;
  std::string_view value;
  text.remove_prefix(std::min(text.find('\\'), text.size()));
  Take(text, "\\");
  while (TakePair(text, key, value)) {
    if (IsKey(key, "mapname")) map = value.substr(0, kLongestWord);
    if (IsKey(key, "g_gametype")) {
      type = 0;
      TakeNumber(value, type);
    }
  }
  game_.Open(map, type, line.stamped, line.tenths);
  time_ = {log_.clock, 0, log_.runs};
  openStart_ = reader_.LineStart();
  openLine_ = reader_.LineNumber() - 1;
  return true;
}

void Parser::ServerTime(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
  const std::int64_t date = DateFrom(text);
  if (date == 0) return Damaged("server time");
  if (time_.date != 0) return;
  time_.date = date;
  datedAt_ = log_.clock;
}

void Parser::CloseGame(std::size_t end) {
  log_.texts.push_back({openStart_, end});
  log_.games.push_back(game_.Close());
  if (time_.date != 0) time_.date -= (datedAt_ - time_.clock) / 10;
  log_.times.push_back(time_);
}

void Parser::Kill(std::string_view text) {
  int killer = 0;
  std::size_t victim = 0;
  if (!TakeNumber(text, killer) || !TakeSlot(text, victim)) return Damaged("kill");
  const std::uint16_t weapon = WeaponOf(TextAfterBy(text));
  if (weapon == Names::kUnknown) return Damaged("kill");
  const bool isClient = killer >= 0 && killer < static_cast<int>(GameBuilder::kSlots);
  game_.Kill(isClient ? static_cast<std::size_t>(killer) : GameBuilder::kWorld, victim, weapon);
}

std::uint16_t Parser::WeaponOf(std::string_view means) {
  constexpr std::string_view kPrefix = "MOD_";
  std::string_view name = means;
  Take(name, kPrefix);
  if (means.size() <= kLongestWord) {  // nearly always nothing follows the name
    const std::uint16_t known = log_.vocabulary.weapons.Find(name);
    if (known != Names::kUnknown) return known;
  }
  name = Word(means);
  Take(name, kPrefix);
  return name.empty() ? Names::kUnknown : log_.vocabulary.weapons.Number(name);
}

void Parser::Item(std::string_view text) {
  std::size_t slot = 0;
  if (!TakeSlot(text, slot) || !Take(text, " ")) return Damaged("item");
  const std::uint16_t known = log_.vocabulary.items.Find(text);
  if (known != Names::kUnknown) return game_.TakeItem(slot, known);
  const std::string_view name = Word(text);
  if (name.empty()) return Damaged("item");
  game_.TakeItem(slot, log_.vocabulary.items.Number(name));
}

void Parser::Userinfo(std::string_view text) {
  std::size_t slot = 0;
  if (!TakeSlot(text, slot)) return Damaged("client");
  Take(text, " ");
  std::optional<std::string_view> name;
  std::optional<Team> team;
  bool bot = false;
  std::string_view key;
  std::string_view value;
  while (TakePair(text, key, value)) {
    if (key == "n" && !name) name = value.substr(0, kLongestName);
    if (key == "t" && !team) team = TeamFrom(value);
    if (key == "skill") bot = true;
  }
  if (!name) return Damaged("client");
  game_.Userinfo(slot, *name, team.value_or(game_.TeamOf(slot)), bot);
}

void Parser::Score(std::string_view text) {
  int score = 0;
  if (!TakeNumber(text, score)) return Damaged("score");
  const std::size_t client = text.find("client: ");
  if (client == text.npos) return Damaged("score");
  text.remove_prefix(client + 8);
  std::size_t slot = 0;
  if (!TakeSlot(text, slot)) return Damaged("score");
  game_.Score(slot, score);
}

void Parser::TeamScores(std::string_view text) {
  int red = 0;
  if (!TakeNumber(text, red)) return Damaged("team score");
  const std::size_t colon = text.find("blue:");
  if (colon == text.npos) return Damaged("team score");
  text.remove_prefix(colon + 5);
  int blue = 0;
  if (!TakeNumber(text, blue)) return Damaged("team score");
  game_.TeamScores(red, blue);
}

// "Award: 3 1: Visor gained the EXCELLENT award!": the numbers of awards differ between mods, and
// the name may hold anything, so the last word that can be one counts.
void Parser::Award(std::string_view text) {
  static constexpr std::pair<std::string_view, Feat> kAwards[] = {
      {"EXCELLENT", Feat::kExcellent}, {"IMPRESSIVE", Feat::kImpressive},
      {"GAUNTLET", Feat::kGauntlet},   {"HUMILIATION", Feat::kGauntlet},
      {"DEFENCE", Feat::kDefence},     {"DEFENSE", Feat::kDefence},
      {"DEFEND", Feat::kDefence},      {"ASSIST", Feat::kAssist},
      {"CAPTURE", Feat::kCapture}};
  constexpr std::string_view kGained = " gained the ";
  const std::size_t at = text.rfind(kGained);
  std::optional<Feat> feat;
  if (at != text.npos) {
    const std::string_view word = Word(text.substr(at + kGained.size()));
    for (const auto& [name, known] : kAwards) {
      if (text::SameName(word, name)) feat = known;
    }
  }
  Achieve(text, feat);
}

// "CTF: 3 2 1: Visor captured the RED flag!", "... fragged RED's flag carrier!"
void Parser::Flag(std::string_view text) {
  static constexpr std::pair<std::string_view, Feat> kVerbs[] = {
      {" got the ", Feat::kFlagTaken},
      {" captured the ", Feat::kFlagCaptured},
      {" returned the ", Feat::kFlagReturned},
      {" fragged ", Feat::kCarrierKilled}};
  std::optional<Feat> feat;
  std::size_t last = 0;
  for (const auto& [verb, known] : kVerbs) {
    const std::size_t at = text.rfind(verb);
    if (at == text.npos || at < last) continue;
    last = at;
    feat = known;
  }
  Achieve(text, feat);
}

void Parser::Achieve(std::string_view text, std::optional<Feat> feat) {
  std::size_t slot = 0;
  if (!feat || !TakeSlot(text, slot)) {
    ++log_.skipped;
    return;
  }
  game_.Achieve(slot, *feat);
}

void Parser::Exit(std::string_view text) {
  Take(text, " ");
  text = text.substr(0, std::min(text.find(" hit"), kLongestWord));
  game_.Exit(text::TrimBlanks(text));
}

void Parser::Damaged(std::string_view what) {
  ++log_.skipped;
  ++log_.damaged;
  if (log_.notes.size() >= ParsedLog::kMostNotes) return;
  log_.notes.push_back({reader_.LineNumber(), "damaged " + std::string(what) + " line, skipped"});
}

void RenumberFigures(Figures& figures, const std::vector<std::uint16_t>& weapons,
                     const std::vector<std::uint16_t>& items) {
  for (WeaponUse& use : figures.weapons) use.weapon = weapons[use.weapon];
  for (ItemCount& count : figures.itemCounts) count.item = items[count.item];
  SettleFigures(figures);  // the numbers decide between equals
}

std::vector<std::uint16_t> NewNumbers(const Names& from, Names& to) {
  std::vector<std::uint16_t> numbers;
  for (const std::string& name : from.All()) numbers.push_back(to.Number(name));
  return numbers;
}

bool IsUnchanged(const std::vector<std::uint16_t>& numbers) {
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (numbers[i] != i) return false;
  }
  return true;
}

/// Where the next game begins from `from` on; the log's size when none does.
std::size_t FindGame(std::string_view log, std::size_t from) {
  constexpr std::string_view kInit = "InitGame:";
  constexpr std::size_t kLongestStamp = 32;
  for (std::size_t at = log.find(kInit, from); at != log.npos; at = log.find(kInit, at + 1)) {
    const std::size_t searched = std::max(from, at - std::min(at, kLongestStamp));
    const std::size_t end = log.substr(searched, at - searched).rfind('\n');
    if (end == log.npos) continue;
    const std::size_t start = searched + end + 1;
    const LogLine line = CutLine(log.substr(start, at + kInit.size() - start));
    if (line.stamped && line.text == kInit) return start;
  }
  return log.size();
}

/// The names at the beginning of a log. It holds nearly all that the log has: stretches that know
/// them give the same numbers, and need not be renumbered when they are joined.
Vocabulary FirstNames(std::string_view log) {
  constexpr std::size_t kBeginning = std::size_t{256} << 10;
  return ParseLog(log.substr(0, log.rfind('\n', kBeginning) + 1), false).vocabulary;
}

}  // namespace

ParsedLog ParseLog(std::string_view log, bool keepEvents) {
  return Parser(log, keepEvents, {}).Run();
}

void Renumber(std::vector<Game>& games, const Vocabulary& from, Vocabulary& to) {
  const auto weaponNumbers = NewNumbers(from.weapons, to.weapons);
  const auto itemNumbers = NewNumbers(from.items, to.items);
  if (IsUnchanged(weaponNumbers) && IsUnchanged(itemNumbers)) return;
  for (Game& game : games) {
    for (Entrant& entrant : game.entrants) {
      RenumberFigures(entrant.figures, weaponNumbers, itemNumbers);
    }
    for (KillEvent& event : game.events) event.weapon = weaponNumbers[event.weapon];
  }
}

void MoveTo(ParsedLog& stretch, std::size_t begin) {
  stretch.resumeAt += begin;
  for (GameText& text : stretch.texts) {
    text.begin += begin;
    text.end += begin;
  }
}

void Append(ParsedLog& log, ParsedLog&& next) {
  if (log.stamped && next.stamped) {
    log.clock += std::max<std::int64_t>(0, next.firstStamp - log.lastStamp);
    if (next.beginsAnew || IsLower(next.firstStamp, log.lastStamp)) ++log.runs;
  }
  for (GameTime time : next.times) {
    time.clock += log.clock;
    time.run += log.runs;
    log.times.push_back(time);
  }
  log.runs += next.runs;
  if (log.games.empty()) log.strayLines += next.strayLines;
  log.texts.insert(log.texts.end(), next.texts.begin(), next.texts.end());
  Renumber(next.games, next.vocabulary, log.vocabulary);
  log.games.insert(log.games.end(), std::make_move_iterator(next.games.begin()),
                   std::make_move_iterator(next.games.end()));
  for (Note& note : next.notes) {
    if (log.notes.size() < ParsedLog::kMostNotes) {
      log.notes.push_back({note.line + log.lines, std::move(note.text)});
    }
  }
  log.resumeAt = next.resumeAt;
  log.resumeLine = log.lines + next.resumeLine;
  log.openAtEnd = next.openAtEnd;
  log.lines += next.lines;
  log.skipped += next.skipped;
  log.damaged += next.damaged;
  log.clock += next.clock;
  if (next.stamped) {
    if (!log.stamped) {
      log.firstStamp = next.firstStamp;
      log.beginsAnew = next.beginsAnew;
    }
    log.lastStamp = next.lastStamp;
    log.stamped = true;
  }
}

void SetStarts(ParsedLog& log, std::int64_t lastChange) {
  struct {
    GameTime at;
    Dated dated;
  } anchor = {{log.clock, lastChange, log.runs}, Dated::kReckoned};
  const auto start = [&](const GameTime& time) {
    return anchor.at.date - (anchor.at.clock - time.clock) / 10;
  };
  for (std::size_t i = log.games.size(); i-- > 0;) {
    Game& game = log.games[i];
    const GameTime& time = log.times[i];
    if (time.date != 0) anchor = {time, Dated::kKnown};
    if (time.date == 0 && !game.timed) continue;
    game.start = start(time);
    game.dated = time.run == anchor.at.run ? anchor.dated : Dated::kNotAfter;
  }
  anchor.dated = Dated::kUnknown;
  for (std::size_t i = 0; i < log.games.size(); ++i) {
    Game& game = log.games[i];
    const GameTime& time = log.times[i];
    if (time.date != 0) anchor = {time, Dated::kKnown};
    if (!game.timed || anchor.dated != Dated::kKnown || time.run != anchor.at.run) continue;
    game.start = start(time);
    game.dated = Dated::kKnown;
  }
}

std::vector<Stretch> CutLogs(const std::vector<std::string_view>& logs, std::size_t bytes) {
  std::vector<Stretch> stretches;
  for (std::size_t log = 0; log < logs.size(); ++log) {
    const std::size_t size = logs[log].size();
    std::size_t begin = 0;
    while (size - begin > bytes) {
      const std::size_t end = FindGame(logs[log], begin + bytes);
      stretches.push_back({log, begin, end});
      begin = end;
    }
    if (begin < size) stretches.push_back({log, begin, size});
  }
  return stretches;
}

std::vector<ParsedLog> ParseLogs(const std::vector<std::string_view>& logs, bool keepEvents,
                                 const std::function<void(const Stretch&)>& done,
                                 unsigned threads) {
  const std::vector<Stretch> stretches = CutLogs(logs, kStretchBytes);
  const Vocabulary known = stretches.size() > 1 ? FirstNames(logs[stretches[0].log]) : Vocabulary();
  std::vector<ParsedLog> parts(stretches.size());
  std::atomic<std::size_t> next = 0;
  const auto work = [&] {
    for (std::size_t i = next++; i < stretches.size(); i = next++) {
      const Stretch& stretch = stretches[i];
      const std::size_t size = stretch.end - stretch.begin;
      parts[i] = Parser(logs[stretch.log].substr(stretch.begin, size), keepEvents, known).Run();
      MoveTo(parts[i], stretch.begin);
      done(stretch);
    }
  };
  if (threads == 0) threads = std::thread::hardware_concurrency();
  platform::RunOnThreads(std::min<std::size_t>(threads, stretches.size()), work);
  std::vector<ParsedLog> result(logs.size());
  for (std::size_t i = 0; i < stretches.size(); ++i) {
    Append(result[stretches[i].log], std::move(parts[i]));
  }
  return result;
}

}  // namespace morvane
