#pragma once
// Work that may block (the credential store, the network) run off the GUI thread, its result
// handed back on the GUI thread. Owned by the window page that starts the work; destroying it
// drops the work not yet started and waits for the work running, so that no result outlives
// its owner. The hand-over goes through a mutex and a GUI-thread timer that collects finished
// results, not through Qt's cross-thread events, so the thread checkers see every step.
// Thread contract: construct, run() and destroy on the GUI thread; `work` runs on one of the
// object's threads and must touch only what outlives the object; `done` runs on the GUI thread.

#include <QTimer>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace vesko::desktop {

class Background {
 public:
  explicit Background(int threads = 2);
  ~Background();
  Background(const Background&) = delete;
  Background& operator=(const Background&) = delete;

  template <typename Work, typename Done>
  void run(Work work, Done done) {
    start([work = std::move(work), done = std::move(done)]() mutable -> std::function<void()> {
      auto result = std::make_shared<decltype(work())>(work());
      return [done = std::move(done), result]() mutable { done(std::move(*result)); };
    });
  }

  // Work started and not yet handed back.
  bool busy() const;

 private:
  // Runs on a worker; returns what to run on the GUI thread.
  using Job = std::function<std::function<void()>()>;

  void start(Job job);
  void serve();
  void deliver();

  mutable std::mutex mutex_;
  std::condition_variable wake_;
  std::deque<Job> queued_;                       // guarded by mutex_
  std::vector<std::function<void()>> finished_;  // guarded by mutex_
  int running_ = 0;                              // guarded by mutex_
  bool stopping_ = false;                        // guarded by mutex_

  QTimer collect_;                    // GUI thread: hands finished work back while there is any
  std::vector<std::thread> threads_;  // last: started once everything above exists
};

}  // namespace vesko::desktop
