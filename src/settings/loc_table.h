#pragma once
// The interface texts in six languages. Each table is a list of rows from the French text that
// the code shows (itself the key) to its translation, compiled into the program from one data
// file per language (loc_rows_*.cpp), and indexed by a hash on first use.
// Thread contract: immutable; the index is built once, safely against concurrent first use.

#include <array>
#include <cstddef>
#include <mutex>
#include <optional>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vesko {

enum class TableLanguage { english, simplifiedChinese, traditionalChinese, polish, russian, thai };

inline constexpr std::array<TableLanguage, 6> kTableLanguages{
    TableLanguage::english, TableLanguage::simplifiedChinese, TableLanguage::traditionalChinese,
    TableLanguage::polish,  TableLanguage::russian,           TableLanguage::thai};

// "en", "zh-Hans", "zh-Hant", "pl", "ru", "th".
std::string_view tableCode(TableLanguage language);
// The table for a code of that list; "zh" is the simplified one. Nothing for "fr" and the rest.
std::optional<TableLanguage> tableFor(std::string_view code);

struct LocRow {
  std::string_view french;
  std::string_view translation;
};

// The rows compiled into the program.
std::span<const LocRow> builtInRows(TableLanguage language);

class LocTable {
 public:
  explicit LocTable(std::span<const LocRow> rows) : rows_(rows) {}
  LocTable(const LocTable&) = delete;
  LocTable& operator=(const LocTable&) = delete;

  // The translation of `french`; nothing when the table has no row for it.
  std::optional<std::string_view> find(std::string_view french) const;
  std::span<const LocRow> rows() const { return rows_; }

 private:
  std::span<const LocRow> rows_;
  mutable std::once_flag built_;
  mutable std::unordered_map<std::string_view, std::string_view> index_;  // written once, in built_
};

// The six tables. Created once in main (or by a test with its own rows) and handed to `Loc`.
class LocTables {
 public:
  LocTables();  // the built-in rows
  explicit LocTables(
      const std::array<std::span<const LocRow>, 6>& rows);  // in kTableLanguages order
  LocTables(const LocTables&) = delete;
  LocTables& operator=(const LocTables&) = delete;

  const LocTable& operator[](TableLanguage language) const {
    return tables_[static_cast<std::size_t>(language)];
  }

 private:
  std::array<LocTable, 6> tables_;
};

// The placeholders of a format text, in order: "%d", "%@", "%%"; a "%" followed by anything
// else counts as "%" and that character, so that a stray one shows up as a difference.
std::vector<std::string_view> placeholders(std::string_view text);

}  // namespace vesko
