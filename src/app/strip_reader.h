#pragma once
// The screen reader: captures a 900 × 130-point strip around the pointer, recognises it once per
// recognition mode the hover asks for, and keeps each mode's lines for a moment in an `OCRCache`.
// Created once at start-up with its platform collaborators, which must outlive it.
// Thread contract: `read` may run on several read threads at once. The cache is locked only for
// its look-ups and stores; the capture and the recogniser are called concurrently, so they must be
// safe to share (the X11 capture and the Tesseract recogniser are).

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "app/ocr_cache.h"
#include "app/screen_capture.h"
#include "app/screen_text.h"
#include "settings/clock.h"

namespace vesko {

// What the read writes into its diagnostic line when the Latin mode was asked for and gave no text.
inline constexpr std::string_view kLatinEmptyNote = "OCR-latin vide ;";

class StripReader final : public ScreenReader {
 public:
  static constexpr double kStripWidth = 900;
  static constexpr double kStripHeight = 130;

  // One read's lines with the note for the read's diagnostic line: `kLatinEmptyNote` when "latin"
  // was asked for and gave no text (none at the pointer: only that line is read), empty otherwise.
  struct Result {
    std::vector<OCRLine> lines;
    std::string note;
  };

  // `log` receives the reasons a read found nothing (a refused capture, a recogniser error) as
  // French diagnostic lines; it is called from the read threads.
  StripReader(ScreenCapture& capture, TextRecognizer& recognizer, const Screens& screens,
              const Clock& clock, std::function<void(std::string)> log);

  // The lines of every requested mode, mode by mode in the order asked, in global screen points.
  std::vector<OCRLine> read(ScreenPoint point, std::span<const std::string> modes) override;
  Result readNoted(ScreenPoint point, std::span<const std::string> modes);

  // The strip centred on `point`, cut to the display under it; empty when there is no display.
  ScreenRect captureRect(ScreenPoint point) const;

 private:
  ScreenCapture& capture_;
  TextRecognizer& recognizer_;
  const Screens& screens_;
  const Clock& clock_;
  std::function<void(std::string)> log_;
  OCRCache cache_;
};

}  // namespace vesko
