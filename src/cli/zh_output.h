#pragma once
// How Chinese results are written: the JSON that scripts and editor integrations rely on, and the
// aligned text for people. Stateless.

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>
#include <vector>

#include "dict/cedict.h"

namespace vesko::cli {

nlohmann::json entryJson(const EntryRef& entry);
nlohmann::json entryJson(const Entry& entry);
nlohmann::json entriesJson(const Entries& entries);
nlohmann::json wordMatchJson(const std::optional<WordMatch>& match);
nlohmann::json pinyinJson(std::string_view numbered);

// One line per entry: headwords, tone-marked pinyin and glosses in aligned columns.
std::string entriesText(const Entries& entries);
std::string wordsText(const std::vector<FoundWord>& words);

// Compact JSON on one line; invalid UTF-8 can't reach here, but would be replaced, not thrown.
std::string dump(const nlohmann::json& value);

}  // namespace vesko::cli
