#pragma once
// The hash index behind CEDict: every headword form, and every string that begins or ends some
// headword, so that a match stops extending as soon as no longer headword can follow. Keys are
// UTF-16 and hashed with a polynomial hash that can grow at either end, so walking a text one
// character forwards or backwards costs one multiply per unit, not a rehash of the whole key.
// Built by one thread, then read-only: safe for concurrent readers once published.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vesko::cedict_detail {

// Polynomial hash of UTF-16 units: h(s) = Σ s[i]·B^(n-1-i) mod 2^64.
class KeyHash {
 public:
  void append(std::u16string_view units) {
    for (char16_t u : units) value_ = value_ * kBase + u;
    length_ += units.size();
  }
  void prepend(std::u16string_view units) {
    for (std::size_t i = units.size(); i-- > 0;) {
      value_ += static_cast<uint64_t>(units[i]) * power(length_);
      ++length_;
    }
  }
  uint64_t value() const { return value_; }
  static uint64_t of(std::u16string_view units) {
    KeyHash h;
    h.append(units);
    return h.value();
  }

 private:
  static constexpr uint64_t kBase = 0x9E3779B97F4A7C15ULL;
  static uint64_t power(std::size_t exponent);
  uint64_t value_ = 0;
  std::size_t length_ = 0;
};

class HeadwordIndex {
 public:
  static constexpr uint16_t kPrefix = 1u << 14;  // some longer headword begins with this key
  static constexpr uint16_t kSuffix = 1u << 15;  // some longer headword ends with this key
  static constexpr uint16_t kCountMask = kPrefix - 1;
  static constexpr std::size_t kMaxKeyUnits = UINT16_MAX;

  struct Slot {
    uint32_t hash = 0;
    uint32_t keyOffset = 0;  // into keys()
    uint32_t entries = 0;    // into entryLists(); a chain head while building
    uint16_t keyUnits = 0;   // 0: empty slot
    uint16_t meta = 0;       // flags and entry count

    std::size_t entryCount() const { return meta & kCountMask; }
    bool isKey() const { return entryCount() > 0; }
    bool isPrefix() const { return meta & kPrefix; }
    bool isSuffix() const { return meta & kSuffix; }
  };

  explicit HeadwordIndex(std::size_t expectedStrings = 0);

  // Building. `addEntry` stores the key (copying its units) the first time it is seen; it
  // returns false when the key was already known. Entries of a key keep the order of the calls.
  bool addEntry(std::u16string_view key, uint64_t hash, uint32_t entry);
  // Marks the `length` units at `offset` of the stored keys as beginning or ending a headword.
  void markPart(uint32_t offset, uint32_t length, uint64_t hash, uint16_t flag);
  // Offset of the most recently stored key.
  uint32_t lastKeyOffset() const { return lastKeyOffset_; }
  // Turns the per-key chains into contiguous lists; call once, after the last addEntry.
  void finishEntries();
  // After finishEntries: replaces the first entry of a key, or adds a key with one entry.
  void replaceFirstEntry(const Slot& slot, uint32_t entry);
  void addSingleEntryKey(std::u16string_view key, uint64_t hash, uint32_t entry);

  // Reading.
  const Slot* find(std::u16string_view key, uint64_t hash) const;
  const Slot* find(std::u16string_view key) const { return find(key, KeyHash::of(key)); }
  const uint32_t* entryList(const Slot& slot) const { return entryLists_.data() + slot.entries; }
  std::size_t keyCount() const { return keyCount_; }
  std::size_t memoryBytes() const;

 private:
  static uint32_t mix(uint64_t hash);
  Slot* probe(std::u16string_view key, uint32_t mixed);
  Slot* insertNew(uint32_t mixed, uint32_t offset, uint32_t units);
  void grow();

  std::vector<Slot> slots_;
  std::u16string keys_;
  std::vector<uint32_t> entryLists_;
  struct Link {
    uint32_t entry;
    uint32_t next;
  };
  std::vector<Link> chain_;  // only while building
  std::size_t used_ = 0;
  std::size_t keyCount_ = 0;
  uint32_t lastKeyOffset_ = 0;
};

}  // namespace vesko::cedict_detail
