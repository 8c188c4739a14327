#pragma once
// A sorted table from string keys to 32-bit values, the index behind the EDICT, dictd and reversed
// Mueller readers: keys live in one buffer and rows are twelve bytes, so four hundred thousand
// headwords cost a few megabytes rather than one allocation each.
// Filled by one thread, then read-only after `finish`: safe for concurrent readers from then on.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vesko {

class KeyTable {
 public:
  void add(std::string_view key, uint32_t value);
  // Sorts the keys; the values of one key keep the order they were added in.
  void finish();

  // The values of `key`, empty when it is absent. Only after `finish`.
  std::span<const uint32_t> find(std::string_view key) const;
  std::size_t rowCount() const { return rows_.size(); }
  std::size_t memoryBytes() const;

 private:
  struct Row {
    uint32_t offset;
    uint32_t length;
  };
  std::string_view keyOf(const Row& row) const { return {keys_.data() + row.offset, row.length}; }

  std::string keys_;
  std::vector<Row> rows_;
  std::vector<uint32_t> values_;  // parallel to rows_
};

}  // namespace vesko
