#include "ai/models.h"

#include <gtest/gtest.h>

#include <mutex>
#include <string>
#include <vector>

#include "dict/cedict.h"
#include "support/fake_clock.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

using namespace std::chrono_literals;

TEST(ModelsTest, IsoDates) {
  struct Row {
    const char* text;
    std::optional<std::int64_t> seconds;
  };
  const Row rows[] = {
      {"2025-02-19T00:00:00Z", 1739923200},
      {"2025-02-19", 1739923200},
      {"2025-02-19T10:30:00.123456Z", 1739961000},
      {"2025-02-19T10:30Z", 1739961000},
      {"2025-02-19T12:30:00+02:00", 1739961000},
      {"2025-02-19T05:30:00-0500", 1739961000},
      {"1970-01-01T00:00:00Z", 0},
      {"2025-02-30T00:00:00Z", std::nullopt},
      {"2025-13-01", std::nullopt},
      {"2025-02-19T24:00:00Z", std::nullopt},
      {"2025-02-19T10:30:00Zjunk", std::nullopt},
      {"2025-02-19T10:30:00.Z", std::nullopt},
      {"2025-2-19", std::nullopt},
      {"yesterday", std::nullopt},
      {"", std::nullopt},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(parseIsoDate(row.text), row.seconds);
  }
}

std::vector<std::string> idsOf(const std::vector<ListedModel>& models) {
  std::vector<std::string> ids;
  for (const auto& model : models) ids.push_back(model.id);
  return ids;
}

TEST(ModelsTest, ListsAreFilteredAndNewestFirst) {
  struct Row {
    AIProvider provider;
    const char* body;
    std::vector<std::string> ids;
  };
  const Row rows[] = {
      {AIProvider::claude,
       R"({"data":[{"id":"claude-3-5-haiku-20241022","created_at":"2024-10-22T00:00:00Z"},
                   {"id":"claude-sonnet-4-5","created_at":"2025-09-29T00:00:00Z"},
                   {"id":"claude-opus-4-1","created_at":"2025-08-05T00:00:00Z"}],"has_more":false})",
       {"claude-sonnet-4-5", "claude-opus-4-1", "claude-3-5-haiku-20241022"}},
      // Image, speech and embedding models are not offered.
      {AIProvider::openai,
       R"({"object":"list","data":[{"id":"dall-e-3","created":1698785189},
                   {"id":"gpt-4o-mini","created":1721172741},{"id":"tts-1","created":1681940951},
                   {"id":"gpt-5","created":1754425777},{"id":"text-embedding-3-small"},
                   {"id":"chatgpt-4o-latest","created":1723515131}]})",
       {"gpt-5", "gpt-4o-mini"}},
      // Without dates the provider's order stands; equal dates keep it too.
      {AIProvider::deepseek,
       R"({"data":[{"id":"deepseek-chat"},{"id":"deepseek-reasoner"}]})",
       {"deepseek-chat", "deepseek-reasoner"}},
      {AIProvider::deepseek,
       R"({"data":[{"id":"a","created":5},{"id":"b"},{"id":"c","created":5},{"id":"d","created":9}]})",
       {"d", "a", "c", "b"}},
      // Odd elements are skipped, not fatal.
      {AIProvider::deepseek,
       R"({"data":[{"id":""},{"id":7},{"name":"x"},"deepseek-chat",null,[1],
                   {"id":"deepseek-flash","created":"soon"},{"id":"deepseek-pro","created_at":12},
                   {"id":"deepseek-v9","created":1e300}]})",
       {"deepseek-flash", "deepseek-pro", "deepseek-v9"}},
      {AIProvider::openai, R"({"data":[]})", {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.body);
    auto list = readModelList(row.provider, 200, row.body);
    ASSERT_TRUE(list.has_value()) << list.error().detail;
    EXPECT_EQ(idsOf(*list), row.ids);
  }
  auto dated = readModelList(AIProvider::claude, 200,
                             R"({"data":[{"id":"m","created_at":"2024-10-22T00:00:00Z"}]})");
  ASSERT_TRUE(dated);
  EXPECT_EQ(dated->at(0).created, 1729555200);
}

TEST(ModelsTest, HostileListRepliesAreFailures) {
  struct Row {
    long status;
    const char* body;
    const char* detail;
  };
  const Row rows[] = {
      {401, R"({"error":{"message":"invalid x-api-key"}})", "HTTP 401"},
      {201, R"({"data":[{"id":"gpt-5"}]})", "HTTP 201"},
      {500, "", "HTTP 500"},
      {200, "<html>gateway</html>", "réponse illisible"},
      {200, R"({"data":[{"id":"gpt-5"})", "réponse illisible"},
      {200, "", "réponse illisible"},
      {200, R"([{"id":"gpt-5"}])", "réponse illisible"},
      {200, R"({"models":[{"id":"gpt-5"}]})", "pas de tableau data"},
      {200, R"({"data":{"id":"gpt-5"}})", "pas de tableau data"},
      {200, R"({"data":null})", "pas de tableau data"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.body);
    auto list = readModelList(AIProvider::openai, row.status, row.body);
    ASSERT_FALSE(list.has_value());
    EXPECT_EQ(list.error().detail, row.detail);
  }
}

TEST(ModelsTest, Families) {
  struct Row {
    const char* id;
    const char* family;
  };
  const Row rows[] = {
      {"claude-3-5-haiku-latest", "haiku"},
      {"Claude-Sonnet-4-5", "sonnet"},
      {"claude-opus-4-1", "opus"},
      {"gpt-5-nano", "nano"},
      {"gpt-4o-mini", "mini"},
      {"deepseek-flash", "flash"},
      {"deepseek-reasoner", "reasoner"},
      {"deepseek-chat", "chat"},
      // The order of the table decides: "chatgpt-4o-mini" is a "mini", not a "chat".
      {"chatgpt-4o-mini", "mini"},
      {"gpt-4.1", ""},
      {"", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.id);
    EXPECT_EQ(modelFamily(row.id), row.family);
  }
}

TEST(ModelsTest, ReplacementByFamilyThenByProvider) {
  struct Row {
    AIProvider provider;
    const char* retired;
    std::vector<std::string> list;
    std::optional<std::string> replacement;
  };
  const Row rows[] = {
      {AIProvider::claude,
       "claude-3-5-haiku-latest",
       {"claude-opus-4-1", "claude-haiku-4-5", "claude-3-5-haiku-latest", "claude-3-haiku"},
       "claude-haiku-4-5"},
      // The retired id itself is never offered back.
      {AIProvider::claude,
       "claude-haiku-4-5",
       {"claude-haiku-4-5", "claude-opus-4-1"},
       "claude-opus-4-1"},
      // No other Haiku: the newest Sonnet, before a newer Opus.
      {AIProvider::claude,
       "claude-3-haiku",
       {"claude-opus-4-1", "claude-sonnet-4-5", "claude-sonnet-4"},
       "claude-sonnet-4-5"},
      {AIProvider::claude, "claude-2", {"claude-opus-4-1", "claude-sonnet-4"}, "claude-sonnet-4"},
      {AIProvider::claude, "claude-2", {"claude-2", "claude-opus-4-1"}, "claude-opus-4-1"},
      {AIProvider::openai, "gpt-4o-mini", {"gpt-5", "gpt-5-mini", "gpt-4o-mini"}, "gpt-5-mini"},
      // "gpt-5-nano" is a "nano"; with no other nano, the first id that contains "mini".
      {AIProvider::openai, "gpt-5-nano", {"gpt-5", "gpt-4.1-mini", "gpt-5-nano"}, "gpt-4.1-mini"},
      {AIProvider::openai, "gpt-4", {"gpt-5", "gpt-4o-mini"}, "gpt-4o-mini"},
      {AIProvider::openai, "gpt-4", {"gpt-4", "gpt-5"}, "gpt-5"},
      // A retired "deepseek-flash" with no other "flash": the first id holding "chat".
      {AIProvider::deepseek,
       "deepseek-flash",
       {"deepseek-reasoner", "deepseek-chat", "deepseek-flash"},
       "deepseek-chat"},
      {AIProvider::deepseek,
       "deepseek-flash",
       {"deepseek-reasoner", "deepseek-flash"},
       "deepseek-reasoner"},
      {AIProvider::deepseek,
       "deepseek-flash",
       {"deepseek-flash-2", "deepseek-chat"},
       "deepseek-flash-2"},
      {AIProvider::deepseek, "deepseek-flash", {}, std::nullopt},
      {AIProvider::deepseek, "deepseek-flash", {"deepseek-flash"}, std::nullopt},
      {AIProvider::claude, "claude-2", {}, std::nullopt},
      {AIProvider::apple, "llama", {"qwen", "mistral"}, std::nullopt},
      {AIProvider::vesko, "anything", {"other"}, std::nullopt},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(providerRow(row.provider).name) + " " + row.retired);
    EXPECT_EQ(replacementModel(row.provider, row.retired, row.list), row.replacement);
  }
}

// Answers every request with one reply and keeps the requests; `during` runs inside `send`, as
// something that happens while the list is on its way.
class FakeHttpClient final : public HttpClient {
 public:
  std::expected<HttpReply, HttpFailure> send(const HttpRequest& request) const override {
    std::lock_guard lock(mutex_);
    requests_.push_back(request);
    if (during) during();
    return reply;
  }
  std::vector<HttpRequest> requests() const {
    std::lock_guard lock(mutex_);
    return requests_;
  }

  std::expected<HttpReply, HttpFailure> reply =
      HttpReply{200, "application/json", R"({"data":[]})"};
  std::function<void()> during;

 private:
  mutable std::mutex mutex_;
  mutable std::vector<HttpRequest> requests_;
};

struct ModelsFixture {
  testing::TempDir dir;
  testing::FakeClock clock;
  Settings settings{dir.path() / "settings.json", clock};
  CEDict dictionary;
  HantCache hant{dictionary};
  LocTables tables;
  Loc loc{settings, tables, hant, {"fr-FR"}};
  Log log{dir.path() / "debug.log", settings, clock};
  FakeHttpClient http;
  Models models{http, settings, loc, log};

  std::string logged() {
    log.flush();
    return log.recent(TimePoint{});
  }
};

TEST(ModelsTest, RequestsFollowEachProvidersProtocol) {
  struct Row {
    AIProvider provider;
    const char* url;
    std::vector<std::pair<std::string, std::string>> headers;
  };
  const Row rows[] = {
      {AIProvider::claude,
       "https://api.anthropic.com/v1/models?limit=100",
       {{"x-api-key", "sk-secret"}, {"anthropic-version", "2023-06-01"}}},
      {AIProvider::openai,
       "https://api.openai.com/v1/models",
       {{"Authorization", "Bearer sk-secret"}}},
      {AIProvider::deepseek,
       "https://api.deepseek.com/models",
       {{"Authorization", "Bearer sk-secret"}}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.url);
    ModelsFixture f;
    ASSERT_TRUE(fetchModelList(f.http, f.settings, row.provider, "sk-secret"));
    auto sent = f.http.requests();
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0].method, "GET");
    EXPECT_EQ(sent[0].url, row.url);
    EXPECT_EQ(sent[0].headers, row.headers);
    EXPECT_EQ(sent[0].timeout, 15s);
    EXPECT_TRUE(sent[0].body.empty());
  }

  ModelsFixture f;
  ASSERT_TRUE(f.settings.set("deepseekHost", std::string("http://127.0.0.1:9/ds/")));
  ASSERT_TRUE(fetchModelList(f.http, f.settings, AIProvider::deepseek, "k"));
  EXPECT_EQ(f.http.requests().at(0).url, "http://127.0.0.1:9/ds/models");
  // No request without a key, nor for providers that have no list.
  EXPECT_FALSE(fetchModelList(f.http, f.settings, AIProvider::claude, ""));
  EXPECT_FALSE(fetchModelList(f.http, f.settings, AIProvider::apple, "k"));
  EXPECT_FALSE(fetchModelList(f.http, f.settings, AIProvider::vesko, "k"));
  EXPECT_EQ(f.http.requests().size(), 1u);

  f.http.reply = std::unexpected(HttpFailure{HttpFailure::Kind::timeout, "timed out"});
  auto failed = fetchModelList(f.http, f.settings, AIProvider::deepseek, "k");
  ASSERT_FALSE(failed);
  EXPECT_NE(failed.error().detail.find("timed out"), std::string::npos);
}

TEST(ModelsTest, AGoneModelIsReplacedLoggedAndAnnounced) {
  ModelsFixture f;
  ASSERT_TRUE(f.settings.set("deepseekModel", std::string("deepseek-flash")));
  f.http.reply = HttpReply{200, "application/json",
                           R"({"data":[{"id":"deepseek-reasoner"},{"id":"deepseek-chat"}]})"};
  auto replaced = f.models.onModelGone(AIProvider::deepseek, "sk-secret");
  EXPECT_EQ(replaced.model, "deepseek-chat");
  EXPECT_EQ(f.settings.text("deepseekModel"), "deepseek-chat");
  EXPECT_EQ(replaced.notice.text, "Modèle IA mis à jour : deepseek-chat");
  EXPECT_EQ(replaced.notice.shownFor, 2500ms);
  const std::string logged = f.logged();
  EXPECT_NE(logged.find("IA : modèle « deepseek-flash » retiré → « deepseek-chat »"),
            std::string::npos)
      << logged;
  EXPECT_EQ(logged.find("sk-secret"), std::string::npos);

  // The default counts as the stored model.
  f.http.reply = HttpReply{200, "", R"({"data":[{"id":"gpt-5-mini"},{"id":"gpt-4o-mini"}]})"};
  EXPECT_EQ(f.models.onModelGone(AIProvider::openai, "k").model, "gpt-5-mini");
  EXPECT_EQ(f.settings.text("openaiModel"), "gpt-5-mini");
}

TEST(ModelsTest, WithoutAReplacementTheModelStays) {
  const std::string keep =
      "Ce modèle n'existe plus chez le fournisseur : choisis-en un autre dans Réglages → IA → "
      "Modèles.";
  struct Row {
    const char* name;
    std::expected<HttpReply, HttpFailure> reply;
  };
  const Row rows[] = {
      {"empty list", HttpReply{200, "", R"({"data":[]})"}},
      {"only the retired model", HttpReply{200, "", R"({"data":[{"id":"claude-haiku-4-5"}]})"}},
      {"refused", HttpReply{401, "", R"({"error":{"message":"invalid x-api-key"}})"}},
      {"not json", HttpReply{200, "", "<html>"}},
      {"no connection", std::unexpected(HttpFailure{HttpFailure::Kind::connect, "refused"})},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    ModelsFixture f;
    ASSERT_TRUE(f.settings.set("claudeModel", std::string("claude-haiku-4-5")));
    f.http.reply = row.reply;
    auto outcome = f.models.onModelGone(AIProvider::claude, "k");
    EXPECT_FALSE(outcome.model);
    EXPECT_EQ(outcome.notice.text, keep);
    EXPECT_EQ(f.settings.text("claudeModel"), "claude-haiku-4-5");
  }

  ModelsFixture f;
  auto local = f.models.onModelGone(AIProvider::apple, "k");
  EXPECT_FALSE(local.model);
  EXPECT_EQ(local.notice.text, keep);
  EXPECT_TRUE(f.http.requests().empty());
  EXPECT_EQ(f.models.listFailureNotice().text,
            "Liste indisponible : vérifie la clé et la connexion.");
  EXPECT_EQ(f.models.listFailureNotice().shownFor, 1400ms);
}

TEST(ModelsTest, AModelTheLearnerPickedMeanwhileIsLeftAlone) {
  ModelsFixture f;
  ASSERT_TRUE(f.settings.set("claudeModel", std::string("claude-3-haiku")));
  f.http.reply = HttpReply{200, "", R"({"data":[{"id":"claude-haiku-4-5"}]})"};
  f.http.during = [&] {
    ASSERT_TRUE(f.settings.set("claudeModel", std::string("claude-opus-4-1")));
  };
  auto outcome = f.models.onModelGone(AIProvider::claude, "k");
  EXPECT_FALSE(outcome.model);
  EXPECT_TRUE(outcome.notice.text.empty());
  EXPECT_EQ(f.settings.text("claudeModel"), "claude-opus-4-1");
  EXPECT_EQ(f.logged().find("retiré →"), std::string::npos);
}

}  // namespace
}  // namespace vesko
