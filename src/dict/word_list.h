#pragma once
// A set of words packed into one buffer, sorted, for membership tests: the English and French
// word lists hold hundreds of thousands of short words, and a hash set of std::string would cost
// several times their size. Built once, then immutable: safe for concurrent readers.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vesko {

class WordList {
 public:
  WordList() = default;
  // Takes any words, in any order, with repeats.
  explicit WordList(std::vector<std::string> words);

  bool contains(std::string_view word) const;
  // The index of `word` in sorted order, or -1; stable for the life of the list.
  std::int64_t indexOf(std::string_view word) const;
  std::string_view at(std::size_t index) const;
  std::size_t size() const { return starts_.empty() ? 0 : starts_.size() - 1; }
  std::size_t bytes() const { return text_.capacity() + starts_.capacity() * sizeof(uint32_t); }

 private:
  std::string text_;
  std::vector<uint32_t> starts_;  // word i is text_[starts_[i], starts_[i + 1])
};

}  // namespace vesko
