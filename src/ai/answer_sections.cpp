#include "ai/answer_sections.h"

#include <array>

#include "ai/ai_answer.h"

namespace vesko {
namespace {

// What may surround a title: the brackets the models put around headings ("【Sens】 :") and the
// Markdown they add unasked ("**Sens** :", "### Sens :").
constexpr std::array<std::string_view, 10> kDecorations{"（", "）", "(",  ")", "[",
                                                        "]",  "【", "】", "*", "#"};
constexpr std::string_view kSpaces = " \t\r\n";

std::string_view trim(std::string_view text) {
  std::size_t start = text.find_first_not_of(kSpaces);
  if (start == std::string_view::npos) return {};
  std::size_t end = text.find_last_not_of(kSpaces);
  return text.substr(start, end - start + 1);
}

std::string withoutDecorations(std::string_view head) {
  std::string bare;
  bare.reserve(head.size());
  std::size_t i = 0;
  while (i < head.size()) {
    bool skipped = false;
    for (std::string_view decoration : kDecorations) {
      if (head.substr(i).starts_with(decoration)) {
        i += decoration.size();
        skipped = true;
        break;
      }
    }
    if (!skipped) bare += head[i++];
  }
  return std::string(trim(bare));
}

// The first ":" or full-width "：", with the length of the one found.
std::optional<std::pair<std::size_t, std::size_t>> firstColon(std::string_view line) {
  std::size_t ascii = line.find(':');
  std::size_t wide = line.find("：");
  if (ascii == std::string_view::npos && wide == std::string_view::npos) return std::nullopt;
  if (wide < ascii) return std::pair{wide, std::string_view("：").size()};
  return std::pair{ascii, std::size_t{1}};
}

void addLine(std::string& text, std::string_view line) {
  if (!text.empty()) text += '\n';
  text += line;
}

void close(std::vector<AnswerSection>& sections, AnswerSection& section) {
  section.text = std::string(trim(section.text));
  if (!section.text.empty()) sections.push_back(std::move(section));
  section = {};
}

}  // namespace

std::optional<TitledLine> titledLine(std::string_view line, const AITitles& titles) {
  auto colon = firstColon(line);
  if (!colon) return std::nullopt;
  std::string head = withoutDecorations(line.substr(0, colon->first));
  // A title is a word or two: a long head is a sentence that happens to hold a colon.
  if (head.empty() || head.size() > 64) return std::nullopt;
  auto label = titles.labelTitled(head);
  if (!label) return std::nullopt;
  return TitledLine{*label, trim(line.substr(colon->first + colon->second))};
}

std::vector<AnswerSection> parseSections(std::string_view answer, const AITitles& titles) {
  if (answer.starts_with(kWarningPrefix)) return {AnswerSection{std::nullopt, std::string(answer)}};
  std::vector<AnswerSection> sections;
  AnswerSection current;
  std::size_t start = 0;
  while (start <= answer.size()) {
    std::size_t end = answer.find('\n', start);
    if (end == std::string_view::npos) end = answer.size();
    std::string_view line = answer.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (auto titled = titledLine(line, titles)) {
      close(sections, current);
      current.label = titled->label;
      current.text = std::string(titled->rest);
    } else {
      addLine(current.text, line);
    }
    start = end + 1;
  }
  close(sections, current);
  return sections;
}

}  // namespace vesko
