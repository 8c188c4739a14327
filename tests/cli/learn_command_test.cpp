// Runs `vesko keep`, `unkeep`, `seen`, `list`, `export` and `anki sync` as a user's script would,
// each test with VESKO_HOME in a fresh folder.

#include <gtest/gtest.h>
#include <httplib.h>

#include <atomic>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <thread>

#include "support/run_command.h"
#include "support/temp_dir.h"

namespace {

using nlohmann::json;

struct Result {
  int status = -1;
  std::string out;
  std::string err;
};

std::string readText(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

class LearnCommandTest : public ::testing::Test {
 protected:
  // `arguments` are already shell-quoted.
  Result vesko(const std::string& arguments) {
    auto err = home.path() / "err";
    std::string command = "env -u LANGUAGE -u LC_ALL -u LC_MESSAGES LANG=en_US.UTF-8 VESKO_HOME=" +
                          home.path().string() + " " + VESKO_CLI + " " + arguments +
                          " </dev/null 2>" + err.string();
    const auto finished = vesko::testing::runCommand(command);
    return {finished.status, finished.out, readText(err)};
  }
  std::filesystem::path wordsFile() const { return home.path() / "data" / "mots.json"; }

  vesko::testing::TempDir home;
};

TEST_F(LearnCommandTest, KeepPrintsTheRecordAsStored) {
  auto run = vesko(
      "keep 学习 --lang zh --reading 'xué xí' --definition 'to study' --context '我们一起学习。' "
      "--source 'Le Monde' --app Firefox --json");
  ASSERT_EQ(run.status, 0) << run.err;
  json kept = json::parse(run.out);
  EXPECT_EQ(kept["word"], "学习");
  EXPECT_EQ(kept["pinyin"], "xué xí");
  EXPECT_EQ(kept["context"], "我们一起学习。");
  EXPECT_EQ(kept["source"], "Le Monde");
  EXPECT_EQ(kept["app"], "Firefox");
  EXPECT_FALSE(kept.contains("hits"));
  EXPECT_TRUE(kept["date"].is_number_float());
  EXPECT_EQ(json::parse(readText(wordsFile())), json::array({kept}));

  run = vesko("keep 学习 --lang zh");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "kept 学习 (zh) again: 2 times\n");
  EXPECT_EQ(json::parse(vesko("list --json").out)[0]["hits"], 2);
}

TEST_F(LearnCommandTest, UnkeepAndSeenReportHitsOrNotKept) {
  ASSERT_EQ(vesko("keep Hello --lang en").out, "kept Hello (en)\n");
  vesko("keep hello --lang en");
  struct Row {
    const char* arguments;
    const char* json;
  };
  // clang-format off
  const Row rows[] = {
    {"seen HELLO --lang en --json", R"({"word":"HELLO","lang":"en","hits":2})"},
    {"seen hello --lang fr --json", R"({"word":"hello","lang":"fr","kept":false})"},
    {"unkeep hello --lang en --json", R"({"word":"hello","lang":"en","hits":1})"},
    {"unkeep Hello --lang en --json", R"({"word":"Hello","lang":"en","hits":0})"},
    {"unkeep Hello --lang en --json", R"({"word":"Hello","lang":"en","kept":false})"},
  };
  // clang-format on
  for (const auto& row : rows) {
    SCOPED_TRACE(row.arguments);
    auto run = vesko(row.arguments);
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(json::parse(run.out), json::parse(row.json));
  }
  EXPECT_EQ(json::parse(readText(wordsFile())), json::array());
}

TEST_F(LearnCommandTest, SeenIsWrittenBeforeTheCommandEnds) {
  vesko("keep été --lang fr");
  EXPECT_EQ(vesko("seen ÉTÉ --lang fr").out, "ÉTÉ (fr): seen once, kept once\n");
  json words = json::parse(readText(wordsFile()));
  EXPECT_EQ(words[0]["seen"], 1);
  EXPECT_TRUE(words[0].contains("lastSeen"));
}

TEST_F(LearnCommandTest, ListJsonIsTheFileAsStored) {
  vesko("keep un --lang fr");
  vesko("keep deux --lang fr");
  auto run = vesko("list --json");
  ASSERT_EQ(run.status, 0);
  EXPECT_EQ(json::parse(run.out), json::parse(readText(wordsFile())));
  EXPECT_EQ(vesko("list").out, "deux [fr]\nun [fr]\n");
}

TEST_F(LearnCommandTest, BadInputFailsWithOneLine) {
  struct Row {
    const char* arguments;
  };
  const Row rows[] = {{"keep '' --lang zh"},
                      {"keep word --lang ''"},
                      {"keep word"},
                      {"export --format xml out.csv"},
                      {"unkeep"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.arguments);
    auto run = vesko(row.arguments);
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_FALSE(run.err.empty());
  }
  EXPECT_FALSE(std::filesystem::exists(wordsFile()));
}

TEST_F(LearnCommandTest, BrokenFileIsKeptAsideAndTheLearnerTold) {
  std::filesystem::create_directories(wordsFile().parent_path());
  std::ofstream(wordsFile()) << "[{\"id\": \"trunc";
  auto run = vesko("keep 新 --lang zh");
  EXPECT_EQ(run.status, 0);
  EXPECT_NE(run.err.find("A data file could not be read; a copy was kept: mots.broken-"),
            std::string::npos)
      << run.err;
  int copies = 0;
  for (const auto& entry : std::filesystem::directory_iterator(wordsFile().parent_path()))
    if (entry.path().filename().string().starts_with("mots.broken-")) {
      ++copies;
      EXPECT_EQ(readText(entry.path()), "[{\"id\": \"trunc");
    }
  EXPECT_EQ(copies, 1);
  EXPECT_EQ(json::parse(readText(wordsFile()))[0]["word"], "新");
}

TEST_F(LearnCommandTest, ExportWritesAFileAnkiImports) {
  vesko(
      "keep 学习 --lang zh --reading 'xué xí' --definition 'to study, learn' --context "
      "'我们一起学习。'");
  auto file = home.path() / "words.csv";
  auto run = vesko("export --format csv " + file.string());
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(readText(file),
            "#separator:comma\n#html:true\n#columns:word,reading,definition,sentence,tags\n"
            "#tags column:5\n学习,xué xí,\"to study, learn\",我们一起<b>学习</b>。,zh\n");
  EXPECT_EQ(vesko("export --format tsv -").out,
            "#separator:tab\n#html:true\n#columns:word\treading\tdefinition\tsentence\ttags\n"
            "#tags column:5\n学习\txué xí\tto study, learn\t我们一起<b>学习</b>。\tzh\n");
}

// A loopback AnkiConnect that knows one deck and adds what it is sent.
class AnkiConnect {
 public:
  AnkiConnect() {
    server_.Post("/", [this](const httplib::Request& request, httplib::Response& response) {
      json call = json::parse(request.body);
      json result;
      if (call["action"] == "deckNames") result = json::array({"Default"});
      if (call["action"] == "createDeck") result = 1;
      if (call["action"] == "findNotes") result = json::array();
      if (call["action"] == "addNotes") {
        result = json::array();
        for (std::size_t i = 0; i < call["params"]["notes"].size(); ++i) result.push_back(i + 1);
        added += static_cast<int>(call["params"]["notes"].size());
      }
      response.set_content(json{{"result", result}, {"error", nullptr}}.dump(), "application/json");
    });
    port = server_.bind_to_any_port("127.0.0.1");
    thread_ = std::thread([this] { server_.listen_after_bind(); });
    while (!server_.is_running()) std::this_thread::yield();
  }
  ~AnkiConnect() {
    server_.stop();
    thread_.join();
  }
  int port = 0;
  std::atomic<int> added{0};

 private:
  httplib::Server server_;
  std::thread thread_;
};

TEST_F(LearnCommandTest, AnkiSyncSendsNotesOrSaysAnkiIsAbsent) {
  vesko("keep 学习 --lang zh");
  vesko("keep 中文 --lang zh");
  int port = 0;
  {
    AnkiConnect anki;
    port = anki.port;
    ASSERT_EQ(vesko("config set ankiConnectURL http://127.0.0.1:" + std::to_string(port)).status,
              0);
    auto run = vesko("anki sync --deck Chinois --json");
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(json::parse(run.out),
              json::parse(R"({"deck":"Chinois","added":2,"skipped":0,"deckCreated":true})"));
    EXPECT_EQ(anki.added.load(), 2);
  }
  auto run = vesko("anki sync");
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.out, "");
  EXPECT_NE(run.err.find("Anki is not running"), std::string::npos) << run.err;
}

}  // namespace
