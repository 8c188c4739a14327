#include "dict/word_list.h"

#include <algorithm>

namespace vesko {

WordList::WordList(std::vector<std::string> words) {
  std::sort(words.begin(), words.end());
  words.erase(std::unique(words.begin(), words.end()), words.end());
  std::size_t total = 0;
  for (const auto& w : words) total += w.size();
  text_.reserve(total);
  starts_.reserve(words.size() + 1);
  for (const auto& w : words) {
    starts_.push_back(static_cast<uint32_t>(text_.size()));
    text_ += w;
  }
  starts_.push_back(static_cast<uint32_t>(text_.size()));
}

std::string_view WordList::at(std::size_t index) const {
  return std::string_view(text_).substr(starts_[index], starts_[index + 1] - starts_[index]);
}

std::int64_t WordList::indexOf(std::string_view word) const {
  std::size_t low = 0, high = size();
  while (low < high) {
    const std::size_t mid = low + (high - low) / 2;
    const int order = at(mid).compare(word);
    if (order == 0) return static_cast<std::int64_t>(mid);
    if (order < 0) {
      low = mid + 1;
    } else {
      high = mid;
    }
  }
  return -1;
}

bool WordList::contains(std::string_view word) const { return indexOf(word) >= 0; }

}  // namespace vesko
