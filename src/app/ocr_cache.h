#pragma once
// Recent recognitions, one item per recognition mode: when the pointer rests again inside a strip
// read less than 1.5 s ago (the next word of the same subtitle), its lines are used without a new
// capture. Owned by the `StripReader`, which lives for the whole run.
// Thread contract: `find` and `store` from any thread; the items are only touched under the lock,
// and the lock is never held while capturing or recognising.

#include <chrono>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/geometry.h"
#include "app/screen_text.h"
#include "settings/clock.h"

namespace vesko {

class OCRCache {
 public:
  static constexpr std::chrono::milliseconds kLifetime{1500};
  // The border of a strip where a word may be cut by the capture's edge: a pointer there asks for
  // a new strip centred on it.
  static constexpr double kInsetX = 30;
  static constexpr double kInsetY = 10;

  struct Item {
    TimePoint captured;
    ScreenRect captureRect;  // global screen points
    ScreenRect scope;        // the part of the strip the lines account for, global screen points
    std::vector<OCRLine> lines;
  };

  // The lines of `mode`'s item when it is younger than `kLifetime` at `now` and `point` lies inside
  // its capture rectangle inset by the margins and inside its scope; nothing otherwise (including
  // an item that exists but read no text there: the empty list is returned, not nothing).
  std::optional<std::vector<OCRLine>> find(std::string_view mode, ScreenPoint point,
                                           TimePoint now) const;
  // Replaces `mode`'s item.
  void store(std::string_view mode, Item item);

 private:
  mutable std::mutex lock_;
  std::map<std::string, Item, std::less<>> items_;  // guarded by lock_
};

}  // namespace vesko
