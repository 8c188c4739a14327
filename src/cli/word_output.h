#pragma once
// What a read of a word gives, written for people and for scripts, shared by `vesko look` and
// `vesko probe`; and the studied languages as the command line names them. Stateless.

#include <expected>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/hover_result.h"
#include "app/language.h"
#include "app/word_chooser.h"
#include "cli/input.h"
#include "settings/settings.h"

namespace vesko::cli {

inline const std::vector<std::string> kAllLanguages = {"zh", "ja", "th", "fr", "en", "ru", "pl"};

// "zh, fr,en" → {"zh", "fr", "en"}.
std::vector<std::string> splitCodes(std::string_view list);
// The snapshot that studies exactly `langs`; a failure names an unknown code or preference.
std::expected<Snapshot, Failure> snapshotOf(const std::vector<std::string>& langs,
                                            const std::string& prefLatin,
                                            const std::string& prefHan, bool conj);

// The languages the learner reads in any mode (hover or with the key held), as codes.
std::vector<std::string> studiedCodes(const Settings& settings);
// The languages of `--langs` when given, else the studied ones, with the preferences from the
// settings.
std::expected<Snapshot, Failure> snapshotFor(const std::string& langsOption,
                                             const Settings& settings);

// {"kind": "chinese"|"word"|"none", …}: the shape `vesko look --json` has always written.
nlohmann::json resultJson(const std::optional<HoverResult>& result, const SkippedLanguage& skipped);
// The aligned card for people, ending with a newline.
std::string resultCard(const std::optional<HoverResult>& result, const SkippedLanguage& skipped);

}  // namespace vesko::cli
