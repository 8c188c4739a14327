#pragma once
// The box of the character under the pointer at the last accessibility read, for the bubble to
// sit beside the word rather than on it. Created once by whoever wires the reads (main, the
// command line) and handed to the accessibility reader, which writes it on a read thread; the
// bubble takes it on the main thread. Every member is safe from any thread.

#include <mutex>
#include <optional>

#include "app/geometry.h"

namespace vesko {

class LastCharacterRect {
 public:
  // Keeps `rect` as the latest box and marks it fresh.
  void store(ScreenRect rect) {
    std::lock_guard lock(mutex_);
    rect_ = rect;
    fresh_ = true;
  }
  // The box stored since the last take, once; nothing when no read stored one since.
  std::optional<ScreenRect> takeFresh() {
    std::lock_guard lock(mutex_);
    if (!fresh_) return std::nullopt;
    fresh_ = false;
    return rect_;
  }
  // The latest box whether fresh or not, without using it up.
  std::optional<ScreenRect> latest() const {
    std::lock_guard lock(mutex_);
    return rect_;
  }

 private:
  mutable std::mutex mutex_;
  std::optional<ScreenRect> rect_;
  bool fresh_ = false;
};

}  // namespace vesko
