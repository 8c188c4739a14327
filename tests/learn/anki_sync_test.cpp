// `syncToAnki` against a loopback server that plays AnkiConnect: a deck list, notes found by their
// Front field, notes added.

#include "learn/anki_sync.h"

#include <gtest/gtest.h>
#include <httplib.h>

#include <atomic>
#include <mutex>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace vesko {
namespace {

using nlohmann::json;

SavedWord word(std::string spelling, std::string lang, std::string reading = "",
               std::string context = "") {
  SavedWord saved;
  saved.word = std::move(spelling);
  saved.lang = std::move(lang);
  saved.pinyin = std::move(reading);
  saved.context = std::move(context);
  return saved;
}

// What Anki holds, and every action asked of it.
struct AnkiState {
  std::set<std::string> decks{"Default"};
  std::vector<json> notes;  // as added
  std::set<std::string> fronts;
  std::vector<std::string> actions;
};

// A loopback AnkiConnect. Its state is read and changed under its lock: the server answers on a
// thread of its own.
class FakeAnki {
 public:
  FakeAnki() {
    server_.Post("/", [this](const httplib::Request& request, httplib::Response& response) {
      std::lock_guard lock(mutex_);
      if (reply_) {
        response.set_content(*reply_, "application/json");
        return;
      }
      json call = json::parse(request.body);
      ++calls;
      EXPECT_EQ(call["version"], 6);
      state_.actions.push_back(call["action"]);
      response.set_content(answer(call).dump(), "application/json");
    });
    port_ = server_.bind_to_any_port("127.0.0.1");
    thread_ = std::thread([this] { server_.listen_after_bind(); });
    while (!server_.is_running()) std::this_thread::yield();
  }
  ~FakeAnki() {
    server_.stop();
    thread_.join();
  }
  AnkiTarget target(std::string deck = "Vesko") const {
    AnkiTarget target;
    target.url = "http://127.0.0.1:" + std::to_string(port_);
    target.deck = std::move(deck);
    target.timeout = std::chrono::milliseconds(5000);
    return target;
  }
  // Every request is answered with `body` from now on.
  void replyWith(std::string body) {
    std::lock_guard lock(mutex_);
    reply_ = std::move(body);
  }

  AnkiState state() {
    std::lock_guard lock(mutex_);
    return state_;
  }
  template <typename Change>
  void change(Change change) {
    std::lock_guard lock(mutex_);
    change(state_);
  }

  std::atomic<int> calls{0};

 private:
  // Under mutex_.
  json answer(const json& call) {
    auto& decks = state_.decks;
    auto& notes = state_.notes;
    auto& fronts = state_.fronts;
    const std::string action = call["action"];
    if (action == "deckNames") return {{"result", decks}, {"error", nullptr}};
    if (action == "createDeck") {
      decks.insert(call["params"]["deck"].get<std::string>());
      return {{"result", 1}, {"error", nullptr}};
    }
    if (action == "findNotes") {
      // deck:"Vesko" "Front:学习", with Anki's backslash escapes.
      static const std::regex query(R"re(deck:"(.*)" "Front:(.*)")re");
      std::smatch match;
      const std::string text = call["params"]["query"];
      EXPECT_TRUE(std::regex_match(text, match, query)) << text;
      std::string front = std::regex_replace(match[2].str(), std::regex(R"(\\(.))"), "$1");
      json found = json::array();
      if (fronts.count(front)) found.push_back(1);
      return {{"result", found}, {"error", nullptr}};
    }
    if (action == "addNotes") {
      json ids = json::array();
      for (const auto& note : call["params"]["notes"]) {
        notes.push_back(note);
        fronts.insert(note["fields"]["Front"].get<std::string>());
        ids.push_back(1000 + notes.size());
      }
      return {{"result", ids}, {"error", nullptr}};
    }
    return {{"result", nullptr}, {"error", "unsupported action"}};
  }

  httplib::Server server_;
  int port_ = 0;
  std::thread thread_;
  std::mutex mutex_;
  std::optional<std::string> reply_;
  AnkiState state_;
};

TEST(AnkiSyncTest, NewWordsAreSentOnceIntoTheirDeck) {
  FakeAnki anki;
  const std::vector<SavedWord> words{word("学习", "zh", "xué xí", "我们一起学习。"),
                                     word("Hello", "en", "", "hello there"),
                                     word("a_b*\"c\\", "en")};
  auto first = syncToAnki(words, anki.target());
  ASSERT_TRUE(first) << first.error().detail;
  EXPECT_EQ(first->added, 3);
  EXPECT_EQ(first->skipped, 0);
  EXPECT_TRUE(first->deckCreated);
  AnkiState state = anki.state();
  EXPECT_TRUE(state.decks.count("Vesko"));

  ASSERT_EQ(state.notes.size(), 3u);
  const json& note = state.notes[0];
  EXPECT_EQ(note["deckName"], "Vesko");
  EXPECT_EQ(note["modelName"], "Basic");
  EXPECT_EQ(note["fields"]["Front"], "学习");
  EXPECT_EQ(note["fields"]["Back"], "xué xí<br><br>我们一起<b>学习</b>。");
  EXPECT_EQ(note["tags"], json::array({"vesko", "zh"}));
  EXPECT_EQ(state.notes[1]["fields"]["Back"], "<b>hello</b> there");
  EXPECT_EQ(state.notes[2]["fields"]["Front"], "a_b*&quot;c\\");

  auto second = syncToAnki(words, anki.target());
  ASSERT_TRUE(second) << second.error().detail;
  EXPECT_EQ(second->added, 0);
  EXPECT_EQ(second->skipped, 3);
  EXPECT_FALSE(second->deckCreated);
  state = anki.state();
  EXPECT_EQ(state.notes.size(), 3u);
  EXPECT_EQ(std::count(state.actions.begin(), state.actions.end(), "addNotes"), 1);
}

TEST(AnkiSyncTest, WordsAnkiAlreadyHasAreSkipped) {
  FakeAnki anki;
  anki.change([](AnkiState& state) {
    state.decks.insert("Mots");
    state.fronts = {"学习"};
  });
  const std::vector<SavedWord> words{word("学习", "zh"), word("中文", "zh"), word("学习", "ja")};
  auto report = syncToAnki(words, anki.target("Mots"));
  ASSERT_TRUE(report) << report.error().detail;
  EXPECT_EQ(report->added, 1);
  EXPECT_EQ(report->skipped, 2);
  EXPECT_FALSE(report->deckCreated);
  const AnkiState state = anki.state();
  ASSERT_EQ(state.notes.size(), 1u);
  EXPECT_EQ(state.notes[0]["fields"]["Front"], "中文");
  EXPECT_EQ(state.notes[0]["deckName"], "Mots");
}

TEST(AnkiSyncTest, AbsentAnkiIsReportedAsNotRunning) {
  AnkiTarget target;
  {
    FakeAnki closed;  // a port that was free a moment ago, and is again
    target = closed.target();
  }
  auto report = syncToAnki({word("学习", "zh")}, target);
  ASSERT_FALSE(report);
  EXPECT_EQ(report.error().kind, AnkiFailure::Kind::notRunning);
}

TEST(AnkiSyncTest, StopsWhenAskedBetweenExchanges) {
  FakeAnki anki;
  AnkiTarget target = anki.target();
  target.stopped = [&anki] { return anki.calls.load() >= 2; };
  auto report = syncToAnki({word("学习", "zh"), word("中文", "zh")}, target);
  ASSERT_FALSE(report);
  EXPECT_EQ(report.error().kind, AnkiFailure::Kind::stopped);
  EXPECT_EQ(anki.calls.load(), 2);  // deckNames, createDeck
  EXPECT_TRUE(anki.state().notes.empty());
}

TEST(AnkiSyncTest, StrangeRepliesAreFailuresNotCrashes) {
  struct Row {
    std::string body;
    AnkiFailure::Kind kind;
  };
  const Row rows[] = {
      {R"({"result": null, "error": "model was not found: Basic"})", AnkiFailure::Kind::refused},
      {R"({"result": null, "error": {"code": 3}})", AnkiFailure::Kind::refused},
      {"<html>not anki</html>", AnkiFailure::Kind::badReply},
      {R"({"result": "Default", "error": null})", AnkiFailure::Kind::badReply},
      {R"([1, 2])", AnkiFailure::Kind::badReply},
      {std::string(17u << 20, 'x'), AnkiFailure::Kind::badReply},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.body.substr(0, 60));
    FakeAnki anki;
    anki.replyWith(row.body);
    auto report = syncToAnki({word("学习", "zh")}, anki.target());
    ASSERT_FALSE(report);
    EXPECT_EQ(report.error().kind, row.kind);
  }
}

}  // namespace
}  // namespace vesko
