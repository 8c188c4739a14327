// `vesko probe` and `vesko doctor` where there is no desktop: bad input fails with exit 2, and the
// doctor still answers, saying what is missing in its JSON shape.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "support/run_command.h"
#include "support/temp_dir.h"

namespace {

using nlohmann::json;

// The CLI with no X display and no session bus, in a fresh home.
std::string withoutDesktop(const vesko::testing::TempDir& home, const std::string& arguments) {
  return "env -u DISPLAY DBUS_SESSION_BUS_ADDRESS=unix:path=" + home.path().string() +
         "/no-bus VESKO_HOME=" + home.path().string() + " " + VESKO_CLI + " " + arguments;
}

TEST(ProbeCommandTest, BadInputFailsWithExitTwo) {
  vesko::testing::TempDir home;
  const char* cases[] = {"probe --at 12",   "probe --at x,3",
                         "probe --at 3,-4", "probe --at 1,2 --langs zh,xx",
                         "probe",           "doctor --langs klingon"};
  for (const char* arguments : cases) {
    SCOPED_TRACE(arguments);
    auto run = vesko::testing::runCommand(withoutDesktop(home, arguments) + " 2>/dev/null");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
  }
}

TEST(ProbeCommandTest, DoctorSaysWhatIsMissingWithoutADesktop) {
  vesko::testing::TempDir home;
  auto run = vesko::testing::runCommand(withoutDesktop(home, "doctor --json --langs zh,th"));
  EXPECT_EQ(run.status, 0);
  const json report = json::parse(run.out, nullptr, false);
  ASSERT_TRUE(report.is_object()) << run.out;
  EXPECT_EQ(report["ok"], false);
  EXPECT_EQ(report["langs"], json::array({"zh", "th"}));
  std::vector<std::string> names;
  for (const auto& check : report["checks"]) {
    names.push_back(check["check"]);
    ASSERT_TRUE(check["ok"].is_boolean());
    ASSERT_TRUE(check["detail"].is_string());
    // Advice only where something is missing, and then always.
    EXPECT_EQ(check["advice"].is_null(), check["ok"].get<bool>()) << check.dump();
  }
  const std::vector<std::string> expected = {
      "display", "accessibility bus", "accessibility switch", "recognition languages",
      "fonts",   "credential store"};
  EXPECT_EQ(names, expected);
  EXPECT_EQ(report["checks"][0]["ok"], false);  // no DISPLAY
  EXPECT_EQ(report["checks"][1]["ok"], false);  // no session bus
  EXPECT_EQ(report["checks"][5]["ok"], false);
}

TEST(ProbeCommandTest, ReadingAPointWithoutABusFindsNothing) {
  vesko::testing::TempDir home;
  auto run = vesko::testing::runCommand(
      withoutDesktop(home, "probe --json --at 10,20 --langs zh --cedict " +
                               std::string(VESKO_TEST_DATA) + "/cedict_small.txt"));
  EXPECT_EQ(run.status, 0);
  const json report = json::parse(run.out, nullptr, false);
  ASSERT_TRUE(report.is_object()) << run.out;
  EXPECT_EQ(report["point"], (json{{"x", 10.0}, {"y", 20.0}}));
  EXPECT_TRUE(report["method"].is_null());
  EXPECT_TRUE(report["text"].is_null());
  EXPECT_TRUE(report["index"].is_null());
  EXPECT_EQ(report["result"]["kind"], "none");
  ASSERT_EQ(report["stages"].size(), 1u);
  EXPECT_EQ(report["stages"][0]["stage"], "accessibility");
}

}  // namespace
