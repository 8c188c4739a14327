#pragma once
// The HTTP exchange over libcurl: one easy handle per request, TLS verification always on, the
// request's timeout for the whole exchange, and a reply longer than its cap aborted as it
// arrives rather than read whole. Stateless between requests, so `send` is safe from any number
// of threads at once, once `CurlLibrary` exists.

#include "ai/http.h"

namespace vesko {

// libcurl's process-wide set-up, which is not thread-safe: created once in main (or a test's
// main) before any thread sends, destroyed after the last one.
class CurlLibrary {
 public:
  CurlLibrary();
  ~CurlLibrary();
  CurlLibrary(const CurlLibrary&) = delete;
  CurlLibrary& operator=(const CurlLibrary&) = delete;
};

class CurlHttpClient final : public HttpClient {
 public:
  // Only http and https are followed; redirects are not (a provider never redirects its API).
  std::expected<HttpReply, HttpFailure> send(const HttpRequest& request) const override;
};

}  // namespace vesko
