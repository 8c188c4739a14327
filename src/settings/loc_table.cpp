#include "settings/loc_table.h"

#include "settings/loc_rows.h"

namespace vesko {

std::string_view tableCode(TableLanguage language) {
  switch (language) {
    case TableLanguage::english:
      return "en";
    case TableLanguage::simplifiedChinese:
      return "zh-Hans";
    case TableLanguage::traditionalChinese:
      return "zh-Hant";
    case TableLanguage::polish:
      return "pl";
    case TableLanguage::russian:
      return "ru";
    case TableLanguage::thai:
      return "th";
  }
  return "";
}

std::optional<TableLanguage> tableFor(std::string_view code) {
  if (code == "zh") return TableLanguage::simplifiedChinese;
  for (auto language : kTableLanguages)
    if (tableCode(language) == code) return language;
  return std::nullopt;
}

std::span<const LocRow> builtInRows(TableLanguage language) {
  switch (language) {
    case TableLanguage::english:
      return loc_rows::english();
    case TableLanguage::simplifiedChinese:
      return loc_rows::simplifiedChinese();
    case TableLanguage::traditionalChinese:
      return loc_rows::traditionalChinese();
    case TableLanguage::polish:
      return loc_rows::polish();
    case TableLanguage::russian:
      return loc_rows::russian();
    case TableLanguage::thai:
      return loc_rows::thai();
  }
  return {};
}

std::optional<std::string_view> LocTable::find(std::string_view french) const {
  std::call_once(built_, [this] {
    index_.reserve(rows_.size());
    // The first row of a key wins; the table tests reject duplicates anyway.
    for (const auto& row : rows_) index_.emplace(row.french, row.translation);
  });
  if (auto it = index_.find(french); it != index_.end()) return it->second;
  return std::nullopt;
}

LocTables::LocTables()
    : LocTables({builtInRows(TableLanguage::english), builtInRows(TableLanguage::simplifiedChinese),
                 builtInRows(TableLanguage::traditionalChinese), builtInRows(TableLanguage::polish),
                 builtInRows(TableLanguage::russian), builtInRows(TableLanguage::thai)}) {}

LocTables::LocTables(const std::array<std::span<const LocRow>, 6>& rows)
    : tables_{LocTable(rows[0]), LocTable(rows[1]), LocTable(rows[2]),
              LocTable(rows[3]), LocTable(rows[4]), LocTable(rows[5])} {}

std::vector<std::string_view> placeholders(std::string_view text) {
  std::vector<std::string_view> found;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') continue;
    std::size_t length = i + 1 < text.size() ? 2 : 1;
    found.push_back(text.substr(i, length));
    i += length - 1;
  }
  return found;
}

}  // namespace vesko
