#include "desktop/launch_request.h"

namespace vesko::desktop {

std::expected<LaunchRequest, std::string> parseLaunch(std::span<const std::string_view> args) {
  std::optional<LaunchRequest> request;
  for (std::string_view arg : args) {
    std::optional<LaunchRequest> named;
    if (arg == "--settings") named = LaunchRequest::settings;
    else if (arg == "--review") named = LaunchRequest::review;
    else if (arg == "--quit") named = LaunchRequest::quit;
    else if (arg == "--help" || arg == "-h") named = LaunchRequest::help;
    else return std::unexpected("unknown option " + std::string(arg));
    if (request && *request != *named)
      return std::unexpected("one of --settings, --review, --quit at a time");
    request = named;
  }
  return request.value_or(LaunchRequest::start);
}

std::string_view messageOf(LaunchRequest request) {
  switch (request) {
    case LaunchRequest::review:
      return "review\n";
    case LaunchRequest::quit:
      return "quit\n";
    case LaunchRequest::start:
    case LaunchRequest::settings:
    case LaunchRequest::help:
      break;
  }
  return "settings\n";
}

std::optional<LaunchRequest> requestOfMessage(std::string_view line) {
  while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.remove_suffix(1);
  if (line == "settings") return LaunchRequest::settings;
  if (line == "review") return LaunchRequest::review;
  if (line == "quit") return LaunchRequest::quit;
  return std::nullopt;
}

}  // namespace vesko::desktop
