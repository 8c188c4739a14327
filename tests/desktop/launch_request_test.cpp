// vesko-desktop's command line and the lines a second start sends to the running instance.

#include "desktop/launch_request.h"

#include <gtest/gtest.h>

#include <vector>

namespace vesko::desktop {
namespace {

TEST(LaunchRequestTest, ParsesTheOptions) {
  struct Row {
    std::vector<std::string_view> args;
    std::optional<LaunchRequest> request;  // nothing: refused
  };
  const Row rows[] = {
      {{}, LaunchRequest::start},
      {{"--settings"}, LaunchRequest::settings},
      {{"--review"}, LaunchRequest::review},
      {{"--quit"}, LaunchRequest::quit},
      {{"--help"}, LaunchRequest::help},
      {{"-h"}, LaunchRequest::help},
      {{"--review", "--review"}, LaunchRequest::review},
      {{"--review", "--quit"}, std::nullopt},
      {{"--settings", "extra"}, std::nullopt},
      {{"--revue"}, std::nullopt},
      {{"review"}, std::nullopt},
  };
  for (const Row& row : rows) {
    std::string joined;
    for (auto arg : row.args) joined += std::string(arg) + " ";
    SCOPED_TRACE(joined);
    const auto parsed = parseLaunch(row.args);
    ASSERT_EQ(parsed.has_value(), row.request.has_value());
    if (parsed) EXPECT_EQ(*parsed, *row.request);
    else EXPECT_FALSE(parsed.error().empty());
  }
}

TEST(LaunchRequestTest, MessagesCarryTheRequestAcross) {
  // What the running instance does with each start's request.
  struct Row {
    LaunchRequest sent;
    LaunchRequest received;
  };
  const Row rows[] = {
      {LaunchRequest::start, LaunchRequest::settings},  // a plain second start shows the settings
      {LaunchRequest::settings, LaunchRequest::settings},
      {LaunchRequest::review, LaunchRequest::review},
      {LaunchRequest::quit, LaunchRequest::quit},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(messageOf(row.sent)));
    const auto message = messageOf(row.sent);
    EXPECT_TRUE(message.ends_with('\n'));
    EXPECT_EQ(requestOfMessage(message), row.received);
  }
}

TEST(LaunchRequestTest, IgnoresUnknownLines) {
  for (std::string_view line : {"", "\n", "start\n", "quit now\n", "QUIT\n", "help\n"}) {
    SCOPED_TRACE(std::string(line));
    EXPECT_FALSE(requestOfMessage(line));
  }
  EXPECT_EQ(requestOfMessage("review\r\n"), LaunchRequest::review);
}

}  // namespace
}  // namespace vesko::desktop
