#include "config/settings.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include "config/user_vars.h"
#include "tests/support/files.h"
#include "text/text.h"

namespace config {
namespace {

TEST(Settings, NoKeyStandsTwice) {
  std::set<std::string> keys;
  for (const Setting& setting : Settings()) {
    for (const std::string_view key : {setting.key, setting.secondKey}) {
      if (key.empty()) continue;
      EXPECT_TRUE(keys.insert(text::FoldCase(setting.section) + "/" + std::string(key)).second)
          << key;
    }
  }
}

class Lists : public testing::Test {
 protected:
  const support::TempFolder folder_;
  const std::string directory_ = folder_.Path().string();
};

TEST_F(Lists, CountsDecideHowManyEntriesThereAre) {
  SettingsFile file(directory_);
  file.WriteIni("Logs", "logpath0", "a");
  file.WriteIni("Logs", "logpath1", "");
  file.WriteIni("Logs", "logpath3", "d");
  file.WriteIni("Logs", "logtype0", "1000");
  const auto read = [&](const char* count) {
    file.WriteIni("Logs", "number_of_logs", count);
    return ReadEntries(file, "LOGS", "number_of_logs", "logpath", "logtype");
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
  SettingsFile file(directory_);
  for (const auto& [name, value] : {std::pair{"b", "1"}, {"a", "x, y"}, {"c=d", "v"}}) {
    file.WriteIni("User Vars", name, value);
  }
  EXPECT_EQ(LoadUserVars(file), (std::vector<Entry>{{"b", "1"}, {"a", "x, y"}, {"c", "d=v"}}));
  int pumps = 0;
  ClearSections(file, [&] { ++pumps; });
  EXPECT_EQ(LoadUserVars(file).size(), 0U);
  EXPECT_EQ(pumps, 14);
}

TEST_F(Lists, UserVariablesOfOneNameAreOneLine) {
  const struct {
    std::vector<Entry> variables;
    std::vector<Entry> readBack;
    std::vector<std::string> refused;
  } cases[] = {
      {{{"x", "1"}, {"y", "2"}, {"X", "3"}}, {{"x", "3"}, {"y", "2"}}, {}},
      {{{"a", " w"}, {" A ", "v"}}, {{"a", "v"}}, {}},
      {{{"a", "w"}, {"a=b", "v"}}, {{"a", "b=v"}}, {}},
      {{{"a=b", "v"}, {"a", "w"}}, {{"a", "w"}}, {}},
      {{{"", "v"}, {" ", "w"}, {"=", "x"}}, {{"", "=x"}}, {}},
      {{{"n\nm", "1"}, {"n m", "2\r\n3"}}, {{"n m", "2 3"}}, {}},
      {{{"[x", "1"}, {"a", "2"}, {" ;b", "3"}, {"//c", "4"}, {"/d", "5"}},
       {{"a", "2"}, {"/d", "5"}},
       {"[x", " ;b", "//c"}},
  };
  for (const auto& [variables, readBack, refused] : cases) {
    SettingsFile file(directory_);
    EXPECT_EQ(WriteUserVars(file, variables), refused);
    EXPECT_EQ(LoadUserVars(file), readBack);
    ASSERT_EQ(file.Store(), "");
    std::string bytes = "[USER VARS]\r\n";
    for (const Entry& line : readBack) bytes += line.first + "=" + line.second + "\r\n";
    EXPECT_EQ(support::ReadFile(file.Path()), bytes);
    std::filesystem::remove(file.Path());
  }
}

TEST_F(Lists, EverySectionOfASettingIsEmptied) {
  SettingsFile file(directory_);
  for (const Setting& setting : Settings()) file.WriteIni(setting.section, "stale", "x");
  file.WriteIni("Other", "stale", "x");
  ClearSections(file, [] {});
  for (const Setting& setting : Settings()) {
    EXPECT_FALSE(file.HasKey(setting.section, "stale")) << setting.section;
  }
  EXPECT_TRUE(file.HasKey("Other", "stale"));
}

}  // namespace
}  // namespace config
