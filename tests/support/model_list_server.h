#pragma once
// A loopback server that plays the three providers' model-list endpoints under one port:
// "/claude/v1/models", "/openai/v1/models" and "/deepseek/models", so that pointing the
// `claudeHost`, `openaiHost` and `deepseekHost` settings at base() + "/claude"… reaches it. It
// answers with `body` and `status` when the request carries the provider's key header with `key`,
// and 401 otherwise. One per test; it stops when the object goes.

#include <httplib.h>

#include <atomic>
#include <mutex>
#include <string>
#include <thread>

namespace vesko::testing {

class ModelListServer {
 public:
  explicit ModelListServer(std::string key) : key_(std::move(key)) {
    server_.Get(
        "/claude/v1/models", [this](const httplib::Request& request, httplib::Response& response) {
          const bool allowed = request.get_header_value("x-api-key") == key_ &&
                               request.get_header_value("anthropic-version") == "2023-06-01" &&
                               request.get_param_value("limit") == "100";
          answer(allowed, "claude", response);
        });
    server_.Get(
        "/openai/v1/models", [this](const httplib::Request& request, httplib::Response& response) {
          answer(request.get_header_value("Authorization") == "Bearer " + key_, "openai", response);
        });
    server_.Get("/deepseek/models", [this](const httplib::Request& request,
                                           httplib::Response& response) {
      answer(request.get_header_value("Authorization") == "Bearer " + key_, "deepseek", response);
    });
    port_ = server_.bind_to_any_port("127.0.0.1");
    thread_ = std::thread([this] { server_.listen_after_bind(); });
    while (!server_.is_running()) std::this_thread::yield();
  }
  ~ModelListServer() {
    server_.stop();
    thread_.join();
  }
  ModelListServer(const ModelListServer&) = delete;
  ModelListServer& operator=(const ModelListServer&) = delete;

  std::string base() const { return "http://127.0.0.1:" + std::to_string(port_); }

  // What the next requests get.
  void reply(int status, std::string body) {
    std::lock_guard lock(mutex_);
    status_ = status;
    body_ = std::move(body);
  }
  // Which provider's path was asked last: "claude", "openai", "deepseek" or "".
  std::string lastPath() const {
    std::lock_guard lock(mutex_);
    return lastPath_;
  }

 private:
  void answer(bool allowed, const char* provider, httplib::Response& response) {
    std::lock_guard lock(mutex_);
    lastPath_ = provider;
    if (!allowed) {
      response.status = 401;
      response.set_content(R"({"error":{"type":"authentication_error"}})", "application/json");
      return;
    }
    response.status = status_;
    response.set_content(body_, "application/json");
  }

  const std::string key_;
  httplib::Server server_;
  int port_ = 0;
  std::thread thread_;
  mutable std::mutex mutex_;
  int status_ = 200;         // guarded by mutex_
  std::string body_ = "{}";  // guarded by mutex_
  std::string lastPath_;     // guarded by mutex_
};

}  // namespace vesko::testing
