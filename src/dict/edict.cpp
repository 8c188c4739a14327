#include "dict/edict.h"

#include <fstream>

#include "dict/edict_line.h"
#include "dict/lowercase.h"
#include "dict/text_lines.h"
#include "text/unicode.h"

namespace vesko {
namespace {

std::string joined(const std::vector<std::string_view>& parts, std::string_view separator) {
  std::string out;
  for (std::string_view p : parts) {
    if (!out.empty()) out += separator;
    out += p;
  }
  return out;
}

WordEntry kanjiEntry(const KanjidicLine& line) {
  WordEntry entry;
  entry.headword = std::string(line.kanji);
  std::vector<std::string_view> readings = line.onReadings;
  readings.insert(readings.end(), line.kunReadings.begin(), line.kunReadings.end());
  entry.reading = joined(readings, "、");
  for (std::string_view meaning : line.meanings) entry.defs.emplace_back(meaning);
  return entry;
}

}  // namespace

std::expected<std::unique_ptr<EdictDictionary>, std::string> EdictDictionary::load(
    const std::filesystem::path& edict, const std::filesystem::path& kanjidic) {
  auto file = MappedFile::open(edict);
  if (!file) return std::unexpected("cannot read " + edict.string());
  std::unique_ptr<EdictDictionary> dict(new EdictDictionary(std::move(*file)));

  EdictLine parsed;
  forEachLineFeedLine(dict->file_.bytes(), [&](std::string_view line, std::size_t offset) {
    if (line.empty() || line == "\r") return;
    // A bad byte spoils only its own line: its forms could never be matched anyway.
    if (offset > UINT32_MAX || !text::isValidUtf8(line) || !parseEdictLine(line, parsed)) {
      ++dict->stats_.skippedLines;
      return;
    }
    ++dict->stats_.entries;
    const auto at = static_cast<uint32_t>(offset);
    for (std::string_view form : parsed.kanji) dict->forms_.add(lowercased(form), at);
    for (std::string_view form : parsed.kana) dict->forms_.add(lowercased(form), at);
  });
  dict->forms_.finish();

  if (!kanjidic.empty()) {
    if (auto kanji = MappedFile::open(kanjidic)) {
      KanjidicLine line;
      forEachLineFeedLine(kanji->bytes(), [&](std::string_view text, std::size_t) {
        if (text::isValidUtf8(text) && parseKanjidicLine(text, line))
          dict->kanjidic_.emplace(std::string(line.kanji), kanjiEntry(line));
      });
      dict->stats_.kanji = dict->kanjidic_.size();
    }
  }
  return dict;
}

WordEntry EdictDictionary::entryAt(uint32_t offset, std::string_view lookedUp) const {
  std::string_view line = file_.bytes().substr(offset);
  line = line.substr(0, line.find('\n'));
  EdictLine parsed;
  WordEntry entry;
  if (!parseEdictLine(line, parsed)) return entry;  // cannot happen: the line parsed at load

  auto matches = [&](std::string_view form) { return lowercased(form) == lookedUp; };
  const auto& written = parsed.kanji.empty() ? parsed.kana : parsed.kanji;
  std::string_view headword = written.front();
  for (std::string_view form : written)
    if (matches(form)) headword = form;
  entry.headword = std::string(headword);
  entry.reading = joined(parsed.kana, "・");
  for (std::string_view form : parsed.kana)
    if (matches(form) && !parsed.kanji.empty()) entry.reading = std::string(form);
  if (parsed.kanji.empty()) entry.reading = entry.headword;
  for (std::string_view gloss : parsed.glosses) entry.defs.emplace_back(gloss);
  return entry;
}

std::vector<WordEntry> EdictDictionary::lookup(std::string_view lowercased) const {
  std::vector<WordEntry> entries;
  for (uint32_t offset : forms_.find(lowercased)) {
    WordEntry entry = entryAt(offset, lowercased);
    if (!entry.defs.empty()) entries.push_back(std::move(entry));
  }
  if (entries.empty()) {
    if (auto kanji = kanjidic_.find(std::string(lowercased)); kanji != kanjidic_.end())
      entries.push_back(kanji->second);
  }
  return entries;
}

bool EdictDictionary::contains(std::string_view lowercased) const {
  return !forms_.find(lowercased).empty() || kanjidic_.contains(std::string(lowercased));
}

}  // namespace vesko
