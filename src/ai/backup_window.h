#pragma once
// The one value that concurrent questions share: until when the backup provider answers instead of
// the primary, after the primary could not be reached. Lives for the process only, so a restart
// tries the primary again. Owned by CloudAI; every member is safe from any thread.

#include <chrono>
#include <mutex>

#include "settings/clock.h"

namespace vesko {

class BackupWindow {
 public:
  static constexpr std::chrono::seconds kLength{1800};

  // True while `now` is before the end of the window.
  bool open(TimePoint now) const {
    std::lock_guard lock(mutex_);
    return now < until_;
  }
  // Concurrent failovers each set the end to their own now + 30 minutes; the last one wins.
  void openAt(TimePoint now) {
    std::lock_guard lock(mutex_);
    until_ = now + kLength;
  }

 private:
  mutable std::mutex mutex_;
  TimePoint until_{};  // guarded by mutex_; initially in the past
};

}  // namespace vesko
