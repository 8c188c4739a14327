#include "dict/headword_index.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace vesko::cedict_detail {
namespace {

constexpr uint32_t kNoLink = UINT32_MAX;
}  // namespace

HeadwordIndex::HeadwordIndex(std::size_t expectedStrings) {
  const std::size_t capacity = std::bit_ceil(std::max<std::size_t>(16, expectedStrings * 5 / 4));
  tags_.resize(capacity);
  slots_.resize(capacity);
}

uint64_t HeadwordIndex::mix(uint64_t hash) {
  // The polynomial hash's low bits depend only on the last units: fold the high bits in.
  hash ^= hash >> 33;
  hash *= 0xff51afd7ed558ccdULL;
  hash ^= hash >> 33;
  hash *= 0xc4ceb9fe1a85ec53ULL;
  hash ^= hash >> 33;
  return hash;
}

bool HeadwordIndex::holds(const Slot& slot, std::u16string_view key) const {
  if (slot.keyUnits != key.size()) return false;
  if (key.size() <= kInline) return slot.key == packed(key);
  return std::memcmp(keys_.data() + slot.key, key.data(), key.size() * sizeof(char16_t)) == 0;
}

std::u16string_view HeadwordIndex::keyOf(const Slot& slot, std::u16string& scratch) const {
  if (slot.keyUnits > kInline) return std::u16string_view(keys_).substr(slot.key, slot.keyUnits);
  scratch.assign(1, static_cast<char16_t>(slot.key & 0xFFFF));
  if (slot.keyUnits == 2) scratch.push_back(static_cast<char16_t>(slot.key >> 16));
  return scratch;
}

std::size_t HeadwordIndex::probe(std::u16string_view key, uint64_t mixed) const {
  const std::size_t mask = tags_.size() - 1;
  const uint8_t tag = tagOf(mixed);
  for (std::size_t i = mixed & mask;; i = (i + 1) & mask) {
    const uint8_t t = tags_[i];
    if (t == 0) return i;
    if (t == tag && holds(slots_[i], key)) return i;
  }
}

const HeadwordIndex::Slot* HeadwordIndex::find(std::u16string_view key, uint64_t hash) const {
  if (key.empty() || key.size() > kMaxKeyUnits) return nullptr;
  const std::size_t at = probe(key, mix(hash));
  return tags_[at] == 0 ? nullptr : &slots_[at];
}

std::size_t HeadwordIndex::insertAt(std::size_t at, uint64_t mixed, std::u16string_view key,
                                    uint32_t stored) {
  // At most 80% full: with the tags, a miss still settles within a cache line or two.
  if ((used_ + 1) * 5 > tags_.size() * 4) {
    grow();
    at = probe(key, mixed);
  }
  tags_[at] = tagOf(mixed);
  const uint32_t where = key.size() <= kInline ? packed(key) : stored;
  slots_[at] = Slot{where, kNoLink, static_cast<uint16_t>(key.size()), 0};
  ++used_;
  return at;
}

void HeadwordIndex::grow() {
  std::vector<uint8_t> oldTags(tags_.size() * 2);
  std::vector<Slot> oldSlots(slots_.size() * 2);
  oldTags.swap(tags_);
  oldSlots.swap(slots_);
  const std::size_t mask = tags_.size() - 1;
  std::u16string scratch;
  for (std::size_t j = 0; j < oldTags.size(); ++j) {
    if (oldTags[j] == 0) continue;
    const Slot& slot = oldSlots[j];
    std::size_t i = mix(KeyHash::of(keyOf(slot, scratch))) & mask;
    while (tags_[i] != 0) i = (i + 1) & mask;
    tags_[i] = oldTags[j];
    slots_[i] = slot;
  }
}

bool HeadwordIndex::addEntry(std::u16string_view key, uint64_t hash, uint32_t entry) {
  if (key.empty() || key.size() > kMaxKeyUnits) return false;
  const uint64_t mixed = mix(hash);
  std::size_t at = probe(key, mixed);
  bool added = false;
  if (tags_[at] == 0) {
    lastKeyOffset_ = static_cast<uint32_t>(keys_.size());
    if (key.size() > kInline) keys_.append(key);
    at = insertAt(at, mixed, key, lastKeyOffset_);
    added = true;
  }
  Slot& slot = slots_[at];
  const std::size_t count = slot.entryCount();
  if (count == 0) {
    ++keyCount_;
    slot.entries = entry;
  } else if (count == kCountMask) {
    return added;  // a form borne by sixteen thousand entries is not a dictionary
  } else {
    if (count == 1) {
      chain_.push_back({slot.entries, kNoLink});
      slot.entries = static_cast<uint32_t>(chain_.size() - 1);
    }
    chain_.push_back({entry, slot.entries});
    slot.entries = static_cast<uint32_t>(chain_.size() - 1);
  }
  ++slot.meta;
  return added;
}

void HeadwordIndex::markPrefix(std::u16string_view prefix, uint64_t hash) {
  const uint64_t mixed = mix(hash);
  std::size_t at = probe(prefix, mixed);
  // A prefix longer than kInline belongs to a key long enough to be stored apart.
  if (tags_[at] == 0) at = insertAt(at, mixed, prefix, lastKeyOffset_);
  slots_[at].meta |= kPrefix;
}

void HeadwordIndex::finishEntries() {
  // Every entry of a key with several is in the chains, so they size the lists exactly.
  entryLists_.resize(chain_.size());
  uint32_t cursor = 0;
  for (std::size_t i = 0; i < slots_.size(); ++i) {
    Slot& slot = slots_[i];
    const std::size_t count = slot.entryCount();
    if (tags_[i] == 0 || count < 2) continue;
    // Chains were built newest first; write them back to front to restore file order.
    uint32_t link = slot.entries;
    for (std::size_t k = count; k-- > 0;) {
      entryLists_[cursor + k] = chain_[link].entry;
      link = chain_[link].next;
    }
    slot.entries = cursor;
    cursor += static_cast<uint32_t>(count);
  }
  chain_.clear();
  chain_.shrink_to_fit();
}

void HeadwordIndex::replaceFirstEntry(std::u16string_view key, uint64_t hash, uint32_t entry) {
  const std::size_t at = probe(key, mix(hash));
  if (tags_[at] == 0) return;
  Slot& slot = slots_[at];
  if (slot.entryCount() == 1) slot.entries = entry;
  else if (slot.entryCount() > 1) entryLists_[slot.entries] = entry;
}

void HeadwordIndex::addSingleEntryKey(std::u16string_view key, uint64_t hash, uint32_t entry) {
  if (key.empty() || key.size() > kMaxKeyUnits) return;
  const uint64_t mixed = mix(hash);
  std::size_t at = probe(key, mixed);
  if (tags_[at] == 0) {
    const auto offset = static_cast<uint32_t>(keys_.size());
    if (key.size() > kInline) keys_.append(key);
    at = insertAt(at, mixed, key, offset);
  }
  Slot& slot = slots_[at];
  if (slot.entryCount() != 0) return;
  slot.entries = entry;
  ++slot.meta;
  ++keyCount_;
}

}  // namespace vesko::cedict_detail
