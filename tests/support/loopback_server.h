#pragma once
// An HTTP server on 127.0.0.1 in the test's own process, on a port the system picks, serving the
// routes the test installs before it starts. Stops and joins its threads when destroyed. The
// handlers run on the server's threads: what they share with the test must be synchronised.

#include <httplib.h>
#include <netinet/in.h>
#include <sys/socket.h>

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
    widenBacklog();
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
  // The packaged cpp-httplib listens with a backlog of 5: a sixth simultaneous connection has its
  // handshake dropped and retried a second later, which would time the kernel rather than the
  // code. Listening again on the same socket raises the backlog.
  void widenBacklog() const {
    for (int fd = 3; fd < 4096; ++fd) {
      sockaddr_in address{};
      socklen_t length = sizeof address;
      int listening = 0;
      socklen_t flagLength = sizeof listening;
      if (::getsockname(fd, reinterpret_cast<sockaddr*>(&address), &length) != 0 ||
          address.sin_family != AF_INET || ntohs(address.sin_port) != port_ ||
          ::getsockopt(fd, SOL_SOCKET, SO_ACCEPTCONN, &listening, &flagLength) != 0 || !listening)
        continue;
      ::listen(fd, 128);
      return;
    }
  }

  httplib::Server server_;
  int port_ = -1;
  std::thread thread_;
};

}  // namespace vesko::testing
