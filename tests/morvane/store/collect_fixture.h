#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "morvane/report/report.h"
#include "morvane/store/collect.h"
#include "tests/morvane/test_support.h"

namespace morvane {

/// Runs over logs in a folder, with what they say.
class CollectTest : public testing::Test, protected Report {
 protected:
  void Write(const Message& message) override {
    said_ += (message.severe ? "severe " : "") + message.file + ": " + message.text + "\n";
  }
  void Progress(std::string_view, std::size_t, std::size_t) override {
    const std::lock_guard guard(reading_);  // threads tell how far they are
    if (const auto act = std::exchange(whileReading_, nullptr)) act();
  }

  std::filesystem::path At(const std::string& name) const { return folder_.Path() / name; }
  void Log(const std::string& name, const std::string& text) const {
    test::WriteFile(At(name), text);
    std::filesystem::last_write_time(At(name), std::filesystem::file_time_type::clock::now() -
                                                   std::chrono::hours(1000) +
                                                   std::chrono::seconds(++clock_));
  }
  std::vector<Game> Collect(const std::vector<std::string>& logs, bool useDatabase = true) {
    Sources sources;
    for (const std::string& log : logs) sources.logs.push_back({log, At(log).string()});
    sources.useDatabase = useDatabase;
    sources.databasePath = At("db").string();
    said_.clear();
    return CollectGames(sources, *this).games;
  }
  /// The kills of each game after a run, in order: "6 7 ".
  std::string Kills(const std::vector<std::string>& logs, bool useDatabase = true) {
    std::string text;
    for (const Game& game : Collect(logs, useDatabase)) text += std::to_string(game.kills) + " ";
    return text;
  }
  bool Said(const std::string& text) const { return said_.find(text) != said_.npos; }

  test::TempFolder folder_;
  std::string said_;
  std::mutex reading_;
  std::function<void()> whileReading_;  // done once, when the first log has been read
  mutable int clock_ = 0;
  const std::string one_ = test::Duel("Ann", "Bob", 6);
  const std::string two_ = test::Duel("Cid", "Bob", 7);
  const std::string third_ = test::Duel("Dan", "Bob", 9);
  const std::string fourth_ = test::Duel("Ann", "Cid", 8);
  const std::string empty_ = test::Duel("Ann", "Bob", 0);
};

}  // namespace morvane
