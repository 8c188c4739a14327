#include "ai/sentence_answers.h"

#include <algorithm>
#include <array>

#include "ai/ai_answer.h"
#include "ai/answer_sections.h"

namespace vesko {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

std::string_view trim(std::string_view text) {
  // U+3000, the ideographic space, is three bytes: trim it as a unit.
  constexpr std::string_view kWide = "\u3000";
  for (bool changed = true; changed;) {
    changed = false;
    while (!text.empty() && kBlanks.find(text.front()) != std::string_view::npos) {
      text.remove_prefix(1);
      changed = true;
    }
    while (!text.empty() && kBlanks.find(text.back()) != std::string_view::npos) {
      text.remove_suffix(1);
      changed = true;
    }
    if (text.starts_with(kWide)) text.remove_prefix(kWide.size()), changed = true;
    if (text.ends_with(kWide)) text.remove_suffix(kWide.size()), changed = true;
  }
  return text;
}

std::vector<std::string_view> lines(std::string_view text) {
  std::vector<std::string_view> out;
  while (true) {
    const auto end = text.find('\n');
    out.push_back(text.substr(0, end));
    if (end == std::string_view::npos) break;
    text.remove_prefix(end + 1);
  }
  return out;
}

// Removes every occurrence of the given characters (whole UTF-8 sequences).
std::string without(std::string_view text, std::initializer_list<std::string_view> marks) {
  std::string out(text);
  for (auto mark : marks)
    for (auto at = out.find(mark); at != std::string::npos; at = out.find(mark, at))
      out.erase(at, mark.size());
  return out;
}

// Case folding for ASCII and the Russian capitals: enough for the language names compared.
std::string folded(std::string_view text) {
  std::string out;
  for (char c : text) out += static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
  // Two-byte Cyrillic capitals А–Я (U+0410–042F) → а–я.
  for (std::size_t i = 0; i + 1 < out.size(); ++i) {
    auto a = static_cast<unsigned char>(out[i]), b = static_cast<unsigned char>(out[i + 1]);
    if (a == 0xD0 && b >= 0x90 && b <= 0x9F)
      out[i + 1] = static_cast<char>(b + 0x20);
    else if (a == 0xD0 && b >= 0xA0 && b <= 0xAF)
      out[i] = '\xD1', out[i + 1] = static_cast<char>(b - 0x20);
  }
  return out;
}

std::string cleanHead(std::string_view head) {
  std::string text = without(head, {"（", "）", "(", ")", "[", "]", "【", "】", "*", "•"});
  return std::string(trim(text));
}

bool sameName(std::string_view a, std::string_view b) {
  return !a.empty() && folded(cleanHead(a)) == folded(cleanHead(b));
}

// "⚠︎ Fait partie de : …" may come with or without the variation selector.
std::optional<std::string> partOfLine(std::string_view line) {
  for (std::string_view mark : {"⚠︎", "⚠"}) {
    if (!line.starts_with(mark)) continue;
    std::string_view rest = trim(line.substr(mark.size()));
    constexpr std::string_view kHead = "Fait partie de";
    if (!rest.starts_with(kHead)) return std::nullopt;
    rest = trim(rest.substr(kHead.size()));
    for (std::string_view colon : {":", "："})
      if (rest.starts_with(colon)) rest = trim(rest.substr(colon.size()));
    return std::string(rest);
  }
  return std::nullopt;
}

// The separators a language name may be followed by when the answer forgets the colon.
constexpr std::array<std::string_view, 9> kLooseSeparators{";",   "；",  ",", "，", " - ",
                                                           " – ", " — ", "-", "—"};

}  // namespace

std::optional<HeadedLine> splitHead(std::string_view line) {
  std::size_t at = std::string_view::npos, width = 0;
  for (std::string_view colon : {":", "："}) {
    auto found = line.find(colon);
    if (found < at) at = found, width = colon.size();
  }
  if (at == std::string_view::npos) return std::nullopt;
  return HeadedLine{cleanHead(line.substr(0, at)), std::string(trim(line.substr(at + width)))};
}

Gloss splitGloss(std::string_view text) {
  text = trim(text);
  for (std::string_view equals : {" = ", "=", "＝"}) {
    auto at = text.find(equals);
    if (at != std::string_view::npos)
      return {std::string(trim(text.substr(0, at))),
              std::string(trim(text.substr(at + equals.size())))};
  }
  return {std::string(text), {}};
}

std::optional<TranslationAnswer> parseTranslation(std::string_view answer,
                                                  const std::vector<std::string>& languageNames,
                                                  const AITitles& titles) {
  if (answer.starts_with(kWarningPrefix) || trim(answer).empty()) return std::nullopt;
  TranslationAnswer out;
  // The requested name the head stands for.
  auto languageOf = [&](std::string_view head) -> const std::string* {
    for (const auto& name : languageNames)
      if (sameName(head, name)) return &name;
    return nullptr;
  };
  for (std::string_view raw : lines(answer)) {
    const std::string_view line = trim(raw);
    if (line.empty()) continue;
    if (auto part = partOfLine(line)) {
      out.partOf = *part;
      continue;
    }
    if (auto titled = titledLine(line, titles)) {
      if (titled->label == AILabel::expression) {
        out.expression = splitGloss(titled->rest);
        continue;
      }
      if (titled->label == AILabel::nuance) {
        out.nuance = std::string(trim(titled->rest));
        continue;
      }
      if (titled->label == AILabel::parts) {
        std::string_view items = titled->rest;
        while (!items.empty()) {
          auto at = items.find("·");
          auto item = trim(items.substr(0, at));
          if (!item.empty()) out.parts.push_back(splitGloss(item));
          if (at == std::string_view::npos) break;
          items.remove_prefix(at + std::string_view("·").size());
        }
        continue;
      }
    }
    const std::string* language = nullptr;
    std::string text;
    if (auto headed = splitHead(line); headed && (language = languageOf(headed->head))) {
      text = headed->rest;
    } else {
      // A language name followed by another separator than the colon.
      for (auto separator : kLooseSeparators) {
        auto at = line.find(separator);
        if (at == std::string_view::npos) continue;
        if ((language = languageOf(line.substr(0, at)))) {
          text = std::string(trim(line.substr(at + separator.size())));
          break;
        }
      }
    }
    if (language) {
      out.translations.push_back({*language, std::move(text)});
    } else {
      out.other.emplace_back(line);
    }
  }
  return out;
}

std::optional<AnalysisAnswer> parseAnalysis(std::string_view answer, const AITitles& titles) {
  if (answer.starts_with(kWarningPrefix) || trim(answer).empty()) return std::nullopt;
  AnalysisAnswer out;
  bool inGrammar = false;  // a grammar point may run over several lines
  auto read = [&](std::string_view line) {
    if (line.starts_with("🤔")) {
      out.doubt = std::string(trim(line.substr(std::string_view("🤔").size())));
      return false;
    }
    for (std::string_view bullet : {"•", "-", "*"}) {
      if (!line.starts_with(bullet) || line.starts_with("**")) continue;
      const Gloss gloss = splitGloss(line.substr(bullet.size()));
      AnalysisWord word{without(gloss.text, {"**"}), gloss.meaning, {}};
      if (auto dot = word.meaning.rfind("·"); dot != std::string::npos) {
        word.nature = std::string(trim(std::string_view(word.meaning).substr(dot + 2)));
        word.meaning = std::string(trim(std::string_view(word.meaning).substr(0, dot)));
      }
      out.words.push_back(std::move(word));
      return false;
    }
    if (auto titled = titledLine(line, titles)) {
      const std::string rest(trim(titled->rest));
      if (titled->label == AILabel::structure) {
        out.structure = rest;
        return false;
      }
      if (titled->label == AILabel::grammar) {
        out.grammar = rest;
        return true;
      }
      if (titled->label == AILabel::expression) {
        out.expression = splitGloss(rest);
        return false;
      }
    }
    if (inGrammar) {
      *out.grammar += (out.grammar->empty() ? "" : "\n") + std::string(line);
      return true;
    }
    out.other.emplace_back(line);
    return false;
  };
  for (std::string_view raw : lines(answer)) {
    const std::string_view line = trim(raw);
    if (!line.empty()) inGrammar = read(line);
  }
  return out;
}

std::string withoutEndPunctuation(std::string_view sentence) {
  static constexpr std::array<std::string_view, 20> kEnds{"，", "。", "！", "？", "、", ",", ".",
                                                          "!",  "?",  "；", ";",  "：", ":", "「",
                                                          "」", "\"", "\n", " ",  "\r", "\t"};
  for (bool changed = true; changed;) {
    changed = false;
    for (auto end : kEnds) {
      if (sentence.starts_with(end)) sentence.remove_prefix(end.size()), changed = true;
      if (sentence.ends_with(end)) sentence.remove_suffix(end.size()), changed = true;
    }
  }
  return std::string(sentence);
}

std::optional<CorrectionAnswer> parseCorrection(std::string_view answer,
                                                std::string_view learnerSentence) {
  if (answer.starts_with(kWarningPrefix) || trim(answer).empty()) return std::nullopt;
  answer = trim(answer);
  const auto end = answer.find('\n');
  std::string first(trim(answer.substr(0, end)));
  const std::string_view rest = end == std::string_view::npos ? "" : answer.substr(end + 1);
  CorrectionAnswer out;
  if (first.find("✓") != std::string::npos) {
    out.unchanged = true;
    first = std::string(trim(without(first, {"✓", "«", "»"})));
  }
  out.corrected = std::string(trim(first));
  if (withoutEndPunctuation(out.corrected) == withoutEndPunctuation(trim(learnerSentence)))
    out.unchanged = true;
  out.grammar = std::string(trim(rest));
  return out;
}

}  // namespace vesko
