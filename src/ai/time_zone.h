#pragma once
// The host's time-zone identifier and the zones that mean the learner is in mainland China, where
// Claude and ChatGPT are blocked. Stateless; any thread.

#include <string>
#include <string_view>

namespace vesko {

// "Europe/Paris", from ICU's reading of the host; "Etc/Unknown" when it cannot tell.
std::string hostTimeZoneId();

bool isChinaTimeZone(std::string_view id);

}  // namespace vesko
