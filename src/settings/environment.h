#pragma once
// The process environment as the core reads it: a lookup function, so that tests hand in their own
// variables instead of changing the process's, and the learner's preferred languages derived from
// it. Stateless; any thread (the process lookup only reads the environment).

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vesko {

// The value of a variable, nothing when it is unset or empty.
using Environment = std::function<std::optional<std::string>(std::string_view name)>;

Environment processEnvironment();

// The preferred languages as BCP 47 tags, most preferred first: the entries of LANGUAGE, then the
// first of LC_ALL, LC_MESSAGES, LANG that is set. "fr_CA.UTF-8" gives "fr-CA"; "C" and "POSIX"
// name no language and are skipped; duplicates are dropped.
std::vector<std::string> preferredLanguages(const Environment& environment);

// One locale name as a tag: "zh_TW.UTF-8" → "zh-TW", "sr_RS@latin" → "sr-RS"; empty for "C".
std::string languageTag(std::string_view localeName);

}  // namespace vesko
