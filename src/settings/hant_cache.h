#pragma once
// Traditional characters for the simplified-Chinese interface texts that the traditional table
// lacks, converted character by character through the shared Chinese dictionary and kept, since
// the same texts are drawn again and again. Nothing is kept before the dictionary has loaded, so
// that a later call converts the text. Thread contract: any thread; one lock around each read and
// each insertion, released while converting.

#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

#include "dict/cedict.h"

namespace vesko {

class HantCache {
 public:
  // `dictionary` must outlive the cache; it may still be loading.
  explicit HantCache(const CEDict& dictionary) : dictionary_(dictionary) {}
  HantCache(const HantCache&) = delete;
  HantCache& operator=(const HantCache&) = delete;

  // `text` in traditional characters; `text` itself while the dictionary is not loaded.
  std::string convert(std::string_view text);
  std::size_t size() const;

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
      return std::hash<std::string_view>{}(text);
    }
  };

  const CEDict& dictionary_;
  mutable std::mutex mutex_;
  std::unordered_map<std::string, std::string, Hash, std::equal_to<>> cache_;  // guarded by mutex_
};

}  // namespace vesko
