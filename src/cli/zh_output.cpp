#include "cli/zh_output.h"

#include <fmt/format.h>

#include <algorithm>

#include "dict/pinyin.h"
#include "text/unicode.h"

namespace vesko::cli {
namespace {

std::string padded(std::string_view s, std::size_t width) {
  std::string out(s);
  const std::size_t used = text::displayWidth(s);
  if (used < width) out.append(width - used, ' ');
  return out;
}

std::string glosses(const EntryRef& entry) {
  std::string out;
  for (std::size_t i = 0; i < entry.defCount(); ++i) {
    if (i) out += "; ";
    out += entry.def(i);
  }
  return out;
}

struct Row {
  std::string word;
  std::string headwords;
  std::string reading;
  std::string meaning;
};

std::string table(const std::vector<Row>& rows) {
  std::size_t wordWidth = 0, headWidth = 0, readingWidth = 0;
  for (const auto& row : rows) {
    wordWidth = std::max(wordWidth, text::displayWidth(row.word));
    headWidth = std::max(headWidth, text::displayWidth(row.headwords));
    readingWidth = std::max(readingWidth, text::displayWidth(row.reading));
  }
  std::string out;
  for (const auto& row : rows) {
    std::string line;
    if (wordWidth) line += padded(row.word, wordWidth) + "  ";
    line += padded(row.headwords, headWidth) + "  " + padded(row.reading, readingWidth) + "  " +
            row.meaning;
    while (line.ends_with(' ')) line.pop_back();
    out += line + "\n";
  }
  return out;
}

Row rowOf(const EntryRef& entry, std::string word) {
  std::string headwords(entry.simp());
  if (entry.trad() != entry.simp()) headwords += fmt::format(" ({})", entry.trad());
  return {std::move(word), std::move(headwords), Pinyin::marked(entry.pinyin()), glosses(entry)};
}

}  // namespace

nlohmann::json entryJson(const EntryRef& entry) {
  nlohmann::json defs = nlohmann::json::array();
  for (std::size_t i = 0; i < entry.defCount(); ++i) defs.push_back(entry.def(i));
  return {{"trad", entry.trad()},
          {"simp", entry.simp()},
          {"pinyin", entry.pinyin()},
          {"marked", Pinyin::marked(entry.pinyin())},
          {"defs", std::move(defs)}};
}

nlohmann::json entryJson(const Entry& entry) {
  return {{"trad", entry.trad},
          {"simp", entry.simp},
          {"pinyin", entry.pinyin},
          {"marked", Pinyin::marked(entry.pinyin)},
          {"defs", entry.defs}};
}

nlohmann::json entriesJson(const Entries& entries) {
  nlohmann::json out = nlohmann::json::array();
  for (EntryRef entry : entries) out.push_back(entryJson(entry));
  return out;
}

nlohmann::json wordMatchJson(const std::optional<WordMatch>& match) {
  if (!match) return nullptr;
  return {{"word", text::toUtf8(match->word)},
          {"start", match->start},
          {"entries", entriesJson(match->entries)}};
}

nlohmann::json pinyinJson(std::string_view numbered) {
  nlohmann::json colors = nlohmann::json::array();
  auto tones = Pinyin::tones(numbered);
  for (int tone : tones) {
    auto color = Pinyin::toneColor(tone);
    if (color) colors.push_back(color->hex());
    else colors.push_back(nullptr);
  }
  return {{"marked", Pinyin::marked(numbered)}, {"tones", tones}, {"colors", std::move(colors)}};
}

std::string entriesText(const Entries& entries) {
  std::vector<Row> rows;
  for (EntryRef entry : entries) rows.push_back(rowOf(entry, {}));
  return table(rows);
}

std::string wordsText(const std::vector<FoundWord>& words) {
  std::vector<Row> rows;
  for (const auto& found : words) {
    std::string word = text::toUtf8(found.word);
    for (EntryRef entry : found.entries) {
      rows.push_back(rowOf(entry, word));
      word.clear();
    }
  }
  return table(rows);
}

std::string dump(const nlohmann::json& value) {
  return value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace vesko::cli
