#pragma once
// One HTTP exchange, as the AI providers and the model lists need it: a request sent whole, a
// reply read whole up to a size cap. Injected, so that tests point the real protocol code at a
// loopback server or a fake. Implementations are safe for concurrent `send` calls from any thread.

#include <chrono>
#include <cstddef>
#include <expected>
#include <string>
#include <utility>
#include <vector>

namespace vesko {

struct HttpRequest {
  std::string method = "POST";
  std::string url;
  std::vector<std::pair<std::string, std::string>> headers;
  std::string body;
  std::chrono::milliseconds timeout{20000};  // the whole exchange, connection included
  std::size_t maxReplyBytes = 8u << 20;      // a longer reply is a failure, not a truncation
};

struct HttpReply {
  long status = 0;
  std::string contentType;
  std::string body;
};

struct HttpFailure {
  enum class Kind { connect, timeout, tooLarge, other };
  Kind kind = Kind::other;
  // For the diagnostic log; never contains a header value (keys travel in headers).
  std::string detail;
};

class HttpClient {
 public:
  virtual ~HttpClient() = default;
  virtual std::expected<HttpReply, HttpFailure> send(const HttpRequest& request) const = 0;
};

}  // namespace vesko
