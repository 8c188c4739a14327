#include "ai/word_lists.h"

#include <algorithm>
#include <charconv>

#include "ai/ai_answer.h"

namespace vesko {
namespace {

std::string_view trim(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  while (!text.empty() && kBlanks.find(text.front()) != std::string_view::npos)
    text.remove_prefix(1);
  while (!text.empty() && kBlanks.find(text.back()) != std::string_view::npos)
    text.remove_suffix(1);
  return text;
}

std::vector<std::string_view> lines(std::string_view text) {
  std::vector<std::string_view> out;
  while (true) {
    const auto end = text.find('\n');
    out.push_back(trim(text.substr(0, end)));
    if (end == std::string_view::npos) break;
    text.remove_prefix(end + 1);
  }
  return out;
}

ListedWord readItem(std::string_view item) {
  ListedWord out;
  std::string_view head = item;
  for (std::string_view equals : {" = ", "=", "＝"}) {
    if (auto at = item.find(equals); at != std::string_view::npos) {
      head = trim(item.substr(0, at));
      out.meaning = std::string(trim(item.substr(at + equals.size())));
      break;
    }
  }
  for (auto [open, close] :
       {std::pair<std::string_view, std::string_view>{"(", ")"}, {"（", "）"}}) {
    auto at = head.find(open);
    auto end = head.rfind(close);
    if (at != std::string_view::npos && end != std::string_view::npos && end > at) {
      out.reading = std::string(trim(head.substr(at + open.size(), end - at - open.size())));
      head = trim(head.substr(0, at));
      break;
    }
  }
  out.word = std::string(trim(head));
  return out;
}

std::string_view afterMark(std::string_view line, std::string_view mark) {
  line = trim(line.substr(mark.size()));
  for (std::string_view colon : {":", "："})
    if (line.starts_with(colon)) line = trim(line.substr(colon.size()));
  return line;
}

}  // namespace

std::vector<ListedWord> splitWordList(std::string_view items) {
  std::vector<ListedWord> out;
  while (!items.empty()) {
    std::size_t at = std::string_view::npos, width = 0;
    for (std::string_view separator : {";", "；"}) {
      auto found = items.find(separator);
      if (found < at) at = found, width = separator.size();
    }
    auto item = trim(items.substr(0, at));
    if (!item.empty()) {
      ListedWord word = readItem(item);
      if (!word.word.empty()) out.push_back(std::move(word));
    }
    if (at == std::string_view::npos) break;
    items.remove_prefix(at + width);
  }
  return out;
}

std::string synonymPrompt(const SynonymRequest& request) {
  const bool chinese = request.languageCode.starts_with("zh");
  std::string prompt;
  if (request.sentence) prompt = "Phrase : « " + *request.sentence + " »\n";
  prompt += "\nDonne, pour le mot « " + request.word + " »" +
            (request.sentence ? " tel qu'il est employé dans cette phrase" : std::string()) +
            ", des mots de la même langue (la même langue que le mot), adaptés au sens qu'il a "
            "ici :\n";
  prompt +=
      "une ligne qui commence par « ≈ » avec 3 à 5 synonymes ou mots proches, du plus courant au "
      "plus rare ;\n";
  prompt +=
      "une ligne qui commence par « ≠ » avec 2 ou 3 contraires (s'il n'y en a pas, n'écris pas "
      "cette ligne).\n";
  prompt += "Chaque mot : mot";
  if (chinese) prompt += " (pinyin)";
  if (request.languageCode == "ja") prompt += " (lecture en kana)";
  prompt += " = sens court en " + request.answerLanguageName + ", séparés par « ; ». Rien d'autre.";
  prompt += " Jamais « " + request.word + " » lui-même dans ces listes.";
  if (chinese) {
    prompt +=
        " Exemple : « ≈ 漂亮 (piàoliang) = joli ; 美丽 (měilì) = beau » puis « ≠ 丑 (chǒu) = laid "
        "».";
    prompt += " Même écriture que « " + request.word + " » (simplifié ou traditionnel).";
  }
  return prompt;
}

std::optional<SynonymAnswer> parseSynonyms(std::string_view answer) {
  if (answer.starts_with(kWarningPrefix)) return std::nullopt;
  SynonymAnswer out;
  bool found = false;
  for (auto line : lines(answer)) {
    if (line.starts_with("≈")) {
      out.near = splitWordList(afterMark(line, "≈"));
      found = true;
    } else if (line.starts_with("≠")) {
      out.opposites = splitWordList(afterMark(line, "≠"));
      found = true;
    }
  }
  if (!found) return std::nullopt;
  return out;
}

std::string conceptWordsLine(std::string_view word, std::string_view languageCode,
                             std::string_view answerLanguageName) {
  const bool chinese = languageCode.starts_with("zh");
  std::string languageName;
  if (chinese)
    languageName = "chinois";
  else if (languageCode == "ja")
    languageName = "japonais";
  else if (languageCode == "en")
    languageName = "anglais";
  else if (languageCode == "ru")
    languageName = "russe";
  else if (languageCode == "pl")
    languageName = "polonais";
  else if (languageCode == "th")
    languageName = "thaï";
  else
    languageName = "français";
  std::string line =
      "\nAjoute enfin une ligne qui commence par « 📚 » : 3 mots ou expressions en " + languageName;
  if (chinese) line += " avec le pinyin entre parenthèses";
  if (languageCode == "ja") line += " avec la lecture en kana entre parenthèses";
  line += ", courants et utiles à apprendre, liés à ce concept (pas « " + std::string(word) +
          " » lui-même), chacun puis « = » et son sens court en " +
          std::string(answerLanguageName) +
          ", séparés par « ; » (ex. « 📚 回收 (huíshōu) = recycler ; 垃圾 (lājī) = déchets ; 再生紙 "
          "(zàishēngzhǐ) = papier recyclé »).";
  if (chinese)
    line += " Écris-les dans la même écriture que « " + std::string(word) +
            " » (simplifié ou traditionnel).";
  return line;
}

std::optional<std::vector<ListedWord>> parseConceptWords(std::string_view answer) {
  if (answer.starts_with(kWarningPrefix)) return std::nullopt;
  for (auto line : lines(answer))
    if (line.starts_with("📚")) return splitWordList(afterMark(line, "📚"));
  return std::nullopt;
}

std::string withoutConceptWords(std::string_view answer) {
  std::string out;
  for (auto line : lines(answer)) {
    if (line.starts_with("📚")) continue;
    if (!out.empty()) out += '\n';
    out += line;
  }
  return std::string(trim(out));
}

std::string themePrompt(const std::vector<std::string>& themes,
                        const std::vector<std::string>& elements) {
  std::string names;
  for (const auto& theme : themes) names += theme + ", ";
  std::string prompt = "Classe chaque mot ou phrase dans UN thème parmi : " + names +
                       "autre.\nRéponds seulement avec une ligne par élément, au format « numéro: "
                       "thème », sans rien d'autre.\n\n";
  for (std::size_t i = 0; i < elements.size(); ++i)
    prompt += std::to_string(i + 1) + ". " + elements[i] + "\n";
  return prompt;
}

ThemeReading parseThemes(std::string_view answer, const std::vector<std::string>& themes,
                         std::size_t count) {
  ThemeReading out;
  out.themes.resize(count);
  if (answer.starts_with(kWarningPrefix)) return out;
  for (auto line : lines(answer)) {
    std::size_t digits = 0;
    while (digits < line.size() && line[digits] >= '0' && line[digits] <= '9') ++digits;
    if (digits == 0 || digits > 9) continue;
    std::string_view rest = trim(line.substr(digits));
    if (rest.starts_with(".")) rest = trim(rest.substr(1));  // "3.: voyage" is still a line
    if (rest.starts_with(":"))
      rest = rest.substr(1);
    else if (rest.starts_with("："))
      rest = rest.substr(std::string_view("：").size());
    else
      continue;
    std::size_t number = 0;
    std::from_chars(line.data(), line.data() + digits, number);
    out.readable = true;
    std::string theme(trim(rest));
    std::erase_if(theme, [](char c) { return c == '*' || c == '"'; });
    if (number < 1 || number > count) continue;
    if (theme == kOtherTheme || std::find(themes.begin(), themes.end(), theme) != themes.end())
      out.themes[number - 1] = theme;
  }
  return out;
}

}  // namespace vesko
