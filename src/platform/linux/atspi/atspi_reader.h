#pragma once
// The accessibility reader on AT-SPI2: asks the application under a point for its text there.
// Created once per process (libatspi keeps process-wide state and cannot be set up twice) by
// whoever wires the reads; it connects to the accessibility bus on its first read, never in the
// constructor, and stays connected until the process ends. `read` blocks on
// other applications and runs only on a read's background thread; overlapping reads from several
// threads are served one after the other. The character boxes it finds go to a
// LastCharacterRect, its reasons for finding nothing to `note` (the diagnostic log).

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "app/last_character_rect.h"
#include "app/screen_text.h"

namespace vesko::atspi {

class AtspiReader final : public AccessibilityReader {
 public:
  using Note = std::function<void(std::string)>;
  AtspiReader(LastCharacterRect& lastRect, Note note);
  ~AtspiReader() override;
  AtspiReader(const AtspiReader&) = delete;
  AtspiReader& operator=(const AtspiReader&) = delete;

  std::optional<TextAtPoint> read(ScreenPoint point) override;

 private:
  struct Session;
  std::optional<TextAtPoint> readLocked(ScreenPoint point);

  LastCharacterRect& lastRect_;
  Note note_;
  std::mutex mutex_;
  std::unique_ptr<Session> session_;  // guarded by mutex_
};

}  // namespace vesko::atspi
