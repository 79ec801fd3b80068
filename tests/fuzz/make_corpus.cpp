// Makes the inputs that the targets begin with:
//   make_corpus FOLDER SHARE    a folder in FOLDER for each target; SHARE: what is shipped

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "morvane/log/log_parser.h"
#include "morvane/store/game_record.h"
#include "tests/fuzz/target.h"
#include "tests/morvane/test_support.h"
#include "tests/support/files.h"

namespace {

namespace fs = std::filesystem;
using Inputs = std::vector<std::string>;
using morvane::test::Duel;
using morvane::test::Init;
using morvane::test::Join;
using morvane::test::JoinBot;
using morvane::test::Kill;
using morvane::test::kShutdown;

void Write(const fs::path& folder, const Inputs& inputs) {
  fs::remove_all(folder);
  for (std::size_t i = 0; i < inputs.size(); ++i) {
    support::WriteFile(folder / std::to_string(i), inputs[i]);
  }
}

/// Parts, and in them fields between "|".
std::string Parts(const std::vector<std::string>& parts) {
  std::string input;
  for (std::string part : parts) {
    if (!input.empty()) {
      for (char& c : part) c = c == '|' ? fuzz::kField : c;
    }
    input += part + fuzz::kPart;
  }
  input.pop_back();
  return input;
}

/// A text of ASCII as a file in UTF-16.
std::string Utf16(std::string_view text) {
  std::string bytes = "\xFF\xFE";
  for (const char c : text) bytes.append({c, '\0'});
  return bytes;
}

Inputs ProfileTexts() {
  return {
      Parts({"[a]\nk=1\n;c\n\n[b]\r\nj=\"2\"\r\n", "s|a|k|3", "e|a", "s|new|x| y"}),
      Parts({"\xEF\xBB\xBF[a\n=x\r// c\n[ A ] x\nK = v", "h", "s|A|K=j|'q'", "e|A"}),
      Parts({"top\n\n\n[a]\n[a]\nk=\xE9\x80", "s|a|\xC3\xA9|\xE9", "s|a||v", "s|[a|k|v"}),
      Parts({Utf16("[a]\n"), "s|a|k|v", "e|a", "h"}),
      Parts({"\n\xFE\xFF=1\n[a]", "e|a", "s|a|;k|v", "s|a|//k|v", "s|a|[k|v"}),
      Parts({"", "s|a b|k \n l|v\r\nw", "s|A B|K   L|", "s|]|k|v"}),
  };
}

Inputs UserVars() {
  const std::string file = "[Main]\nsrc_path=x\n\n\n[USER VARS]\n; c\ntitle=a, b\nother\n";
  return {
      Parts({file, "title|My site", "Title|mine", "a=b|c", "|empty"}),
      Parts({file, "[x|1", ";y|2", " z |\"3\"", "caf\xE9|\xC3\xA9"}),
      Parts({"[user vars]\r\nx=1\r\n[Main]\r\n[User Vars]\r\ny=2", "x|2\r\n3"}),
      Parts({"", std::string("long|") + std::string(300, 'x')}),
  };
}

Inputs Colors() {
  return {"#FF8000",   "f80",    "&H0080FF",        "255",  "cyan",    "-1",        "99999999999",
          "^1Vis^2or", "^^1<b>", "\xE2\x80\xAE^8x", " ^7 ", "caf\xE9", "a\tb\x07^", "#12345"};
}

/// Logs so short that each line matters.
Inputs Logs() {
  Inputs inputs = {Duel("Ann", "^1Bob", 3), Duel("a", "A", 1, "x") + Init("q3dm6", 3),
                   Init() + JoinBot(0, "Ann") + Join(1, "Bob", 2) + Kill(1022, 0, "LAVA") +
                       Kill(1, 1, "ROCKET_SPLASH") + kShutdown + Duel("Bob", "Ann", 2)};
  const std::string open =
      "  0:00 InitGame: \\g_gametype\\4\\mapname\\q3ctf1\n  0:00 ClientUserinfoChanged: 0 "
      "n\\A\\t\\1\n  0:00 ClientBegin: 0\n";
  inputs.push_back(open +
                   "  0:01 Warmup:\n  0:02 InitRound:\n  0:03 Kill: 0 0 1: by MOD_X\n  0:01 Exit: "
                   "x hit.\n  0:01 red:3  blue:2\n  0:01 score: -3  ping: 1  client: 0 A\n");
  inputs.push_back(open +
                   "  0:04 Award: 0 1: A gained the EXCELLENT award!\n  0:05 CTF: 0 1 2: A got the "
                   "RED flag!\n  0:06 Item: 0 item_quad\n  0:07 ServerTime: 20261123070000\n" +
                   open);
  inputs.push_back(
      "12.3 InitGame: \\mapname\\x\n12.+ ClientConnect: 63\nKill: 1022 63 5: by "
      "MOD_A\n1000:1ShutdownGame:\n");
  inputs.push_back(
      "InitGame: \\mapname\\X\\g_gametype\\9\r\nClientUserinfoChanged: 1 n\\B\\t\\3\\skill\\ "
      "3\r\nClientBegin: 1\r\nClientUserinfoChanged: 1 n\\B\\t\\2\r\nClientDisconnect: "
      "1\r\nClientConnect: 1\r\nKill: 1 1 3: by MOD_Y\r\n");
  return inputs;
}

Inputs Records(const Inputs& logs) {
  Inputs inputs;
  for (const std::string& log : logs) {
    for (const morvane::Game& game : morvane::ParseLog(log, true).games) {
      inputs.push_back(static_cast<char>(morvane::kRecordVersion) + PackGame(game));
    }
  }
  return inputs;
}

Inputs Templates(const fs::path& share) {
  Inputs inputs = {
      "{{name}} {{{name}}} {{&name}}\n{{#players}}{{name}}: {{score}}{{^no}},{{/no}}\n{{/players}}",
      "{{! title: T }}\n{{! split: players }}\n{{=<% %>=}}<%name%><%={{ }}=%>{{players.name}}{{.}}",
      "{{> page}}", "{{#yes}}{{#yes}}{{/yes}}{{/no}}", "{{> _none }} {{"};
  for (const auto& file : fs::directory_iterator(share / "templates")) {
    const std::string text = support::ReadFile(file.path());
    if (text.size() < 600 && text.find("{{>") == text.npos) inputs.push_back(text);
  }
  return inputs;
}

Inputs Rankings() {
  return {
      Parts({"kill.killer = rank + 16 * (1 - 1 / (1 + 10 ^ ((other - rank) / 400)))\n; c\nworld=0",
             "Ann = Bob\n"}),
      Parts({"suicide = rank - mod // c\ngame.win = min(rank, 3, kills) ? players : "
             "place\ngame.placed = 1/0",
             "- Ann\n"}),
      Parts({"kill.victim = a = 3, 4\nteamkill = sqrt(0-deaths)\nx = 1\nno rule",
             "\"A = n\" = \"Bob\"\nBob = Bob\nx\n"}),
      Parts({"game.win = rank && minutes || !rank\ngame.win = 2\nsuicide = 1e999",
             "// c\nAnn = Bob\nBob = Ann\n- Cid\n- Cid"}),
  };
}

Inputs Registries() {
  return {
      "Windows Registry Editor Version "
      "5.00\r\n\r\n[HKEY_LOCAL_MACHINE\\a]\r\n@=\"x\"\r\n\"PATH\"=\"c:\\\\d \\\"e\\\"\"\r\n",
      "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Quillon]\n\"b\"=dword:0000002a\n\"PATH\"=hex(1):41,00,\\\n  "
      "3d,d8,00\n\"b\"=-\n",
      "\xEF\xBB\xBF[HKEY_LOCAL_MACHINE\\A]\n@=hex:01,2,\n[-HKEY_LOCAL_MACHINE\\a]\n\"\"=hex(7\n",
      Utf16("[HKEY_LOCAL_MACHINE\\a]\n@=\"x\"\n\"b\"=hex(2):3d,d8\n"),
  };
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const fs::path folder = argv[1];
  const Inputs logs = Logs();
  Write(folder / "profile_text", ProfileTexts());
  Write(folder / "user_vars", UserVars());
  Write(folder / "colors", Colors());
  Write(folder / "log", logs);
  Write(folder / "record", Records(logs));
  Write(folder / "template", Templates(argv[2]));
  Write(folder / "ranking", Rankings());
  Write(folder / "registry", Registries());
  return 0;
}
