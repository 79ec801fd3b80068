#include "config/settings.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include "text/text.h"

namespace config {
namespace {

using text::FoldCase;

TEST(Settings, NoKeyStandsTwice) {
  std::set<std::string> keys;
  for (const Setting& setting : Settings()) {
    for (const std::string_view key : {setting.key, setting.secondKey}) {
      if (key.empty()) continue;
      EXPECT_TRUE(keys.insert(FoldCase(setting.section) + "/" + std::string(key)).second) << key;
    }
  }
}

/// The settings file with the given bytes, on a disk of its own.
class Lists : public testing::Test {
 protected:
  Lists() {
    std::string name = (std::filesystem::temp_directory_path() / "listsXXXXXX").string();
    directory_ = mkdtemp(name.data());
  }
  ~Lists() override { std::filesystem::remove_all(directory_); }

  std::string directory_;
};

TEST_F(Lists, CountsDecideHowManyEntriesThereAre) {
  modIni ini(directory_);
  modIni::Stage stage(ini);
  ini.WriteIni("Logs", "logpath0", "a");
  ini.WriteIni("Logs", "logpath1", "");
  ini.WriteIni("Logs", "logpath3", "d");
  ini.WriteIni("Logs", "logtype0", "1000");
  const auto read = [&](const char* count) {
    ini.WriteIni("Logs", "number_of_logs", count);
    return ReadEntries(ini, "LOGS", "number_of_logs", "logpath", "logtype");
  };
  EXPECT_EQ(read("1"), (std::vector<Entry>{{"a", "1000"}}));
  EXPECT_EQ(read("3"), (std::vector<Entry>{{"a", "1000"}, {}, {}}));
  EXPECT_EQ(read("0").size(), 0U);
  EXPECT_EQ(read("-1").size(), 0U);
  EXPECT_EQ(read("many").size(), 0U);
  EXPECT_EQ(read("32767").size(), 32767U);
  EXPECT_EQ(read("32768").size(), 2U) << "only while the keys exist";
  EXPECT_EQ(read("1e300").size(), 2U);
}

TEST_F(Lists, UserVariablesKeepTheirOrder) {
  modIni ini(directory_);
  modIni::Stage stage(ini);
  for (const auto& [name, value] : {std::pair{"b", "1"}, {"a", "x, y"}, {"c=d", "v"}}) {
    ini.WriteIni("User Vars", name, value);
  }
  EXPECT_EQ(LoadUserVars(ini), (std::vector<Entry>{{"b", "1"}, {"a", "x, y"}, {"c", "d=v"}}));
  int pumps = 0;
  ClearSections(ini, [&] { ++pumps; });
  EXPECT_EQ(LoadUserVars(ini).size(), 0U);
  EXPECT_EQ(pumps, 14);
}

}  // namespace
}  // namespace config
