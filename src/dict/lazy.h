#pragma once
// A value built on first use: the dictionaries of a language are read only when that language is
// first looked up, so a learner who never reads French never pays for the French data.
// Safe for concurrent callers: the first caller builds, the others wait, and all then read the
// same immutable value (std::call_once).

#include <functional>
#include <mutex>
#include <optional>
#include <utility>

namespace vesko {

template <typename T>
class Lazy {
 public:
  explicit Lazy(std::function<T()> build) : build_(std::move(build)) {}
  Lazy(const Lazy&) = delete;
  Lazy& operator=(const Lazy&) = delete;

  const T& get() const {
    std::call_once(once_, [this] {
      value_.emplace(build_());
      build_ = nullptr;  // the closure may hold paths and buffers no longer needed
    });
    return *value_;
  }

 private:
  mutable std::once_flag once_;
  mutable std::function<T()> build_;
  mutable std::optional<T> value_;
};

}  // namespace vesko
