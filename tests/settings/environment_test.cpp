#include "settings/environment.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "settings/folders.h"

namespace vesko {
namespace {

Environment fake(std::map<std::string, std::string, std::less<>> variables) {
  return [variables = std::move(variables)](std::string_view name) -> std::optional<std::string> {
    auto it = variables.find(name);
    if (it == variables.end() || it->second.empty()) return std::nullopt;
    return it->second;
  };
}

TEST(EnvironmentTest, PreferredLanguages) {
  struct Row {
    std::map<std::string, std::string, std::less<>> variables;
    std::vector<std::string> expected;
  };
  const Row rows[] = {
      {{{"LANG", "fr_CA.UTF-8"}}, {"fr-CA"}},
      {{{"LANG", "de_DE.UTF-8"}}, {"de-DE"}},
      {{{"LANG", "zh_TW.UTF-8"}}, {"zh-TW"}},
      {{{"LANG", "sr_RS.UTF-8@latin"}}, {"sr-RS"}},
      {{{"LANGUAGE", "zh_HK:zh_TW:en"}, {"LANG", "en_US.UTF-8"}},
       {"zh-HK", "zh-TW", "en", "en-US"}},
      {{{"LC_ALL", "pl_PL.UTF-8"}, {"LC_MESSAGES", "ru_RU.UTF-8"}, {"LANG", "th_TH.UTF-8"}},
       {"pl-PL"}},
      {{{"LC_MESSAGES", "ru_RU.UTF-8"}, {"LANG", "th_TH.UTF-8"}}, {"ru-RU"}},
      {{{"LANGUAGE", "fr_FR::fr_FR"}, {"LANG", "fr_FR.UTF-8"}}, {"fr-FR"}},
      {{{"LANG", "C.UTF-8"}}, {}},  // no language at all: the caller's default applies
      {{{"LC_ALL", "POSIX"}, {"LANG", "fr_FR.UTF-8"}}, {}},
      {{}, {}},
  };
  for (const auto& row : rows) {
    std::string trace;
    for (const auto& [name, value] : row.variables) trace += name + "=" + value + " ";
    SCOPED_TRACE(trace);
    EXPECT_EQ(preferredLanguages(fake(row.variables)), row.expected);
  }
}

TEST(FoldersTest, VeskoHomeHoldsAllThree) {
  auto folders = Folders::fromEnvironment(
      fake({{"VESKO_HOME", "/srv/vesko-test"}, {"HOME", "/home/ana"}, {"XDG_STATE_HOME", "/x"}}));
  EXPECT_EQ(folders.data, "/srv/vesko-test/data");
  EXPECT_EQ(folders.logFile(), "/srv/vesko-test/state/debug.log");
  EXPECT_EQ(folders.settingsFile(), "/srv/vesko-test/config/settings.json");
}

TEST(FoldersTest, XdgFoldersAndTheirDefaults) {
  auto defaults = Folders::fromEnvironment(fake({{"HOME", "/home/ana"}}));
  EXPECT_EQ(defaults.data, "/home/ana/.local/share/Vesko");
  EXPECT_EQ(defaults.state, "/home/ana/.local/state/Vesko");
  EXPECT_EQ(defaults.config, "/home/ana/.config/Vesko");

  auto set = Folders::fromEnvironment(fake({{"HOME", "/home/ana"},
                                            {"XDG_DATA_HOME", "/data"},
                                            {"XDG_STATE_HOME", "relative/state"},
                                            {"XDG_CONFIG_HOME", "/conf"}}));
  EXPECT_EQ(set.data, "/data/Vesko");
  EXPECT_EQ(set.state, "/home/ana/.local/state/Vesko");  // a relative value is ignored
  EXPECT_EQ(set.config, "/conf/Vesko");
}

}  // namespace
}  // namespace vesko
