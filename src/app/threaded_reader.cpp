#include "app/threaded_reader.h"

#include <exception>
#include <utility>

namespace vesko {

ThreadedReader::ThreadedReader(const HoverRead& read, Deliver deliver)
    : read_(read), deliver_(std::move(deliver)), worker_([this] { work(); }) {}

ThreadedReader::~ThreadedReader() {
  {
    std::lock_guard lock(mutex_);
    stopping_ = true;
    waiting_.reset();
  }
  wake_.notify_one();
  worker_.join();
}

void ThreadedReader::start(ReadRequest request) {
  {
    std::lock_guard lock(mutex_);
    waiting_ = std::move(request);
  }
  wake_.notify_one();
}

void ThreadedReader::work() {
  for (;;) {
    ReadRequest request;
    {
      std::unique_lock lock(mutex_);
      wake_.wait(lock, [this] { return stopping_ || waiting_.has_value(); });
      if (stopping_) return;
      request = std::move(*waiting_);
      waiting_.reset();
    }
    ReadReport report;
    try {
      report = read_.read(request.point, request.snapshot);
    } catch (const std::exception&) {
      // A read that fails (out of memory, a reader's own bug) answers "nothing here" rather than
      // taking the program down; the controller would otherwise wait out its read timeout.
      report = ReadReport{};
    }
    deliver_(request.generation, std::move(report));
  }
}

}  // namespace vesko
