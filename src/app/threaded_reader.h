#pragma once
// The reader the shell hands the hover controller: each read runs `HoverRead::read` on one worker
// thread of its own, and the report goes to a delivery function that posts it to the main thread,
// where the shell passes it on to HoverController::answer. Created by the shell with a HoverRead
// that outlives it.
// Thread contract: `start` and the destructor are called on one thread (the main thread); the
// delivery function is called on the worker, one report at a time, never after the destructor
// has returned. A request still waiting when a newer one comes is dropped unread: only the latest
// matters to the controller, which forgets older generations anyway. A read already running
// finishes and is delivered.

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

#include "app/hover_read.h"
#include "app/read_request.h"

namespace vesko {

class ThreadedReader final : public Reader {
 public:
  using Deliver = std::function<void(std::uint64_t generation, ReadReport report)>;

  ThreadedReader(const HoverRead& read, Deliver deliver);
  // Waits for the read in progress, if any, and delivers it; a waiting request is dropped.
  ~ThreadedReader() override;
  ThreadedReader(const ThreadedReader&) = delete;
  ThreadedReader& operator=(const ThreadedReader&) = delete;

  // Queues the request in place of any that has not started yet, and returns at once.
  void start(ReadRequest request) override;

 private:
  void work();

  const HoverRead& read_;
  Deliver deliver_;
  std::mutex mutex_;
  std::condition_variable wake_;
  std::optional<ReadRequest> waiting_;  // guarded by mutex_
  bool stopping_ = false;               // guarded by mutex_
  std::thread worker_;                  // last: it starts once the rest is in place
};

}  // namespace vesko
