#include "morvane/log/log_parser.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <utility>

#include "morvane/log/game_builder.h"
#include "morvane/log/known_tails.h"
#include "morvane/log/line_reader.h"
#include "morvane/log/log_line.h"
#include "morvane/log/server_dates.h"
#include "text/text.h"

namespace morvane {
namespace {

// Longer ones come from no game; they are cut so that a hostile log cannot fill the memory.
constexpr std::size_t kLongestName = 128;
constexpr std::size_t kLongestWord = 64;

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

/// The slot of a number of one or two digits and nothing else; GameBuilder::kSlots for another
/// text.
std::size_t SlotOf(std::string_view digits) {
  if (digits.empty() || digits.size() > 2) return GameBuilder::kSlots;
  const auto digit = [](char c) {
    return static_cast<std::size_t>(static_cast<unsigned char>(c - '0'));
  };
  const std::size_t tens = digits.size() == 2 ? digit(digits.front()) : 0;
  const std::size_t ones = digit(digits.back());
  return tens > 9 || ones > 9 ? GameBuilder::kSlots
                              : std::min(tens * 10 + ones, GameBuilder::kSlots);
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

constexpr std::array<bool, 256> WordCharacters() {
  std::array<bool, 256> table{};
  for (std::size_t c = 0; c < table.size(); ++c) {
    table[c] =
        (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
  }
  return table;
}
constexpr std::array<bool, 256> kIsWordCharacter = WordCharacters();

/// The word at the start of a text.
std::string_view Word(std::string_view text) {
  const std::size_t most = std::min(text.size(), kLongestWord);
  std::size_t size = 0;
  while (size < most && kIsWordCharacter[static_cast<unsigned char>(text[size])]) ++size;
  return text.substr(0, size);
}

constexpr std::string_view kBy = " by ";

/// What follows the kBy of "... by MOD_NAME ...". Players' names stand before it and may hold
/// anything, so the last one counts.
std::string_view TextAfterBy(std::string_view text) {
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

/// Whether a stamp is 0:00, or the odd tenth that a mod is off.
bool IsZero(std::int64_t tenths) { return tenths < 10; }

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
  /// The number of "MOD_NAME ...", which follows a kBy; Names::kUnknown where it begins with no
  /// name.
  std::uint16_t WeaponOf(std::string_view means);
  void Item(std::string_view text);
  void TakeNewItem(std::string_view text);
  void Userinfo(std::string_view text);
  void Score(std::string_view text);
  void TeamScores(std::string_view text);
  void Award(std::string_view text);
  void Flag(std::string_view text);
  void Achieve(std::string_view text, std::optional<Feat> feat);
  void Exit(std::string_view text);
  void Damaged(std::string_view what);

  LineReader reader_;
  LineCutter cutter_;
  GameBuilder game_;
  ParsedLog log_;
  ServerDates dates_;
  KnownTails weaponTails_;  // " by MOD_NAME"
  KnownTails itemTails_;    // " name"
  std::size_t size_;
  GameTime time_;             // of the open game; its date is that of `datedAt_`
  std::int64_t datedAt_ = 0;  // on the log's clock
  static constexpr std::size_t kMany = 4096;
  std::size_t dropAt_ = kMany;  // so many games are looked through for empty ones
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
  const LogLine cut = cutter_.Cut(line);
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
  log_.clock += std::max<std::int64_t>(0, line.tenths - log_.lastStamp);
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
    if (!log_.hasGame && IsGameText(text)) ++log_.strayLines;
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
  log_.hasGame = true;
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
  const std::int64_t date = dates_.Read(text);
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
  if (log_.games.size() < dropAt_) return;
  DropEmptyGames(log_);
  dropAt_ = kMany + 2 * log_.games.size();
}

void Parser::Kill(std::string_view text) {
  int killer = 0;
  std::size_t victim = 0;
  if (!TakeNumber(text, killer) || !TakeSlot(text, victim)) return Damaged("kill");
  const std::uint16_t known = weaponTails_.Find(reader_.UpToLineEnd()).number;
  const std::uint16_t weapon = known != Names::kUnknown ? known : WeaponOf(TextAfterBy(text));
  if (weapon == Names::kUnknown) return Damaged("kill");
  const bool isClient = killer >= 0 && killer < static_cast<int>(GameBuilder::kSlots);
  game_.Kill(isClient ? static_cast<std::size_t>(killer) : GameBuilder::kWorld, victim, weapon);
}

std::uint16_t Parser::WeaponOf(std::string_view means) {
  const std::string_view word = Word(means);
  std::string_view name = word;
  Take(name, "MOD_");
  if (name.empty()) return Names::kUnknown;
  const std::uint16_t weapon = log_.vocabulary.weapons.Number(name);
  if (word.size() == means.size()) {  // nearly always nothing follows the name
    weaponTails_.Add({means.data() - kBy.size(), means.size() + kBy.size()}, weapon);
  }
  return weapon;
}

void Parser::Item(std::string_view text) {
  const KnownTails::Tail tail = itemTails_.Find(reader_.UpToLineEnd());
  if (tail.size < text.size() && tail.number != Names::kUnknown) {
    const std::size_t slot = SlotOf(text.substr(0, text.size() - tail.size));
    if (slot < GameBuilder::kSlots) return game_.TakeItem(slot, tail.number);
  }
  TakeNewItem(text);
}

void Parser::TakeNewItem(std::string_view text) {
  std::size_t slot = 0;
  if (!TakeSlot(text, slot) || !Take(text, " ")) return Damaged("item");
  const std::string_view name = Word(text);
  if (name.empty()) return Damaged("item");
  const std::uint16_t item = log_.vocabulary.items.Number(name);
  const bool isNew = itemTails_.Find(reader_.UpToLineEnd()).number == Names::kUnknown;
  if (isNew && name.size() == text.size()) {
    itemTails_.Add({text.data() - 1, text.size() + 1}, item);
  }
  game_.TakeItem(slot, item);
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

}  // namespace

void DropEmptyGames(ParsedLog& log, std::size_t first) {
  std::size_t kept = first;
  for (std::size_t i = first; i < log.games.size(); ++i) {
    const bool isOpen = log.openAtEnd && i + 1 == log.games.size();
    if (log.games[i].entrants.empty() && log.times[i].date == 0 && !isOpen) continue;
    if (kept != i) log.games[kept] = std::move(log.games[i]);
    log.times[kept] = log.times[i];
    log.texts[kept++] = log.texts[i];
  }
  log.emptyGames += log.games.size() - kept;
  const auto shorten = [kept](auto& list) {
    const bool isMost = kept < list.size() / 2;
    list.resize(kept);
    if (isMost) list.shrink_to_fit();
  };
  shorten(log.games);
  shorten(log.times);
  shorten(log.texts);
}

ParsedLog ParseLog(std::string_view log, bool keepEvents, const Vocabulary& known) {
  return Parser(log, keepEvents, known).Run();
}

}  // namespace morvane
