#pragma once
// What `vesko-desktop` was asked to do on its command line, and the one-line messages a second
// start sends to the instance already running. Plain values and pure functions; any thread.

#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vesko::desktop {

enum class LaunchRequest {
  start,     // no option: start, or bring up the running instance's settings
  settings,  // --settings
  review,    // --review
  quit,      // --quit: the running instance saves and ends
  help,      // --help: print the usage and end
};

// The request of the arguments after the program name; an error sentence for anything else
// (unknown options, more than one request).
std::expected<LaunchRequest, std::string> parseLaunch(std::span<const std::string_view> args);

// The line sent to the running instance ("settings\n"…); a plain start asks for the settings.
std::string_view messageOf(LaunchRequest request);
// The request a received line stands for; nothing for a line no version of the app sends.
std::optional<LaunchRequest> requestOfMessage(std::string_view line);

inline constexpr std::string_view kUsage =
    "usage: vesko-desktop [--settings | --review | --quit]\n"
    "  Starts Vesko in the system tray; with Vesko already running, brings up its settings.\n"
    "  --settings  show the settings window\n"
    "  --review    show the review window\n"
    "  --quit      save and quit the running Vesko\n";

}  // namespace vesko::desktop
