// settings_bench FOLDER SETTINGS: loads and saves settings files with 0 to 20,000 logs, made in
// FOLDER from the shipped SETTINGS, as the editor does, and does the same with the same keys by
// SimpleIni, by QSettings and, without looking at them, by plain reading and writing. Prints rows
// of the table of bench/run.sh: ratios of processor time, medians of runs taken by turns, with the
// clock's behind.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <QSettings>
#include <QString>

#define SI_NO_CONVERSION  // bytes, as they are
#include <SimpleIni.h>

#include "bench/measure.h"
#include "config/settings.h"
#include "config/user_vars.h"
#include "platform/replace_file.h"

namespace {

using bench::Cost;
using config::Encoding;
using config::Setting;
using config::SettingsFile;

constexpr int kRuns = 15;

/// A key of the settings with its value.
struct Key {
  std::string section;
  std::string name;
  std::string value;
};
using Keys = std::vector<Key>;

[[noreturn]] void Fail(const std::string& what) {
  std::fprintf(stderr, "settings_bench: %s\n", what.c_str());
  std::exit(1);
}

/// Calls `visit` with each setting, or for lists with their entries, as the editor loads them.
template <class Value, class Entries>
void Visit(const SettingsFile& file, const Value& value, const Entries& entries) {
  for (const Setting& setting : config::Settings()) {
    if (setting.encoding == Encoding::kEntries) {
      const std::string_view second =
          setting.secondConstant.empty() ? setting.secondKey : std::string_view();
      entries(setting,
              config::ReadEntries(file, setting.section, setting.countKey, setting.key, second));
    } else if (setting.encoding == Encoding::kUserVariables) {
      entries(setting, config::LoadUserVars(file));
    } else {
      value(setting, file.ReadIni(setting.section, setting.key));
    }
  }
}

std::size_t Load(const std::string& folder) {
  std::size_t bytes = 0;
  Visit(
      SettingsFile(folder),
      [&](const Setting& /*setting*/, const std::string& value) { bytes += value.size(); },
      [&](const Setting& /*setting*/, const std::vector<config::Entry>& entries) {
        for (const config::Entry& entry : entries) bytes += entry.first.size();
      });
  return bytes;
}

void AddEntries(Keys& keys, const Setting& setting, const std::vector<config::Entry>& entries) {
  int number = 0;
  for (const config::Entry& entry : entries) {
    const std::string section(setting.section);
    if (setting.encoding == Encoding::kUserVariables) {
      keys.push_back({section, entry.first, entry.second});
      continue;
    }
    const std::string index = std::to_string(number++);
    keys.push_back({section, std::string(setting.key) + index, entry.first});
    if (setting.secondKey.empty()) continue;
    const std::string_view second =
        setting.secondConstant.empty() ? entry.second : setting.secondConstant;
    keys.push_back({section, std::string(setting.secondKey) + index, std::string(second)});
  }
}

/// What a save writes; loading reads it all but the constant ones.
Keys KeysOf(const std::string& folder) {
  Keys keys;
  Visit(
      SettingsFile(folder),
      [&](const Setting& setting, const std::string& value) {
        keys.push_back({std::string(setting.section), std::string(setting.key), value});
      },
      [&](const Setting& setting, const std::vector<config::Entry>& entries) {
        AddEntries(keys, setting, entries);
      });
  return keys;
}

Keys WithoutConstants(Keys keys) {
  std::erase_if(keys, [](const Key& key) { return key.name.starts_with("logtype"); });
  return keys;
}

void Save(const std::string& folder, const Keys& keys) {
  SettingsFile file(folder);
  config::ClearSections(file, [] {});
  for (const Key& key : keys) file.WriteIni(key.section, key.name, key.value);
  file.SpaceHeaders();
  if (const std::string failure = file.Store(); !failure.empty()) Fail(failure);
}

std::size_t LoadSimpleIni(const std::string& path, const Keys& keys) {
  CSimpleIniA ini;
  if (ini.LoadFile(path.c_str()) < 0) Fail("SimpleIni cannot load");
  std::size_t bytes = 0;
  for (const Key& key : keys) {
    bytes += std::string(ini.GetValue(key.section.c_str(), key.name.c_str(), "")).size();
  }
  return bytes;
}

void SetAll(CSimpleIniA& ini, const Keys& keys) {
  for (const char* section : {"Main", "HTML", "Logs", "Game", "KILL TABLES", "TEMPLATES"}) {
    ini.Delete(section, nullptr);
  }
  for (const Key& key : keys) {
    ini.SetValue(key.section.c_str(), key.name.c_str(), key.value.c_str());
  }
}

void SaveSimpleIni(const std::string& path, const Keys& keys) {
  CSimpleIniA ini;
  if (ini.LoadFile(path.c_str()) < 0) Fail("SimpleIni cannot load");
  SetAll(ini, keys);
  if (ini.SaveFile(path.c_str(), false) < 0) Fail("SimpleIni cannot save");
}

/// With the promise that the editor's saves give: whatever happens, the old or the new file.
void SaveSimpleIniWhole(const std::string& path, const Keys& keys) {
  CSimpleIniA ini;
  if (ini.LoadFile(path.c_str()) < 0) Fail("SimpleIni cannot load");
  SetAll(ini, keys);
  std::string bytes;
  if (ini.Save(bytes, false) < 0) Fail("SimpleIni cannot save");
  if (platform::ReplaceFile(path, bytes)) Fail("cannot replace the file");
}

QString PathOf(const Key& key) { return QString::fromStdString(key.section + "/" + key.name); }

qsizetype LoadQSettings(const std::string& path, const Keys& keys) {
  const QSettings settings(QString::fromStdString(path), QSettings::IniFormat);
  qsizetype length = 0;
  for (const Key& key : keys) length += settings.value(PathOf(key)).toString().size();
  return length;
}

void SaveQSettings(const std::string& path, const Keys& keys) {
  QSettings settings(QString::fromStdString(path), QSettings::IniFormat);
  settings.clear();
  for (const Key& key : keys) settings.setValue(PathOf(key), QString::fromStdString(key.value));
  settings.sync();
  if (settings.status() != QSettings::NoError) Fail("QSettings cannot save");
}

std::string Read(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void Write(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary)
      .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

/// Makes the settings file with so many logs, and copies of it for the peers.
Keys Prepare(const std::string& folder, const std::string& shipped, int logs) {
  Write(folder + "/morvane.cfg", Read(shipped));
  SettingsFile file(folder);
  file.WriteIni("Logs", "number_of_logs", std::to_string(logs));
  for (int i = 0; i < logs; ++i) {
    const std::string number = std::to_string(i);
    file.WriteIni("Logs", "logpath" + number, "/srv/quake3/server/baseq3/games_" + number + ".log");
    file.WriteIni("Logs", "logtype" + number, "1000");
  }
  if (const std::string failure = file.Store(); !failure.empty()) Fail(failure);
  Keys keys = KeysOf(folder);
  Save(folder, keys);
  for (const char* peer : {"/simple.ini", "/whole.ini"}) Write(folder + peer, Read(file.Path()));
  SaveQSettings(folder + "/qsettings.ini", keys);
  return keys;
}

using Works = std::vector<std::pair<std::string, std::function<void()>>>;

/// What each of the works costs, measured by turns.
std::map<std::string, Cost> Measure(const Works& works) {
  std::map<std::string, std::vector<Cost>> costs;
  for (int run = 0; run < kRuns; ++run) {
    for (const auto& [name, work] : works) costs[name].push_back(bench::CostOf(work));
  }
  std::map<std::string, Cost> medians;
  for (const auto& [name, all] : costs) medians[name] = bench::Median(all);
  return medians;
}

/// Prints the first of the works against the second, and behind it against the others.
Cost PrintRatios(const std::string& what, const Works& works) {
  const std::map<std::string, Cost> costs = Measure(works);
  const Cost own = costs.at(works.front().first);
  std::string ratios;
  std::string peers;
  for (std::size_t i = 1; i < works.size(); ++i) {
    const Cost peer = costs.at(works[i].first);
    const bool isFirst = i == 1;
    peers += (isFirst ? "" : i == 2 ? " (" : "; ") + works[i].first;
    ratios += (isFirst ? "" : i == 2 ? " (" : "; ") + bench::Fixed(own.processor / peer.processor);
  }
  bench::PrintRow(what, peers + ")",
                  ratios + "), " + bench::Fixed(own.processor * 1000) + " ms of processor time, " +
                      bench::Fixed(own.clock * 1000) + " on the clock",
                  "below 0.5");
  return own;
}

/// Saves another value each time, or there would be nothing to save.
void Toggle(Keys& keys) {
  Key& key = keys.front();
  key.value = key.value == "0" ? "1" : "0";
}

std::pair<Cost, Cost> MeasureLogs(const std::string& folder, const std::string& shipped, int logs) {
  Keys keys = Prepare(folder, shipped, logs);
  const std::string bytes = Read(folder + "/morvane.cfg");
  std::size_t seen = 0;
  const std::string count = std::to_string(logs) + " logs: ";
  const Keys loaded = WithoutConstants(keys);
  const Cost load =
      PrintRatios(count + "load",
                  {{"", [&] { seen += Load(folder); }},
                   {"SimpleIni", [&] { seen += LoadSimpleIni(folder + "/simple.ini", loaded); }},
                   {"QSettings", [&] { LoadQSettings(folder + "/qsettings.ini", loaded); }},
                   {"plain reading", [&] { seen += Read(folder + "/morvane.cfg").size(); }}});
  const Cost save = PrintRatios(
      count + "save",
      {{"", [&] { Toggle(keys), Save(folder, keys); }},
       {"SimpleIni, file replaced likewise",
        [&] { SaveSimpleIniWhole(folder + "/whole.ini", keys); }},
       {"SimpleIni, file overwritten", [&] { SaveSimpleIni(folder + "/simple.ini", keys); }},
       {"QSettings", [&] { SaveQSettings(folder + "/qsettings.ini", keys); }},
       {"plain writing", [&] { Write(folder + "/plain", bytes); }}});
  if (seen == 0) Fail("nothing was read");
  return {load, save};
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) Fail("FOLDER SETTINGS");
  std::map<int, std::pair<Cost, Cost>> costs;
  for (const int logs : {0, 200, 2000, 20000}) costs[logs] = MeasureLogs(argv[1], argv[2], logs);
  const auto perLog = [&](Cost std::pair<Cost, Cost>::*what) {
    return bench::Fixed((costs[20000].*what).processor / (costs[2000].*what).processor);
  };
  bench::PrintRow("20000 logs: load", "2000 logs", perLog(&std::pair<Cost, Cost>::first),
                  "linear: about 10");
  bench::PrintRow("20000 logs: save", "2000 logs", perLog(&std::pair<Cost, Cost>::second),
                  "linear: about 10");
}
