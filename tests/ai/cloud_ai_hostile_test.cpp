// Hostile replies over real sockets: a 50 MB body, a server that accepts and never answers, one
// that closes in the middle of the body, odd content types, nobody listening. Each must end in the
// learner's "⚠️ " text within the request's time limit, without a crash or a leak.

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <string>

#include "ai/cloud_ai.h"
#include "ai/curl_http_client.h"
#include "support/ai_world.h"
#include "support/loopback_server.h"

namespace vesko {
namespace {

using namespace std::chrono_literals;
using testing::AIWorld;
using testing::LoopbackServer;

const CurlLibrary curlLibrary;

constexpr std::size_t kHugeBody = 50u << 20;

// Takes connections into its backlog and never reads or writes: the peer waits for a reply.
class SilentServer {
 public:
  SilentServer() {
    socket_ = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ::bind(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address);
    ::listen(socket_, 16);
    socklen_t length = sizeof address;
    ::getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &length);
    port_ = ntohs(address.sin_port);
  }
  ~SilentServer() { ::close(socket_); }
  std::string url() const { return "http://127.0.0.1:" + std::to_string(port_); }

 private:
  int socket_ = -1;
  int port_ = 0;
};

// The hostile routes, all on the OpenAI path so that ChatGPT meets them.
void hostileRoutes(httplib::Server& server, const std::string& behaviour) {
  server.Post("/v1/chat/completions", [behaviour](const httplib::Request&,
                                                  httplib::Response& response) {
    if (behaviour == "huge") {
      response.set_content_provider(kHugeBody, "application/json",
                                    [](std::size_t offset, std::size_t, httplib::DataSink& sink) {
                                      static const std::string chunk(64 * 1024, 'x');
                                      const std::size_t n =
                                          std::min(chunk.size(), kHugeBody - offset);
                                      return sink.write(chunk.data(), n);
                                    });
    } else if (behaviour == "cut") {
      // Promises 4000 bytes, sends the start of a valid answer, then hangs up.
      response.set_content_provider(
          4000, "application/json", [](std::size_t offset, std::size_t, httplib::DataSink& sink) {
            if (offset > 0) return false;
            const std::string start = R"({"choices":[{"message":{"content":"la moitié)";
            sink.write(start.data(), start.size());
            return true;
          });
    } else if (behaviour == "plain") {
      response.set_content(R"({"choices":[{"message":{"content":"texte brut"}}]})", "text/plain");
    } else if (behaviour == "binary") {
      response.set_content(std::string("\x00\xff\xfe{\x01\"choices", 11),
                           "application/octet-stream");
    }
  });
}

class CloudAIHostileTest : public ::testing::Test {
 protected:
  // What the learner and the log saw: never a key, whatever the server did.
  static void expectNoKeys(const AIWorld& world) {
    std::vector<std::string> seen = world.logLines();
    for (const auto& text : world.texts()) seen.push_back(text);
    for (const auto& line : seen)
      for (const char* key : {testing::kClaudeKey, testing::kOpenAIKey, testing::kDeepSeekKey})
        EXPECT_EQ(line.find(key), std::string::npos) << "a key in: " << line;
  }

  void useOpenAIAt(AIWorld& world, const std::string& host) {
    world.set("aiProvider", 2);
    world.set("openaiHost", host);
    world.setKey(AIProvider::openai, testing::kOpenAIKey);
    world.remote.relay = true;  // the provider's own failure text, not the relay's answer
    world.rebuild([](CloudAIOptions& options) { options.requestTimeout = 1500ms; });
  }
};

TEST_F(CloudAIHostileTest, EachHostileReplyEndsInTheLearnersText) {
  const std::string unreachable =
      "⚠️ Service injoignable. En Chine, Claude et ChatGPT sont bloqués : choisis DeepSeek "
      "dans "
      "Réglages → IA.";
  struct Row {
    const char* behaviour;
    std::string text;
    bool unreachable;
  };
  const Row rows[] = {
      {"huge", unreachable, true},
      {"cut", unreachable, true},
      {"plain", "texte brut", false},  // the type is not trusted either way: the body is read
      {"binary", "⚠️ Réponse vide.", false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.behaviour);
    LoopbackServer server([&](httplib::Server& s) { hostileRoutes(s, row.behaviour); });
    AIWorld world(server.url());
    useOpenAIAt(world, server.url());
    const auto start = std::chrono::steady_clock::now();
    const AIReply reply = world.ask("Bonjour");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
    EXPECT_EQ(reply.answer.text, row.text);
    EXPECT_EQ(reply.answer.unreachable, row.unreachable);
    expectNoKeys(world);
  }
}

TEST_F(CloudAIHostileTest, SilentServerTimesOut) {
  SilentServer silent;
  AIWorld world(silent.url());
  useOpenAIAt(world, silent.url());
  const auto start = std::chrono::steady_clock::now();
  const AIReply reply = world.ask("Bonjour");
  const auto took = std::chrono::steady_clock::now() - start;
  EXPECT_GE(took, 1400ms);
  EXPECT_LT(took, 5s);
  EXPECT_TRUE(reply.answer.text.starts_with("⚠️ Service injoignable."));
  EXPECT_TRUE(reply.answer.unreachable);
  bool logged = false;
  for (const auto& line : world.logLines())
    logged |= line.find("délai dépassé") != std::string::npos;
  EXPECT_TRUE(logged);
  expectNoKeys(world);
}

TEST_F(CloudAIHostileTest, NobodyListeningGivesEachProvidersText) {
  AIWorld world("http://127.0.0.1:1");
  world.setKey(AIProvider::openai, testing::kOpenAIKey);
  world.setKey(AIProvider::deepseek, testing::kDeepSeekKey);
  world.remote.relay = true;
  world.set("aiProvider", 3);
  EXPECT_EQ(world.ask("Bonjour").answer.text,
            "⚠️ Pas de connexion internet ou service injoignable.");
  world.set("aiProvider", 2);
  EXPECT_TRUE(world.ask("Bonjour").answer.text.starts_with("⚠️ Service injoignable."));
  expectNoKeys(world);
}

TEST(CurlHttpClientTest, FailuresAreToldApart) {
  LoopbackServer server([](httplib::Server& s) { hostileRoutes(s, "huge"); });
  SilentServer silent;
  const CurlHttpClient http;
  HttpRequest request;
  request.url = server.url() + "/v1/chat/completions";
  request.body = "{}";
  auto huge = http.send(request);
  ASSERT_FALSE(huge);
  EXPECT_EQ(huge.error().kind, HttpFailure::Kind::tooLarge);

  request.maxReplyBytes = kHugeBody + 1;  // with room enough the whole body arrives
  auto whole = http.send(request);
  ASSERT_TRUE(whole) << whole.error().detail;
  EXPECT_EQ(whole->body.size(), kHugeBody);
  EXPECT_EQ(whole->contentType, "application/json");

  request.url = silent.url() + "/";
  request.timeout = 300ms;
  auto late = http.send(request);
  ASSERT_FALSE(late);
  EXPECT_EQ(late.error().kind, HttpFailure::Kind::timeout);

  request.url = "http://127.0.0.1:1/";
  auto refused = http.send(request);
  ASSERT_FALSE(refused);
  EXPECT_EQ(refused.error().kind, HttpFailure::Kind::connect);

  request.url = "file:///etc/passwd";  // only http and https
  EXPECT_FALSE(http.send(request));
}

TEST(CurlHttpClientTest, GetAndStatusAndHeaders) {
  LoopbackServer server([](httplib::Server& s) {
    s.Get("/models", [](const httplib::Request& request, httplib::Response& response) {
      response.status = request.get_header_value("X-Probe") == "1" ? 200 : 400;
      response.set_content(R"({"data":[]})", "application/json; charset=utf-8");
    });
  });
  const CurlHttpClient http;
  HttpRequest request;
  request.method = "GET";
  request.url = server.url() + "/models";
  request.headers = {{"X-Probe", "1"}};
  auto reply = http.send(request);
  ASSERT_TRUE(reply);
  EXPECT_EQ(reply->status, 200);
  EXPECT_EQ(reply->contentType, "application/json; charset=utf-8");
  EXPECT_EQ(reply->body, R"({"data":[]})");
}

}  // namespace
}  // namespace vesko
