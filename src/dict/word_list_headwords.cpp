#include "dict/word_list_headwords.h"

#include <fstream>
#include <vector>

#include "dict/lowercase.h"

namespace vesko {

WordListHeadwords::WordListHeadwords(std::filesystem::path wordList,
                                     const WordDictionary& dictionary)
    : path_(std::move(wordList)), dictionary_(dictionary), list_([this] {
        List list;
        std::ifstream in(path_, std::ios::binary);
        if (!in) {
          list.error = "cannot read " + path_.string();
          return list;
        }
        std::vector<std::string> words;
        for (std::string line; std::getline(in, line);) {
          if (!line.empty() && line.back() == '\r') line.pop_back();
          // English possessives ("dog's") are not headwords, French elisions are ("aujourd'hui");
          // invalid UTF-8 is not lowercase.
          if (line.empty() || line.ends_with("'s") || !isLowercase(line)) continue;
          words.push_back(std::move(line));
        }
        list.words = WordList(std::move(words));
        return list;
      }) {}

std::optional<std::string> WordListHeadwords::loadError() const {
  const auto& l = list_.get();
  if (l.error.empty()) return std::nullopt;
  return l.error;
}

bool WordListHeadwords::contains(std::string_view lowercased) const {
  if (lowercased.empty()) return false;
  return list_.get().words.contains(lowercased) || dictionary_.contains(lowercased);
}

}  // namespace vesko
