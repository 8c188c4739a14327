#pragma once
// The read side of the hover, as `vesko probe` wires it: the accessibility reader first, then
// screen recognition (XShm capture of a strip, Tesseract) when the display allows it, then the
// word chooser. Created once by the shell after the dictionaries; `read()` is what the
// ThreadedReader runs on its worker. Thread contract: built and destroyed on the main thread,
// after the reader thread has stopped; `read()` itself from the reads' thread.

#include <memory>
#include <optional>
#include <string>

#include "app/hover_read.h"
#include "app/language_data.h"
#include "app/last_character_rect.h"
#include "app/word_chooser.h"
#include "dict/cedict.h"
#include "settings/loc.h"
#include "settings/log.h"

namespace vesko::desktop {

class HoverReads {
 public:
  HoverReads(const CEDict& dictionary, const LanguageData& data, const Loc& loc, Log& log);
  ~HoverReads();
  HoverReads(const HoverReads&) = delete;
  HoverReads& operator=(const HoverReads&) = delete;

  const HoverRead& read() const;
  SkippedLanguage& skipped();
  LastCharacterRect& lastCharacter();
  // Why the screen cannot be recognised (no display to capture); nothing when it can.
  const std::optional<std::string>& recognitionOff() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace vesko::desktop
