#pragma once
// Every language-model service on one loopback server, told apart by their paths as the real
// ones are by their hosts: Claude (/v1/messages), ChatGPT (/v1/chat/completions), DeepSeek
// (/chat/completions), the relay (/v1/ai) and a local model server under /local/v1. Each answers
// a plain success until the test scripts another reply. Counts the requests and keeps the last
// one of each path. Safe from the test and the server's threads.

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <utility>

#include "support/loopback_server.h"

namespace vesko::testing {

struct ScriptedReply {
  int status = 200;
  std::string body;
  std::string contentType = "application/json";
};

struct SeenRequest {
  std::map<std::string, std::string> headers;  // names lower-cased
  std::string body;
};

class FakeProviders {
 public:
  static constexpr const char* kClaude = "/v1/messages";
  static constexpr const char* kOpenAI = "/v1/chat/completions";
  static constexpr const char* kDeepSeek = "/chat/completions";
  static constexpr const char* kRelay = "/v1/ai";
  static constexpr const char* kLocal = "/local/v1/chat/completions";
  static constexpr const char* kLocalModels = "/local/v1/models";

  using Script = std::function<ScriptedReply(const httplib::Request&)>;

  explicit FakeProviders(int threads = 8)
      : server_([this](httplib::Server& server) { install(server); }, threads) {}

  std::string url() const { return server_.url(); }
  std::string localUrl() const { return server_.url() + "/local/v1"; }

  void script(const std::string& path, Script reply) {
    std::lock_guard lock(mutex_);
    scripts_[path] = std::move(reply);
  }
  void script(const std::string& path, int status, std::string body) {
    script(path, [status, body](const httplib::Request&) { return ScriptedReply{status, body}; });
  }
  int hits(const std::string& path) const {
    std::lock_guard lock(mutex_);
    auto it = hits_.find(path);
    return it == hits_.end() ? 0 : it->second;
  }
  SeenRequest last(const std::string& path) const {
    std::lock_guard lock(mutex_);
    auto it = last_.find(path);
    return it == last_.end() ? SeenRequest{} : it->second;
  }

  static std::string claudeAnswer(const std::string& text) {
    return R"({"id":"msg_1","type":"message","content":[{"type":"text","text":)" + quoted(text) +
           R"(}],"usage":{"input_tokens":12,"output_tokens":7}})";
  }
  static std::string chatAnswer(const std::string& text) {
    return R"({"id":"c1","choices":[{"index":0,"message":{"role":"assistant","content":)" +
           quoted(text) + R"(}}],"usage":{"prompt_tokens":12,"completion_tokens":7}})";
  }
  static std::string quoted(const std::string& text) {
    std::string out = "\"";
    for (char c : text) {
      if (c == '"' || c == '\\') out += '\\';
      if (c == '\n') {
        out += "\\n";
        continue;
      }
      out += c;
    }
    return out + "\"";
  }

 private:
  void install(httplib::Server& server) {
    for (const char* path : {kClaude, kOpenAI, kDeepSeek, kRelay, kLocal})
      server.Post(path, [this, path](const httplib::Request& request, httplib::Response& response) {
        serve(path, request, response);
      });
    server.Get(kLocalModels, [this](const httplib::Request& request, httplib::Response& response) {
      serve(kLocalModels, request, response);
    });
  }

  void serve(const std::string& path, const httplib::Request& request,
             httplib::Response& response) {
    Script script;
    {
      std::lock_guard lock(mutex_);
      ++hits_[path];
      SeenRequest seen;
      for (const auto& [name, value] : request.headers) {
        std::string lower = name;
        for (auto& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        seen.headers[lower] = value;
      }
      seen.body = request.body;
      last_[path] = std::move(seen);
      if (auto it = scripts_.find(path); it != scripts_.end()) script = it->second;
    }
    ScriptedReply reply = script ? script(request) : standard(path);
    response.status = reply.status;
    response.set_content(reply.body, reply.contentType.c_str());
  }

  static ScriptedReply standard(const std::string& path) {
    if (path == kClaude) return {200, claudeAnswer("réponse de Claude")};
    if (path == kOpenAI) return {200, chatAnswer("réponse de ChatGPT")};
    if (path == kDeepSeek) return {200, chatAnswer("réponse de DeepSeek")};
    if (path == kRelay) return {200, R"({"ok":true,"text":"réponse de Vesko"})"};
    if (path == kLocal) return {200, chatAnswer("réponse locale")};
    return {200, R"({"object":"list","data":[{"id":"qwen2.5:3b"},{"id":"llama3.2"}]})"};
  }

  mutable std::mutex mutex_;
  std::map<std::string, Script> scripts_;
  std::map<std::string, int> hits_;
  std::map<std::string, SeenRequest> last_;
  LoopbackServer server_;  // last: its threads start once everything above exists
};

}  // namespace vesko::testing
