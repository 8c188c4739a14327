#pragma once
// What a ThreadedReader delivered, kept for the test thread as the shell's main-thread queue would
// keep it. `deliver` runs on the reader's worker; the rest on the test thread.

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <utility>

#include "app/hover_read.h"

namespace vesko::testing {

struct Delivery {
  std::uint64_t generation = 0;
  ReadReport report;
};

class ReadMailbox {
 public:
  void deliver(std::uint64_t generation, ReadReport report) {
    {
      std::lock_guard lock(mutex_);
      deliveries_.push_back({generation, std::move(report)});
    }
    arrived_.notify_all();
  }

  // The oldest delivery not taken yet; nothing if none comes within `wait`.
  std::optional<Delivery> next(std::chrono::milliseconds wait = std::chrono::seconds(10)) {
    std::unique_lock lock(mutex_);
    if (!arrived_.wait_for(lock, wait, [this] { return !deliveries_.empty(); }))
      return std::nullopt;
    Delivery delivery = std::move(deliveries_.front());
    deliveries_.pop_front();
    return delivery;
  }

 private:
  std::mutex mutex_;
  std::condition_variable arrived_;
  std::deque<Delivery> deliveries_;
};

}  // namespace vesko::testing
