#include "desktop/hover_reads.h"

#include "app/line_at.h"
#include "app/recognition_modes.h"
#include "app/strip_reader.h"
#include "platform/linux/atspi/atspi_reader.h"
#include "platform/linux/ocr/tesseract_recognizer.h"
#include "platform/linux/x11/x11_screens.h"
#include "platform/linux/x11/xshm_capture.h"
#include "settings/clock.h"

namespace vesko::desktop {

struct HoverReads::Parts {
  Parts(const CEDict& dictionary, const LanguageData& data, const Loc& loc, Log& log)
      : chooser(dictionary, data, skipped,
                ChooserTexts{loc.t("forme du dictionnaire"),
                             loc.t("nom propre (translittération probable)")}),
        accessibility(lastCharacter, [&log](std::string message) { log.log(std::move(message)); }) {
    auto note = [&log](std::string message) { log.log(std::move(message)); };
    auto opened = XShmCapture::open();
    auto found = X11Screens::open();
    if (opened && found) {
      capture = std::move(*opened);
      screens = std::move(*found);
      strip.emplace(*capture, recognizer, *screens, clock, note);
      read.emplace(accessibility, ScreenRecognition{*strip, &recognitionModes, &lineAt}, chooser);
    } else {
      recognitionOff = opened ? found.error() : opened.error();
      log.log("lecture d'écran : " + *recognitionOff);
      read.emplace(accessibility, std::nullopt, chooser);
    }
  }

  SkippedLanguage skipped;
  LastCharacterRect lastCharacter;
  WordChooser chooser;
  atspi::AtspiReader accessibility;
  const SystemClock clock;
  TesseractRecognizer recognizer;
  std::unique_ptr<XShmCapture> capture;
  std::unique_ptr<X11Screens> screens;
  std::optional<StripReader> strip;
  std::optional<HoverRead> read;
  std::optional<std::string> recognitionOff;
};

HoverReads::HoverReads(const CEDict& dictionary, const LanguageData& data, const Loc& loc, Log& log)
    : parts_(std::make_unique<Parts>(dictionary, data, loc, log)) {}

HoverReads::~HoverReads() = default;

const HoverRead& HoverReads::read() const {
  return *parts_->read;
}
SkippedLanguage& HoverReads::skipped() {
  return parts_->skipped;
}
LastCharacterRect& HoverReads::lastCharacter() {
  return parts_->lastCharacter;
}
const std::optional<std::string>& HoverReads::recognitionOff() const {
  return parts_->recognitionOff;
}

}  // namespace vesko::desktop
