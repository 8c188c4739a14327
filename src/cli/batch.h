#pragma once
// Batch mode shared by the commands that answer many requests from one process: one JSON request
// per line on standard input, one JSON answer per line out, flushed each time. Main thread only.

#include <cstddef>
#include <expected>
#include <iostream>
#include <nlohmann/json.hpp>
#include <string>

#include "cli/input.h"
#include "cli/zh_output.h"

namespace vesko::cli {

// `answer(request)` gives the reply or a Failure; a bad line answers {"error": …} and the loop
// goes on, so that a script keeps one process and one loaded dictionary.
template <typename Answer>
int runBatch(Answer&& answer) {
  std::string line;
  while (std::getline(std::cin, line)) {
    if (line.ends_with('\r')) line.pop_back();
    if (line.find_first_not_of(" \t") == std::string::npos) continue;
    nlohmann::json reply;
    nlohmann::json request = nlohmann::json::parse(line, nullptr, false);
    if (request.is_discarded() || !request.is_object()) {
      reply = {{"error", "not a JSON object"}};
    } else {
      auto result = answer(request);
      reply = result ? std::move(*result) : nlohmann::json{{"error", result.error().message}};
    }
    std::cout << dump(reply) << std::endl;
  }
  return 0;
}

// A string member of a request, as UTF-16.
std::expected<std::u16string, Failure> stringField(const nlohmann::json& request, const char* name);
// A whole-number member of a request.
std::expected<std::ptrdiff_t, Failure> integerField(const nlohmann::json& request,
                                                    const char* name);

}  // namespace vesko::cli
