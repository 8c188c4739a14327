#include "desktop/background.h"

#include <chrono>

namespace vesko::desktop {

Background::Background(int threads) {
  // Often enough that an answer seems immediate, rarely enough to cost nothing.
  collect_.setInterval(std::chrono::milliseconds(15));
  QObject::connect(&collect_, &QTimer::timeout, &collect_, [this] { deliver(); });
  for (int i = 0; i < threads; ++i) threads_.emplace_back([this] { serve(); });
}

Background::~Background() {
  {
    std::lock_guard lock(mutex_);
    stopping_ = true;
    queued_.clear();
  }
  wake_.notify_all();
  for (auto& thread : threads_) thread.join();
}

bool Background::busy() const {
  std::lock_guard lock(mutex_);
  return !queued_.empty() || running_ > 0 || !finished_.empty();
}

void Background::start(Job job) {
  {
    std::lock_guard lock(mutex_);
    queued_.push_back(std::move(job));
  }
  wake_.notify_one();
  if (!collect_.isActive()) collect_.start();
}

void Background::serve() {
  std::unique_lock lock(mutex_);
  for (;;) {
    wake_.wait(lock, [this] { return stopping_ || !queued_.empty(); });
    if (stopping_) return;
    Job job = std::move(queued_.front());
    queued_.pop_front();
    ++running_;
    lock.unlock();
    std::function<void()> then = job();
    job = nullptr;  // what the work captured goes here, off the GUI thread
    lock.lock();
    --running_;
    finished_.push_back(std::move(then));
  }
}

void Background::deliver() {
  std::vector<std::function<void()>> ready;
  bool idle;
  {
    std::lock_guard lock(mutex_);
    ready.swap(finished_);
    idle = queued_.empty() && running_ == 0;
  }
  if (idle) collect_.stop();
  // Outside the lock: a hand-back may start more work.
  for (auto& then : ready) then();
}

}  // namespace vesko::desktop
