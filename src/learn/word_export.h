#pragma once
// Kept words as a text file that Anki (2.1.55 and later) imports as notes: header lines naming
// the separator, HTML fields and the columns, then one line per word with its word, reading,
// definition, sentence (the word in bold) and tags (its language code). Stateless; any thread.

#include <cstddef>
#include <expected>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "learn/saved_word.h"

namespace vesko {

enum class ExportFormat { csv, tsv };

std::string exportWords(const std::vector<SavedWord>& words, ExportFormat format);

// Writes the export to `file`, whole and atomically, so that a failed write leaves the file that
// was there. The number of words written, or the system's reason.
std::expected<std::size_t, std::string> exportWordsToFile(const std::vector<SavedWord>& words,
                                                          ExportFormat format,
                                                          const std::filesystem::path& file);
// `file` with ".csv" or ".tsv" added when its name has no extension ("mots" → "mots.tsv").
std::filesystem::path withExportExtension(std::filesystem::path file, ExportFormat format);

// `sentence` as HTML with the first occurrence of `word` in <b>…</b> (matched as written, else
// regardless of case); the whole sentence escaped when the word is not in it.
std::string boldSentence(std::string_view sentence, std::string_view word);
// &, <, > and " as entities.
std::string escapeHtml(std::string_view text);

}  // namespace vesko
