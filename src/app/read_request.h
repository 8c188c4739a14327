#pragma once
// One read of the text under the pointer as the hover controller sends it off, and the reader that
// runs it. `start` is called on the main thread and must return at once: the read runs on a
// background task, and its answer comes back to the main thread through
// HoverController::answer(generation, result), called by the shell on the main thread.

#include <cstdint>
#include <string>

#include "app/geometry.h"
#include "app/language.h"

namespace vesko {

struct ReadRequest {
  std::uint64_t generation = 0;            // given back with the answer; a stale one is dropped
  ScreenPoint point;                       // the pointer, in screen points
  double scaleFactor = 2.0;                // of the screen under the pointer; 2.0 when on no screen
  Snapshot snapshot;                       // the language switches at the moment of the read
  std::string frontmostApplication = "?";  // "?" when unknown
  friend bool operator==(const ReadRequest&, const ReadRequest&) = default;
};

class Reader {
 public:
  virtual ~Reader() = default;
  // Starts the read and returns. The reader holds the dictionaries itself.
  virtual void start(ReadRequest request) = 0;
};

// Whether the dictionaries have finished loading: before that a read would find nothing.
class DictionariesLoaded {
 public:
  virtual ~DictionariesLoaded() = default;
  virtual bool loaded() const = 0;
};

}  // namespace vesko
