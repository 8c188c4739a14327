// The host's time zone as ICU reads it, and which zones mean mainland China.

#include "ai/time_zone.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

namespace vesko {
namespace {

TEST(TimeZoneTest, ChinaZones) {
  struct Row {
    const char* zone;
    bool china;
  };
  const Row rows[] = {
      {"Asia/Shanghai", true},
      {"Asia/Urumqi", true},
      {"Asia/Chongqing", true},
      {"Asia/Harbin", true},
      {"Asia/Kashgar", true},
      {"Asia/Hong_Kong", false},
      {"Asia/Macau", false},
      {"Asia/Taipei", false},
      {"Asia/Singapore", false},
      {"asia/shanghai", false},
      {"", false},
      {"Asia/Shanghai ", false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.zone);
    EXPECT_EQ(isChinaTimeZone(row.zone), row.china);
  }
}

// ICU reads the TZ variable first, as the C library does.
TEST(TimeZoneTest, HostZoneFollowsTZ) {
  const char* saved = std::getenv("TZ");
  const std::string previous = saved ? saved : "";
  setenv("TZ", "Asia/Urumqi", 1);
  tzset();
  const std::string zone = hostTimeZoneId();
  if (saved)
    setenv("TZ", previous.c_str(), 1);
  else
    unsetenv("TZ");
  tzset();
  EXPECT_EQ(zone, "Asia/Urumqi");
}

}  // namespace
}  // namespace vesko
