#include "dict/key_table.h"

#include <algorithm>
#include <numeric>

namespace vesko {

void KeyTable::add(std::string_view key, uint32_t value) {
  rows_.push_back({static_cast<uint32_t>(keys_.size()), static_cast<uint32_t>(key.size())});
  keys_.append(key);
  values_.push_back(value);
}

void KeyTable::finish() {
  std::vector<uint32_t> order(rows_.size());
  std::iota(order.begin(), order.end(), 0u);
  std::stable_sort(order.begin(), order.end(), [this](uint32_t a, uint32_t b) {
    return keyOf(rows_[a]) < keyOf(rows_[b]);
  });
  std::vector<Row> rows(rows_.size());
  std::vector<uint32_t> values(values_.size());
  for (std::size_t i = 0; i < order.size(); ++i) {
    rows[i] = rows_[order[i]];
    values[i] = values_[order[i]];
  }
  rows_ = std::move(rows);
  values_ = std::move(values);
  keys_.shrink_to_fit();
}

std::span<const uint32_t> KeyTable::find(std::string_view key) const {
  auto less = [this](const Row& row, std::string_view k) { return keyOf(row) < k; };
  auto first = std::lower_bound(rows_.begin(), rows_.end(), key, less);
  auto last = first;
  while (last != rows_.end() && keyOf(*last) == key) ++last;
  const auto begin = static_cast<std::size_t>(first - rows_.begin());
  return {values_.data() + begin, static_cast<std::size_t>(last - first)};
}

std::size_t KeyTable::memoryBytes() const {
  return keys_.capacity() + rows_.capacity() * sizeof(Row) +
         values_.capacity() * sizeof(uint32_t);
}

}  // namespace vesko
