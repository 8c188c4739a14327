#pragma once
// An HTTP server on 127.0.0.1 in the test's own process, on a port the system picks, serving the
// routes the test installs before it starts. Stops and joins its threads when destroyed. The
// handlers run on the server's threads: what they share with the test must be synchronised.

#include <httplib.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace vesko::testing {

class LoopbackServer {
 public:
  // `routes` installs the handlers; `threads` answer at once (requests beyond wait their turn).
  explicit LoopbackServer(const std::function<void(httplib::Server&)>& routes, int threads = 8) {
    server_.new_task_queue = [threads] { return new httplib::ThreadPool(threads); };
    routes(server_);
    port_ = server_.bind_to_any_port("127.0.0.1");
    thread_ = std::thread([this] { server_.listen_after_bind(); });
    while (!server_.is_running()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  ~LoopbackServer() {
    server_.stop();
    thread_.join();
  }
  LoopbackServer(const LoopbackServer&) = delete;
  LoopbackServer& operator=(const LoopbackServer&) = delete;

  std::string url() const { return "http://127.0.0.1:" + std::to_string(port_); }
  int port() const { return port_; }

 private:
  httplib::Server server_;
  int port_ = -1;
  std::thread thread_;
};

}  // namespace vesko::testing
