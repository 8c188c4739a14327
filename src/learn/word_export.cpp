#include "learn/word_export.h"

#include "dict/lowercase.h"
#include "settings/data_safety.h"

namespace vesko {
namespace {

// A field is quoted when it holds the separator, a quote, a line break or opens with '#' (which
// Anki would take for a header line at the start of a line); quotes inside are doubled.
std::string field(std::string_view text, char separator) {
  bool quote = !text.empty() && text.front() == '#';
  for (char c : text)
    if (c == separator || c == '"' || c == '\n' || c == '\r') quote = true;
  if (!quote) return std::string(text);
  std::string quoted = "\"";
  for (char c : text) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  quoted += '"';
  return quoted;
}

// Tags are separated by spaces in Anki: a code with a space would become two tags.
std::string tag(std::string_view lang) {
  std::string result(lang);
  for (char& c : result)
    if (c == ' ') c = '_';
  return result;
}

}  // namespace

std::string escapeHtml(std::string_view text) {
  std::string escaped;
  escaped.reserve(text.size());
  for (char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

std::string boldSentence(std::string_view sentence, std::string_view word) {
  if (word.empty()) return escapeHtml(sentence);
  std::size_t at = sentence.find(word);
  if (at == std::string_view::npos) {
    // "Hello" kept from "hello there": found through the lower-cased texts, whose byte offsets
    // are the sentence's only when lower-casing kept every length (true of most scripts).
    std::string lowerSentence = lowercased(sentence);
    std::string lowerWord = lowercased(word);
    if (lowerSentence.size() == sentence.size() && lowerWord.size() == word.size() &&
        !lowerWord.empty())
      at = lowerSentence.find(lowerWord);
  }
  if (at == std::string_view::npos) return escapeHtml(sentence);
  return escapeHtml(sentence.substr(0, at)) + "<b>" + escapeHtml(sentence.substr(at, word.size())) +
         "</b>" + escapeHtml(sentence.substr(at + word.size()));
}

std::string exportWords(const std::vector<SavedWord>& words, ExportFormat format) {
  const char separator = format == ExportFormat::csv ? ',' : '\t';
  const std::string sep(1, separator);
  std::string text = format == ExportFormat::csv ? "#separator:comma\n" : "#separator:tab\n";
  text += "#html:true\n";
  text +=
      "#columns:word" + sep + "reading" + sep + "definition" + sep + "sentence" + sep + "tags\n";
  text += "#tags column:5\n";
  for (const auto& word : words) {
    text += field(escapeHtml(word.word), separator) + separator;
    text += field(escapeHtml(word.pinyin), separator) + separator;
    text += field(escapeHtml(word.definition), separator) + separator;
    text += field(boldSentence(word.context, word.word), separator) + separator;
    text += field(tag(word.lang), separator) + '\n';
  }
  return text;
}

std::expected<std::size_t, std::string> exportWordsToFile(const std::vector<SavedWord>& words,
                                                          ExportFormat format,
                                                          const std::filesystem::path& file) {
  if (auto written = writeFileAtomically(file, exportWords(words, format)); !written)
    return std::unexpected(written.error().message());
  return words.size();
}

std::filesystem::path withExportExtension(std::filesystem::path file, ExportFormat format) {
  if (file.has_filename() && !file.has_extension())
    file += format == ExportFormat::tsv ? ".tsv" : ".csv";
  return file;
}

}  // namespace vesko
