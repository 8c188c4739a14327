#include "ai/curl_http_client.h"

#include <curl/curl.h>

#include <algorithm>
#include <memory>
#include <string>

namespace vesko {
namespace {

// A connection that is not up after this long will not be: the rest of the budget is the reply's.
constexpr long kConnectTimeoutMs = 10'000;

struct Sink {
  std::string body;
  std::size_t cap = 0;
  bool overflowed = false;
};

std::size_t collect(char* data, std::size_t size, std::size_t count, void* user) {
  auto& sink = *static_cast<Sink*>(user);
  const std::size_t bytes = size * count;
  if (sink.body.size() + bytes > sink.cap) {
    sink.overflowed = true;
    return 0;  // anything but `bytes` makes curl abort the transfer with CURLE_WRITE_ERROR
  }
  sink.body.append(data, bytes);
  return bytes;
}

struct EasyDeleter {
  void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};
struct ListDeleter {
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};

HttpFailure::Kind kindOf(CURLcode code) {
  switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
    case CURLE_COULDNT_CONNECT:
      return HttpFailure::Kind::connect;
    case CURLE_OPERATION_TIMEDOUT:
      return HttpFailure::Kind::timeout;
    default:
      return HttpFailure::Kind::other;
  }
}

}  // namespace

CurlLibrary::CurlLibrary() {
  curl_global_init(CURL_GLOBAL_DEFAULT);
}

CurlLibrary::~CurlLibrary() {
  curl_global_cleanup();
}

std::expected<HttpReply, HttpFailure> CurlHttpClient::send(const HttpRequest& request) const {
  std::unique_ptr<CURL, EasyDeleter> easy(curl_easy_init());
  if (!easy) return std::unexpected(HttpFailure{HttpFailure::Kind::other, "curl_easy_init"});
  CURL* handle = easy.get();

  curl_slist* rawHeaders = nullptr;
  for (const auto& [name, value] : request.headers) {
    const std::string line = name + ": " + value;
    curl_slist* grown = curl_slist_append(rawHeaders, line.c_str());
    if (!grown) {
      curl_slist_free_all(rawHeaders);
      return std::unexpected(HttpFailure{HttpFailure::Kind::other, "curl_slist_append"});
    }
    rawHeaders = grown;
  }
  // Without this curl waits for a "100 Continue" before sending a larger body.
  if (curl_slist* grown = curl_slist_append(rawHeaders, "Expect:")) rawHeaders = grown;
  std::unique_ptr<curl_slist, ListDeleter> headers(rawHeaders);

  Sink sink;
  sink.cap = request.maxReplyBytes;
  char errorText[CURL_ERROR_SIZE] = {};
  const long timeoutMs = std::max<long>(1, static_cast<long>(request.timeout.count()));

  curl_easy_setopt(handle, CURLOPT_URL, request.url.c_str());
  curl_easy_setopt(handle, CURLOPT_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(handle, CURLOPT_FOLLOWLOCATION, 0L);
  curl_easy_setopt(handle, CURLOPT_SSL_VERIFYPEER, 1L);
  curl_easy_setopt(handle, CURLOPT_SSL_VERIFYHOST, 2L);
  curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);  // signals and threads do not mix
  curl_easy_setopt(handle, CURLOPT_TIMEOUT_MS, timeoutMs);
  curl_easy_setopt(handle, CURLOPT_CONNECTTIMEOUT_MS, std::min(timeoutMs, kConnectTimeoutMs));
  curl_easy_setopt(handle, CURLOPT_HTTPHEADER, headers.get());
  curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &collect);
  curl_easy_setopt(handle, CURLOPT_WRITEDATA, &sink);
  curl_easy_setopt(handle, CURLOPT_ERRORBUFFER, errorText);
  if (request.method == "POST") {
    curl_easy_setopt(handle, CURLOPT_POST, 1L);
    curl_easy_setopt(handle, CURLOPT_POSTFIELDS, request.body.data());
    curl_easy_setopt(handle, CURLOPT_POSTFIELDSIZE_LARGE,
                     static_cast<curl_off_t>(request.body.size()));
  } else if (request.method != "GET") {
    curl_easy_setopt(handle, CURLOPT_CUSTOMREQUEST, request.method.c_str());
  }

  const CURLcode code = curl_easy_perform(handle);
  if (sink.overflowed)
    return std::unexpected(
        HttpFailure{HttpFailure::Kind::tooLarge,
                    "reply over " + std::to_string(request.maxReplyBytes) + " bytes"});
  if (code != CURLE_OK) {
    std::string detail = errorText[0] ? errorText : curl_easy_strerror(code);
    return std::unexpected(HttpFailure{kindOf(code), std::move(detail)});
  }

  HttpReply reply;
  curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &reply.status);
  char* contentType = nullptr;
  if (curl_easy_getinfo(handle, CURLINFO_CONTENT_TYPE, &contentType) == CURLE_OK && contentType)
    reply.contentType = contentType;
  reply.body = std::move(sink.body);
  return reply;
}

}  // namespace vesko
