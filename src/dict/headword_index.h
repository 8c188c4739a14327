#pragma once
// The hash index behind CEDict: every headword form, and every string that begins some headword,
// so that a match stops extending as soon as no longer headword can follow. Keys are UTF-16 and
// hashed incrementally, so walking a text one character further costs one multiply per unit, not
// a rehash of the whole key.
// One byte per slot holds a tag of the hash: most probes are settled there without touching the
// larger slots, and the bytes stay in cache.
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
  }
  uint64_t value() const { return value_; }
  static uint64_t of(std::u16string_view units) {
    KeyHash h;
    h.append(units);
    return h.value();
  }

 private:
  static constexpr uint64_t kBase = 0x9E3779B97F4A7C15ULL;
  uint64_t value_ = 0;
};

class HeadwordIndex {
 public:
  static constexpr uint16_t kPrefix = 1u << 15;  // some longer headword begins with this string
  static constexpr uint16_t kCountMask = kPrefix - 1;
  static constexpr std::size_t kMaxKeyUnits = UINT16_MAX;

  struct Slot {
    // Keys of one or two units, most of them, are held right here, so that comparing them
    // touches no other memory; longer keys are stored apart and this is their offset.
    uint32_t key = 0;
    // A key with one entry holds it here; with more, where its list starts (a chain head while
    // building).
    uint32_t entries = 0;
    uint16_t keyUnits = 0;
    uint16_t meta = 0;  // flags and entry count

    std::size_t entryCount() const { return meta & kCountMask; }
    bool isKey() const { return entryCount() > 0; }
    bool isPrefix() const { return meta & kPrefix; }
  };

  explicit HeadwordIndex(std::size_t expectedStrings = 0);

  // Building. `addEntry` stores the key (copying its units) the first time it is seen and returns
  // true then. Entries of a key keep the order of the calls.
  bool addEntry(std::u16string_view key, uint64_t hash, uint32_t entry);
  // Marks `prefix`, the start of the key most recently added, as beginning a headword.
  void markPrefix(std::u16string_view prefix, uint64_t hash);
  // Turns the per-key chains into contiguous lists; call once, after the last addEntry.
  void finishEntries();
  // After finishEntries: replaces the first entry of a key, or adds a key with one entry.
  void replaceFirstEntry(std::u16string_view key, uint64_t hash, uint32_t entry);
  void addSingleEntryKey(std::u16string_view key, uint64_t hash, uint32_t entry);

  // Brings the slot a hash leads to into cache ahead of an insert or a lookup.
  void prefetch(uint64_t hash) const {
    const std::size_t i = mix(hash) & (tags_.size() - 1);
    __builtin_prefetch(&tags_[i]);
    __builtin_prefetch(&slots_[i]);
  }

  // Reading.
  const Slot* find(std::u16string_view key, uint64_t hash) const;
  const Slot* find(std::u16string_view key) const { return find(key, KeyHash::of(key)); }
  const uint32_t* entryList(const Slot& slot) const {
    return slot.entryCount() == 1 ? &slot.entries : entryLists_.data() + slot.entries;
  }
  std::size_t keyCount() const { return keyCount_; }

 private:
  static uint64_t mix(uint64_t hash);
  static uint8_t tagOf(uint64_t mixed) { return static_cast<uint8_t>(0x80 | (mixed >> 57)); }
  static constexpr std::size_t kInline = 2;
  static uint32_t packed(std::u16string_view key) {
    return key.size() == 1 ? key[0] : key[0] | (static_cast<uint32_t>(key[1]) << 16);
  }
  bool holds(const Slot& slot, std::u16string_view key) const;
  std::u16string_view keyOf(const Slot& slot, std::u16string& scratch) const;
  std::size_t probe(std::u16string_view key, uint64_t mixed) const;  // slot or the empty one
  std::size_t insertAt(std::size_t at, uint64_t mixed, std::u16string_view key, uint32_t stored);
  void grow();

  std::vector<uint8_t> tags_;  // 0: empty, else 0x80 | seven bits of the hash
  std::vector<Slot> slots_;
  std::u16string keys_;  // keys longer than kInline units
  std::vector<uint32_t> entryLists_;
  struct Link {
    uint32_t entry;
    uint32_t next;
  };
  std::vector<Link> chain_;  // only while building, only for keys with several entries
  std::size_t used_ = 0;
  std::size_t keyCount_ = 0;
  uint32_t lastKeyOffset_ = 0;
};

}  // namespace vesko::cedict_detail
