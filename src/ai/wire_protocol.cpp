#include "ai/wire_protocol.h"

#include <algorithm>
#include <cctype>
#include <nlohmann/json.hpp>

namespace vesko {
namespace {

using nlohmann::json;

// A body that is not a JSON object counts as an empty one.
json parseObject(std::string_view body) {
  json parsed = json::parse(body, nullptr, /*allow_exceptions=*/false);
  return parsed.is_object() ? parsed : json::object();
}

std::string serialised(const json& body) {
  try {
    return body.dump();
  } catch (const json::exception&) {
    return {};  // text that is not UTF-8: the service will refuse an empty body
  }
}

std::string withoutTrailingSlash(std::string_view url) {
  while (url.ends_with('/')) url.remove_suffix(1);
  return std::string(url);
}

std::string lowered(std::string_view text) {
  std::string out(text);
  std::transform(out.begin(), out.end(), out.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return out;
}

std::string textAt(const json& object, const char* key) {
  auto it = object.find(key);
  return it != object.end() && it->is_string() ? it->get<std::string>() : std::string();
}

json chatMessages(const Question& question) {
  return json::array({{{"role", "system"}, {"content", question.system}},
                      {{"role", "user"}, {"content", question.user}}});
}

}  // namespace

std::string trimmed(std::string_view text) {
  constexpr std::string_view kBlank = " \t\n\r\v\f";
  const auto first = text.find_first_not_of(kBlank);
  if (first == std::string_view::npos) return {};
  const auto last = text.find_last_not_of(kBlank);
  return std::string(text.substr(first, last - first + 1));
}

HttpRequest chatRequest(AIProvider provider, std::string_view baseUrl, std::string_view key,
                        std::string_view model, const Question& question) {
  HttpRequest request;
  request.method = "POST";
  request.headers.emplace_back("content-type", "application/json");
  const std::string base = withoutTrailingSlash(baseUrl);
  json body;
  switch (provider) {
    case AIProvider::claude:
      request.url = base + "/v1/messages";
      request.headers.emplace_back("x-api-key", std::string(key));
      request.headers.emplace_back("anthropic-version", "2023-06-01");
      body = {{"model", std::string(model)},
              {"max_tokens", question.maxTokens},
              {"system", question.system},
              {"messages", json::array({{{"role", "user"}, {"content", question.user}}})}};
      break;
    case AIProvider::openai:
      request.url = base + "/v1/chat/completions";
      request.headers.emplace_back("Authorization", "Bearer " + std::string(key));
      body = {{"model", std::string(model)},
              {"max_tokens", question.maxTokens},
              {"messages", chatMessages(question)}};
      break;
    case AIProvider::deepseek:
      request.url = base + "/chat/completions";
      request.headers.emplace_back("Authorization", "Bearer " + std::string(key));
      body = {{"model", std::string(model)},
              {"max_tokens", question.maxTokens},
              {"messages", chatMessages(question)},
              {"stream", false},
              {"thinking", {{"type", "disabled"}}}};
      break;
    case AIProvider::apple:
    case AIProvider::vesko:
      // The local server: no key, and the token budget left to the model as the on-device
      // model leaves it.
      request.url = base + "/chat/completions";
      body = {{"messages", chatMessages(question)}};
      if (!model.empty()) body["model"] = std::string(model);
      break;
  }
  request.body = serialised(body);
  return request;
}

HttpRequest relayRequest(std::string_view host, const RelayIdentity& identity,
                         const Question& question, std::string_view userAgent) {
  HttpRequest request;
  request.method = "POST";
  request.url = withoutTrailingSlash(host) + "/v1/ai";
  request.headers.emplace_back("content-type", "application/json");
  request.headers.emplace_back("User-Agent", std::string(userAgent));
  request.body = serialised({{"device", identity.device},
                             {"token", identity.token},
                             {"user", question.user},
                             {"system", question.system},
                             {"maxTokens", question.maxTokens}});
  return request;
}

Refusal readRefusal(long status, std::string_view body) {
  const json reply = parseObject(body);
  const json error =
      reply.contains("error") && reply["error"].is_object() ? reply["error"] : json::object();
  Refusal refusal;
  refusal.message = textAt(error, "message");
  // `code` is a string at OpenAI and DeepSeek, sometimes a number or null elsewhere.
  std::string code = textAt(error, "code");
  if (auto it = error.find("code"); it != error.end() && it->is_number_integer())
    code = std::to_string(it->get<long long>());
  const std::string kind = textAt(error, "type") + " " + code;
  const std::string message = lowered(refusal.message);
  refusal.unreachable = status == 403 || status == 429 || status >= 500;
  refusal.modelGone = (status == 404 || kind.find("not_found") != std::string::npos) &&
                      message.find("model") != std::string::npos;
  refusal.overloaded = status == 429 || status == 503 || status == 529 ||
                       message.find("busy") != std::string::npos ||
                       message.find("overload") != std::string::npos;
  return refusal;
}

std::optional<std::string> readAnswer(AIProvider provider, std::string_view body) {
  const json reply = parseObject(body);
  const json* text = nullptr;
  if (provider == AIProvider::claude) {
    if (auto content = reply.find("content"); content != reply.end() && content->is_array() &&
                                              !content->empty() && content->front().is_object())
      if (auto it = content->front().find("text"); it != content->front().end()) text = &*it;
  } else {
    if (auto choices = reply.find("choices"); choices != reply.end() && choices->is_array() &&
                                              !choices->empty() && choices->front().is_object())
      if (auto message = choices->front().find("message");
          message != choices->front().end() && message->is_object())
        if (auto it = message->find("content"); it != message->end()) text = &*it;
  }
  if (!text || !text->is_string()) return std::nullopt;
  return trimmed(text->get_ref<const std::string&>());
}

RelayAnswer readRelayAnswer(std::string_view body) {
  const json reply = parseObject(body);
  RelayAnswer answer;
  auto ok = reply.find("ok");
  auto text = reply.find("text");
  if (ok != reply.end() && ok->is_boolean() && ok->get<bool>() && text != reply.end() &&
      text->is_string())
    answer.text = trimmed(text->get_ref<const std::string&>());
  else
    answer.error = textAt(reply, "error");
  return answer;
}

std::vector<std::string> readModelIds(std::string_view body) {
  const json reply = parseObject(body);
  std::vector<std::string> ids;
  auto data = reply.find("data");
  if (data == reply.end() || !data->is_array()) return ids;
  for (const auto& model : *data)
    if (model.is_object())
      if (auto id = textAt(model, "id"); !id.empty()) ids.push_back(std::move(id));
  return ids;
}

}  // namespace vesko
