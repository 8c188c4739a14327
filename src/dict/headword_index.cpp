#include "dict/headword_index.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace vesko::cedict_detail {
namespace {

constexpr uint32_t kNoLink = UINT32_MAX;
constexpr std::size_t kPowers = 128;

constexpr std::array<uint64_t, kPowers> makePowers(uint64_t base) {
  std::array<uint64_t, kPowers> powers{};
  uint64_t value = 1;
  for (auto& p : powers) {
    p = value;
    value *= base;
  }
  return powers;
}

}  // namespace

uint64_t KeyHash::power(std::size_t exponent) {
  static constexpr auto kTable = makePowers(kBase);
  if (exponent < kPowers) return kTable[exponent];
  uint64_t value = kTable[kPowers - 1];
  for (std::size_t i = kPowers - 1; i < exponent; ++i) value *= kBase;
  return value;
}

HeadwordIndex::HeadwordIndex(std::size_t expectedStrings) {
  std::size_t capacity = std::bit_ceil(std::max<std::size_t>(16, expectedStrings + expectedStrings / 2));
  slots_.resize(capacity);
}

uint32_t HeadwordIndex::mix(uint64_t hash) {
  // The polynomial hash's low bits depend only on the last units; fold the high bits in.
  hash ^= hash >> 33;
  hash *= 0xff51afd7ed558ccdULL;
  hash ^= hash >> 33;
  return static_cast<uint32_t>(hash);
}

HeadwordIndex::Slot* HeadwordIndex::probe(std::u16string_view key, uint32_t mixed) {
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t i = mixed & mask;; i = (i + 1) & mask) {
    Slot& slot = slots_[i];
    if (slot.keyUnits == 0) return &slot;
    if (slot.hash == mixed && slot.keyUnits == key.size() &&
        std::memcmp(keys_.data() + slot.keyOffset, key.data(), key.size() * sizeof(char16_t)) == 0)
      return &slot;
  }
}

const HeadwordIndex::Slot* HeadwordIndex::find(std::u16string_view key, uint64_t hash) const {
  if (key.empty() || key.size() > kMaxKeyUnits) return nullptr;
  const uint32_t mixed = mix(hash);
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t i = mixed & mask;; i = (i + 1) & mask) {
    const Slot& slot = slots_[i];
    if (slot.keyUnits == 0) return nullptr;
    if (slot.hash == mixed && slot.keyUnits == key.size() &&
        std::memcmp(keys_.data() + slot.keyOffset, key.data(), key.size() * sizeof(char16_t)) == 0)
      return &slot;
  }
}

HeadwordIndex::Slot* HeadwordIndex::insertNew(uint32_t mixed, uint32_t offset, uint32_t units) {
  if ((used_ + 1) * 10 > slots_.size() * 7) {
    grow();
  }
  const std::size_t mask = slots_.size() - 1;
  std::size_t i = mixed & mask;
  while (slots_[i].keyUnits != 0) i = (i + 1) & mask;
  Slot& slot = slots_[i];
  slot.hash = mixed;
  slot.keyOffset = offset;
  slot.keyUnits = static_cast<uint16_t>(units);
  slot.entries = kNoLink;
  slot.meta = 0;
  ++used_;
  return &slot;
}

void HeadwordIndex::grow() {
  std::vector<Slot> old(slots_.size() * 2);
  old.swap(slots_);
  const std::size_t mask = slots_.size() - 1;
  for (const Slot& slot : old) {
    if (slot.keyUnits == 0) continue;
    std::size_t i = slot.hash & mask;
    while (slots_[i].keyUnits != 0) i = (i + 1) & mask;
    slots_[i] = slot;
  }
}

bool HeadwordIndex::addEntry(std::u16string_view key, uint64_t hash, uint32_t entry) {
  if (key.empty() || key.size() > kMaxKeyUnits) return false;
  const uint32_t mixed = mix(hash);
  Slot* slot = probe(key, mixed);
  bool added = false;
  if (slot->keyUnits == 0) {
    lastKeyOffset_ = static_cast<uint32_t>(keys_.size());
    keys_.append(key);
    slot = insertNew(mixed, lastKeyOffset_, static_cast<uint32_t>(key.size()));
    added = true;
  }
  if (slot->entryCount() == 0) ++keyCount_;
  if (slot->entryCount() < kCountMask) {
    chain_.push_back({entry, slot->entryCount() == 0 ? kNoLink : slot->entries});
    slot->entries = static_cast<uint32_t>(chain_.size() - 1);
    ++slot->meta;
  }
  return added;
}

void HeadwordIndex::markPart(uint32_t offset, uint32_t length, uint64_t hash, uint16_t flag) {
  const uint32_t mixed = mix(hash);
  Slot* slot = probe(std::u16string_view(keys_).substr(offset, length), mixed);
  if (slot->keyUnits == 0) slot = insertNew(mixed, offset, length);
  slot->meta |= flag;
}

void HeadwordIndex::finishEntries() {
  entryLists_.resize(chain_.size());
  uint32_t cursor = 0;
  for (Slot& slot : slots_) {
    const std::size_t count = slot.entryCount();
    if (slot.keyUnits == 0 || count == 0) continue;
    // Chains were built newest first; write them back to front to restore file order.
    uint32_t link = slot.entries;
    for (std::size_t i = count; i-- > 0;) {
      entryLists_[cursor + i] = chain_[link].entry;
      link = chain_[link].next;
    }
    slot.entries = cursor;
    cursor += static_cast<uint32_t>(count);
  }
  chain_.clear();
  chain_.shrink_to_fit();
}

void HeadwordIndex::replaceFirstEntry(const Slot& slot, uint32_t entry) {
  entryLists_[slot.entries] = entry;
}

void HeadwordIndex::addSingleEntryKey(std::u16string_view key, uint64_t hash, uint32_t entry) {
  if (key.empty() || key.size() > kMaxKeyUnits) return;
  const uint32_t mixed = mix(hash);
  Slot* slot = probe(key, mixed);
  if (slot->keyUnits == 0) {
    uint32_t offset = static_cast<uint32_t>(keys_.size());
    keys_.append(key);
    slot = insertNew(mixed, offset, static_cast<uint32_t>(key.size()));
  }
  if (slot->entryCount() != 0) return;
  slot->entries = static_cast<uint32_t>(entryLists_.size());
  entryLists_.push_back(entry);
  ++slot->meta;
  ++keyCount_;
}

std::size_t HeadwordIndex::memoryBytes() const {
  return slots_.capacity() * sizeof(Slot) + keys_.capacity() * sizeof(char16_t) +
         entryLists_.capacity() * sizeof(uint32_t);
}

}  // namespace vesko::cedict_detail
