// The keys in the Secret Service of the headless desktop (scripts/headless-desktop starts
// gnome-keyring with an unlocked default collection; the ctest fixture e2e_desktop runs it): the
// store's round trip through libsecret, then `vesko key` saving, showing and clearing a key that
// must never be printed. Skipped when the keyring cannot be reached, unless VESKO_REQUIRE_DATA is
// set, when that is a failure.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <random>
#include <string>

#include "e2e/e2e_desktop.h"
#include "platform/linux/secret/secret_service_store.h"
#include "support/run_command.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

using nlohmann::json;

// The desktop's variables, DBUS_SESSION_BUS_ADDRESS among them, are exported into this process
// before libsecret first connects, so that it and every child reach the desktop's keyring.
bool enterDesktop() { return e2e::enterDesktop(VESKO_E2E_RUN); }

std::string fileText(const std::filesystem::path& path) {
  std::ifstream in(path);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

class SecretServiceE2ETest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(enterDesktop()) << "no headless desktop: run through ctest (fixture e2e_desktop)";
    SecretServiceStore store;
    if (auto probe = store.read(account_); !probe) {
      if (std::getenv("VESKO_REQUIRE_DATA"))
        FAIL() << "the desktop's keyring is unreachable: " << probe.error().detail;
      GTEST_SKIP() << "the desktop's keyring is unreachable: " << probe.error().detail;
    }
  }

  struct Run {
    int status = -1;
    std::string out, err;
  };
  // `vesko ARGUMENTS` with INPUT on standard input, a fresh VESKO_HOME and no key in the
  // environment, so that only the Secret Service can answer.
  Run vesko(const std::string& arguments, const std::string& input = "") {
    const auto in = home_.write("in", input);
    const auto err = home_.path() / "err";
    const std::string command =
        "env -u ANTHROPIC_API_KEY -u OPENAI_API_KEY -u DEEPSEEK_API_KEY VESKO_HOME=" +
        home_.path().string() + " " + VESKO_CLI + " " + arguments + " <" + in.string() + " 2>" +
        err.string();
    const auto finished = testing::runCommand(command);
    return {finished.status, finished.out, fileText(err)};
  }

  // An account of its own for the store's round trip, apart from the providers' accounts.
  const std::string account_ = "vesko-e2e-" + std::to_string(std::random_device{}());
  testing::TempDir home_;
};

TEST_F(SecretServiceE2ETest, SaveReadReplaceAndRemove) {
  SecretServiceStore store;
  EXPECT_EQ(store.read(account_).value_or("?"), "");
  struct Step {
    const char* saved;
    const char* readBack;
  };
  const Step steps[] = {
      {"sk-first-ключ", "sk-first-ключ"},
      {"sk-second", "sk-second"},
      {"", ""},  // saving nothing removes the key
      {"", ""},  // and removing what is not there is no failure
  };
  for (const auto& step : steps) {
    SCOPED_TRACE(step.saved);
    const auto saved = store.save(account_, step.saved);
    ASSERT_TRUE(saved) << saved.error().detail;
    const auto read = store.read(account_);
    ASSERT_TRUE(read) << read.error().detail;
    EXPECT_EQ(*read, step.readBack);
  }
}

TEST_F(SecretServiceE2ETest, KeyCommandsSaveShowAndClearWithoutPrintingTheKey) {
  const std::string key = "sk-ant-e2e-" + std::to_string(std::random_device{}()) + "-secret";
  const auto status = [this] {
    const Run run = vesko("key status --json");
    EXPECT_EQ(run.status, 0) << run.err;
    return json::parse(run.out, nullptr, false);
  };

  const Run set = vesko("key set claude", key + "\n");
  EXPECT_EQ(set.status, 0) << set.err;
  const json stored = status();
  ASSERT_TRUE(stored.is_object()) << "key status --json printed no JSON object";
  EXPECT_EQ(stored.value("secretService", false), true) << stored;
  EXPECT_EQ(stored["providers"].value("claude", "?"), "store") << stored;
  const Run human = vesko("key status");
  EXPECT_NE(human.out.find("in the Secret Service"), std::string::npos) << human.out;

  const Run clear = vesko("key clear claude");
  EXPECT_EQ(clear.status, 0) << clear.err;
  const json cleared = status();
  ASSERT_TRUE(cleared.is_object()) << "key status --json printed no JSON object";
  EXPECT_EQ(cleared["providers"].value("claude", "?"), "none") << cleared;

  for (const Run& run : {set, human, clear}) {
    EXPECT_EQ(run.out.find(key), std::string::npos);
    EXPECT_EQ(run.err.find(key), std::string::npos);
  }
  EXPECT_EQ(stored.dump().find(key), std::string::npos);
  for (const auto& entry : std::filesystem::recursive_directory_iterator(home_.path())) {
    if (entry.is_regular_file()) {
      EXPECT_EQ(fileText(entry.path()).find(key), std::string::npos) << entry.path();
    }
  }
}

}  // namespace
}  // namespace vesko
