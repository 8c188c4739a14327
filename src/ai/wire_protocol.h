#pragma once
// The providers' wire formats: the request each one expects for a question and where its answer,
// its refusal and its model list sit in the reply. Anthropic Messages for Claude, OpenAI Chat
// Completions for ChatGPT and the local model server, DeepSeek's chat completions, and the relay
// of Vesko's own web service. Pure functions; any thread. Keys travel only in request headers.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ai/http.h"
#include "ai/provider.h"

namespace vesko {

struct Question {
  std::string system;
  std::string user;
  int maxTokens = 0;
};

// The POST for `provider` (claude, openai, deepseek, or apple for the local server) at `baseUrl`
// (a host for the services, the server's ".../v1" base for the local one). `model` may be empty
// only for the local server, which then picks its own. A question that cannot be serialised
// (text that is not UTF-8) goes with an empty body, which the service refuses.
HttpRequest chatRequest(AIProvider provider, std::string_view baseUrl, std::string_view key,
                        std::string_view model, const Question& question);

// The relay's identity of this installation with the web service.
struct RelayIdentity {
  std::string device;
  std::string token;
};
HttpRequest relayRequest(std::string_view host, const RelayIdentity& identity,
                         const Question& question, std::string_view userAgent);

// What a reply of status 400 or more says.
struct Refusal {
  std::string message;       // `error.message`; empty when the reply has none
  bool unreachable = false;  // 403, 429 or 5xx
  bool modelGone = false;    // 404 or a "not_found" kind, about the model
  bool overloaded = false;   // 429, 503, 529, or "busy"/"overload" in the message
};
Refusal readRefusal(long status, std::string_view body);

// The answer of a reply below 400, trimmed; nothing when the answer path holds no string (a body
// that is not a JSON object counts as an empty one).
std::optional<std::string> readAnswer(AIProvider provider, std::string_view body);

struct RelayAnswer {
  std::optional<std::string> text;  // when `ok` is true and `text` a string
  std::string error;                // the reply's `error` code otherwise, when it has one
};
RelayAnswer readRelayAnswer(std::string_view body);

// The ids of an OpenAI-style model list (`data[].id`), in the listed order.
std::vector<std::string> readModelIds(std::string_view body);

// `text` without leading and trailing white space and newlines.
std::string trimmed(std::string_view text);

}  // namespace vesko
