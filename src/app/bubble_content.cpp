#include "app/bubble_content.h"

#include <algorithm>

#include "app/language.h"
#include "app/sentence.h"
#include "learn/review_texts.h"
#include "settings/loc.h"
#include "text/unicode.h"

namespace vesko {
namespace {

constexpr std::string_view kProbableName = "nom propre (translittération probable)";

std::string trimmedText(std::string_view text) {
  constexpr std::string_view kSpace = " \t\n";
  const auto first = text.find_first_not_of(kSpace);
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(kSpace) - first + 1));
}

std::string joined(const std::vector<std::string>& parts, std::string_view separator) {
  std::string out;
  for (const auto& part : parts) {
    if (!out.empty()) out += separator;
    out += part;
  }
  return out;
}

bool sameCaseless(std::string_view a, std::string_view b) {
  const auto a16 = text::fromUtf8(a).value_or(u""), b16 = text::fromUtf8(b).value_or(u"");
  return a16.size() == b16.size() && findCaseless(a16, b16) == 0;
}

Reading kanaReading(const std::string& kana) {
  if (kana.empty()) return {};
  return Reading{{ReadingSyllable{kana, 0, std::nullopt}}, kana};
}

void addDef(SenseGroup& group, const std::string& def) {
  if (std::ranges::find(group.defs, def) == group.defs.end()) group.defs.push_back(def);
}

// Caps the groups and their definitions, telling whether anything was left out.
bool capped(std::vector<SenseGroup>& groups) {
  bool cut = groups.size() > kMaxSenseGroups;
  if (cut) groups.resize(kMaxSenseGroups);
  for (auto& group : groups) {
    if (group.defs.size() <= kMaxDefsPerGroup) continue;
    group.defs.resize(kMaxDefsPerGroup);
    cut = true;
  }
  return cut;
}

// One definition line for the kept record: the definitions of each group, the reading in front
// when there are several readings (行: "xíng: to walk | háng: row").
std::string definitionOf(const std::vector<SenseGroup>& groups) {
  std::vector<std::string> lines;
  for (const auto& group : groups) {
    if (group.defs.empty()) continue;
    std::string line = joined(group.defs, "; ");
    if (groups.size() > 1 && !group.reading.empty()) line = group.reading.text + ": " + line;
    lines.push_back(std::move(line));
  }
  return joined(lines, " | ");
}

void chineseContent(const HoverResult::Chinese& hit, const Loc& loc, BubbleContent& content) {
  const bool traditional = loc.isTraditional();
  auto script = [traditional](const Entry& entry) -> const std::string& {
    return traditional ? entry.trad : entry.simp;
  };
  content.headword = hit.entries.empty() ? hit.word : script(hit.entries.front());
  const std::string nameNote = loc.t(kProbableName);
  std::vector<std::string> groupPinyin;  // the numbered pinyin of each group
  for (const auto& entry : hit.entries) {
    auto at = std::ranges::find(groupPinyin, entry.pinyin);
    SenseGroup* group;
    if (at == groupPinyin.end()) {
      groupPinyin.push_back(entry.pinyin);
      content.senses.push_back(SenseGroup{{}, pinyinReading(entry.pinyin), {}});
      group = &content.senses.back();
      if (script(entry) != content.headword) group->headword = script(entry);
    } else {
      group = &content.senses[static_cast<std::size_t>(at - groupPinyin.begin())];
    }
    for (const auto& def : entry.defs) {
      // A name guessed from its characters has this note as its only "definition".
      if (def == nameNote || def == kProbableName) {
        if (std::ranges::find(content.notes, nameNote) == content.notes.end())
          content.notes.push_back(nameNote);
        continue;
      }
      addDef(*group, def);
    }
  }
  if (!hit.entries.empty()) {
    const Entry& first = hit.entries.front();
    content.traditional = hit.word == first.trad && first.trad != first.simp;
    content.record.simp = hit.entries.front().simp;
    content.record.trad = hit.entries.front().trad;
  }
}

void wordContent(const HoverResult::Word& word, const Loc& loc, BubbleContent& content) {
  content.headword = word.word;
  for (const auto& entry : word.entries) {
    SenseGroup group;
    if (!sameCaseless(entry.headword, word.word)) group.headword = entry.headword;
    group.reading = kanaReading(entry.reading);
    for (const auto& def : entry.defs) addDef(group, def);
    content.senses.push_back(std::move(group));
  }
  if (word.elided)
    content.notes.push_back(
        fillPlaceholders(loc.t("élision : « %@ » devant ce mot"), {*word.elided}));
  if (word.base) {
    std::string note = trimmedText(word.base->note);
    if (note.empty()) note = "→ " + word.base->word + "  (" + loc.t("forme du dictionnaire") + ")";
    content.notes.push_back(std::move(note));
  }
}

}  // namespace

Reading pinyinReading(std::string_view numbered) {
  Reading reading;
  reading.text = Pinyin::marked(numbered);
  std::size_t at = 0;
  while (at < numbered.size()) {
    const std::size_t start = numbered.find_first_not_of(' ', at);
    if (start == std::string_view::npos) break;
    std::size_t end = numbered.find(' ', start);
    if (end == std::string_view::npos) end = numbered.size();
    const std::string_view syllable = numbered.substr(start, end - start);
    const auto tones = Pinyin::tones(syllable);
    const int tone = tones.empty() ? 0 : tones.front();
    reading.syllables.push_back(
        ReadingSyllable{Pinyin::marked(syllable), tone, Pinyin::toneColor(tone)});
    at = end;
  }
  return reading;
}

std::optional<ByteRange> findWordInSentence(std::string_view sentence, std::string_view word,
                                            std::size_t latestStart) {
  auto sentence16 = text::fromUtf8(sentence);
  auto word16 = text::fromUtf8(word);
  if (!sentence16 || !word16 || word16->empty()) return std::nullopt;
  const std::size_t at = findCaseless(*sentence16, *word16);
  if (at == std::u16string::npos || at > latestStart) return std::nullopt;
  // Case folding keeps lengths for every letter a word holds in practice; the end is clamped in
  // case it did not (ß against SS).
  const std::u16string_view s = *sentence16;
  const std::size_t end16 = std::min(s.size(), at + word16->size());
  const std::size_t begin = text::toUtf8(s.substr(0, at)).size();
  const std::size_t end = begin + text::toUtf8(s.substr(at, end16 - at)).size();
  return ByteRange{begin, end};
}

BubbleContent bubbleContent(const HoverResult& result, const Loc& loc) {
  BubbleContent content;
  std::size_t start = 0;
  if (const auto* hit = result.chinese()) {
    content.word = hit->word;
    content.language = "zh";
    content.sentence = hit->sentence;
    start = hit->start;
    chineseContent(*hit, loc, content);
  } else {
    const auto& word = *result.word();
    content.word = word.word;
    content.language = std::string(languageCode(word.language));
    content.sentence = word.sentence;
    start = word.start;
    wordContent(word, loc, content);
  }
  content.wordInSentence = findWordInSentence(content.sentence, content.word, start);
  if (!content.senses.empty()) content.reading = content.senses.front().reading;

  // The record keeps the definition as shown.
  content.moreSenses = capped(content.senses);
  SavedWord& record = content.record;
  record.word = content.word;
  record.lang = content.language;
  record.pinyin = content.reading.text;  // the store keeps the reading as shown: "xué xí"
  record.definition = definitionOf(content.senses);
  if (record.definition.empty()) record.definition = joined(content.notes, " · ");
  record.context = content.sentence;
  return content;
}

ScreenRect bubblePlacement(ScreenPoint at, double width, double height, const ScreenRect& screen) {
  double x = at.x + kBubbleGap, y = at.y + kBubbleGap;
  if (x + width > screen.right()) x = at.x - kBubbleGap - width;
  if (y + height > screen.bottom()) y = at.y - kBubbleGap - height;
  // A bubble wider or taller than the room on both sides stays on the screen, over the point.
  x = std::max(screen.x, std::min(x, screen.right() - width));
  y = std::max(screen.y, std::min(y, screen.bottom() - height));
  return {x, y, width, height};
}

std::vector<std::string> sentenceTargets(std::string_view textLanguage,
                                         std::string_view answerLanguage) {
  // "zh-Hans" answers a Chinese text too: the sentence is already in the learner's language.
  const bool same =
      answerLanguage == textLanguage || (textLanguage == "zh" && answerLanguage.starts_with("zh"));
  if (!same) return {std::string(answerLanguage)};
  return {textLanguage == "en" ? "fr" : "en"};
}

}  // namespace vesko
