#include "ai/time_zone.h"

#include <unicode/timezone.h>

#include <array>
#include <memory>

namespace vesko {
namespace {

// clang-format off
constexpr std::array<std::string_view, 5> kChinaTimeZones{
  "Asia/Shanghai", "Asia/Urumqi", "Asia/Chongqing", "Asia/Harbin", "Asia/Kashgar",
};
// clang-format on

}  // namespace

std::string hostTimeZoneId() {
  std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::detectHostTimeZone());
  if (!zone) return "Etc/Unknown";
  icu::UnicodeString id;
  zone->getID(id);
  std::string out;
  id.toUTF8String(out);
  return out;
}

bool isChinaTimeZone(std::string_view id) {
  for (auto zone : kChinaTimeZones)
    if (zone == id) return true;
  return false;
}

}  // namespace vesko
