#pragma once
// An HttpClient for tests that talk to a loopback cpp-httplib server: "http://127.0.0.1:PORT/…"
// only, no TLS. It sends the request as the product's client would and keeps the status, the
// content type and the body. Safe for concurrent `send` calls (one connection each).

#include <httplib.h>

#include <string>

#include "ai/http.h"

namespace vesko::testing {

class LoopbackHttpClient final : public HttpClient {
 public:
  static std::string lowered(std::string text) {
    for (char& c : text)
      if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
  }

  std::expected<HttpReply, HttpFailure> send(const HttpRequest& request) const override {
    constexpr std::string_view kScheme = "http://";
    if (!request.url.starts_with(kScheme))
      return std::unexpected(HttpFailure{HttpFailure::Kind::other, "not a loopback URL"});
    const auto pathStart = request.url.find('/', kScheme.size());
    const std::string host = request.url.substr(0, pathStart);
    const std::string path = pathStart == std::string::npos ? "/" : request.url.substr(pathStart);
    httplib::Client client(host);
    const auto seconds = request.timeout.count() / 1000;
    const auto micros = (request.timeout.count() % 1000) * 1000;
    client.set_connection_timeout(seconds, micros);
    client.set_read_timeout(seconds, micros);
    httplib::Headers headers;
    std::string contentType = "application/json";
    for (const auto& [name, value] : request.headers) {
      if (lowered(name) == "content-type")
        contentType = value;
      else
        headers.emplace(name, value);
    }
    httplib::Result result = request.method == "GET"
                                 ? client.Get(path, headers)
                                 : client.Post(path, headers, request.body, contentType);
    if (!result) {
      auto kind = result.error() == httplib::Error::Connection ? HttpFailure::Kind::connect
                  : result.error() == httplib::Error::Read     ? HttpFailure::Kind::timeout
                                                               : HttpFailure::Kind::other;
      return std::unexpected(HttpFailure{kind, httplib::to_string(result.error())});
    }
    if (result->body.size() > request.maxReplyBytes)
      return std::unexpected(HttpFailure{HttpFailure::Kind::tooLarge, "reply too large"});
    return HttpReply{result->status, result->get_header_value("Content-Type"), result->body};
  }
};

}  // namespace vesko::testing
