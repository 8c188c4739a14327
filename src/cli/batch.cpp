#include "cli/batch.h"

#include <fmt/format.h>

#include "text/unicode.h"

namespace vesko::cli {

std::expected<std::u16string, Failure> stringField(const nlohmann::json& request,
                                                   const char* name) {
  auto it = request.find(name);
  if (it == request.end() || !it->is_string())
    return std::unexpected(Failure{fmt::format("\"{}\" must be a string", name)});
  auto text = text::fromUtf8(it->get_ref<const std::string&>());
  if (!text) return std::unexpected(Failure{fmt::format("\"{}\" is not valid UTF-8", name)});
  return *text;
}

std::expected<std::ptrdiff_t, Failure> integerField(const nlohmann::json& request,
                                                    const char* name) {
  auto it = request.find(name);
  if (it == request.end() || !it->is_number_integer())
    return std::unexpected(Failure{fmt::format("\"{}\" must be a whole number", name)});
  return it->get<std::ptrdiff_t>();
}

}  // namespace vesko::cli
