// The model lists fetched over real HTTP from a loopback server that plays each provider.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ai/models.h"
#include "support/fake_clock.h"
#include "support/loopback_http_client.h"
#include "support/model_list_server.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

using namespace std::string_literals;

struct FetchFixture {
  FetchFixture() {
    for (const char* name : {"claude", "openai", "deepseek"})
      EXPECT_TRUE(settings.set(std::string(name) + "Host", server.base() + "/" + name));
  }
  testing::ModelListServer server{"sk-test-key"};
  testing::TempDir dir;
  testing::FakeClock clock;
  Settings settings{dir.path() / "settings.json", clock};
  testing::LoopbackHttpClient http;
};

std::vector<std::string> idsOf(const std::vector<ListedModel>& models) {
  std::vector<std::string> ids;
  for (const auto& model : models) ids.push_back(model.id);
  return ids;
}

TEST(ModelsFetchTest, EachProvidersListNewestFirst) {
  struct Row {
    AIProvider provider;
    const char* body;
    std::vector<std::string> ids;
  };
  const Row rows[] = {
      {AIProvider::claude,
       R"({"data":[{"type":"model","id":"claude-3-5-haiku-20241022","display_name":"Claude Haiku 3.5",
          "created_at":"2024-10-22T00:00:00Z"},{"type":"model","id":"claude-sonnet-4-5-20250929",
          "created_at":"2025-09-29T00:00:00Z"}],"has_more":false,"first_id":"a","last_id":"b"})",
       {"claude-sonnet-4-5-20250929", "claude-3-5-haiku-20241022"}},
      {AIProvider::openai,
       R"({"object":"list","data":[{"id":"whisper-1","object":"model","created":1677532384},
          {"id":"gpt-4o-mini","object":"model","created":1721172741,"owned_by":"system"},
          {"id":"gpt-4.1","object":"model","created":1744316542}]})",
       {"gpt-4.1", "gpt-4o-mini"}},
      {AIProvider::deepseek,
       R"({"object":"list","data":[{"id":"deepseek-chat","object":"model","owned_by":"deepseek"},
          {"id":"deepseek-reasoner","object":"model","owned_by":"deepseek"}]})",
       {"deepseek-chat", "deepseek-reasoner"}},
  };
  FetchFixture f;
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(providerRow(row.provider).name));
    f.server.reply(200, row.body);
    auto list = fetchModelList(f.http, f.settings, row.provider, "sk-test-key");
    ASSERT_TRUE(list) << list.error().detail;
    EXPECT_EQ(f.server.lastPath(), providerRow(row.provider).name);
    EXPECT_EQ(idsOf(*list), row.ids);
  }
}

TEST(ModelsFetchTest, HostileRepliesEndInAFailure) {
  struct Row {
    const char* name;
    int status;
    std::string body;
  };
  const Row rows[] = {
      {"malformed", 200, R"({"data":[{"id":"deepseek-chat"})"},
      {"no data", 200, R"({"object":"list"})"},
      {"data not an array", 200, R"({"data":"deepseek-chat"})"},
      {"html", 200, "<html><body>Bad gateway</body></html>"},
      {"server error", 503, R"({"data":[{"id":"deepseek-chat"}]})"},
      {"deep nesting", 200, std::string(100000, '[')},
      {"binary", 200, "\0\xff\xfe{\"data\":[]}"s},
  };
  FetchFixture f;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    f.server.reply(row.status, row.body);
    EXPECT_FALSE(fetchModelList(f.http, f.settings, AIProvider::deepseek, "sk-test-key"));
  }
  // A wrong key is refused by the provider.
  f.server.reply(200, R"({"data":[{"id":"deepseek-chat"}]})");
  auto refused = fetchModelList(f.http, f.settings, AIProvider::deepseek, "sk-wrong");
  ASSERT_FALSE(refused);
  EXPECT_EQ(refused.error().detail, "HTTP 401");
  // Nobody listening.
  ASSERT_TRUE(f.settings.set("deepseekHost", std::string("http://127.0.0.1:1")));
  EXPECT_FALSE(fetchModelList(f.http, f.settings, AIProvider::deepseek, "sk-test-key"));
}

}  // namespace
}  // namespace vesko
