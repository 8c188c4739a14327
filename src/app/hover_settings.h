#pragma once
// The settings the hover timer reads at every tick (`delay`, `modifier`, the reading mode of each
// language) and the rest of the language switches a read's Snapshot carries, kept as last read
// and read again only when the settings' generation has moved, so that a tick costs one atomic
// load. Owned by the hover controller; main thread only.

#include <array>
#include <cstdint>

#include "app/language.h"
#include "settings/settings.h"

namespace vesko {

// The reading mode of a language (`mode.zh`, …).
enum class ReadingMode : std::uint8_t {
  hover = 0,    // "Au simple survol"
  withKey = 1,  // "Avec la touche maintenue"
  off = 2,      // not studied
};

class HoverSettings {
 public:
  explicit HoverSettings(const Settings& settings);
  HoverSettings(const HoverSettings&) = delete;
  HoverSettings& operator=(const HoverSettings&) = delete;

  // Reads the settings again when they changed since the last call. Allocates only then.
  void refresh();

  double delay() const { return delay_; }
  std::uint8_t triggerModifiers() const { return trigger_; }
  ReadingMode mode(Language language) const { return modes_[static_cast<std::size_t>(language)]; }

  // The language switches with the trigger key held or not: a language is on when it is read on
  // hover, or with the key and the key is held. The reference stays valid until the next call.
  const Snapshot& snapshot(bool keyHeld);

 private:
  void read();

  const Settings& settings_;
  std::uint64_t generation_ = 0;
  double delay_ = 0.1;
  std::uint8_t trigger_ = 0;
  std::array<ReadingMode, 7> modes_{};
  Snapshot snapshot_;
};

// Whether any language is on in `snapshot`.
bool anyLanguageOn(const Snapshot& snapshot);

}  // namespace vesko
