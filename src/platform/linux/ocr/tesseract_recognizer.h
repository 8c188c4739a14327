#pragma once
// Text recognition with Tesseract: one engine per recognition mode, started on first use (loading
// a language set takes 60–190 ms) and kept warm for the run. A strip is laid out first, then only
// the line under the focus is cropped and read as a single line, which keeps a read within a few
// tens of milliseconds. Created once, shared by every read thread: each engine has its own mutex,
// so two modes recognise in parallel and two reads of one mode take turns.
// Not a static: Tesseract keeps the engines' word lists in a process-wide cache that is destroyed
// at exit, and an engine ended after it touches freed memory.
// Tesseract's OpenMP pool must be limited to one thread before the process starts (see
// single_thread_ocr.h), or a line costs several times as much.

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "app/screen_capture.h"

namespace vesko {

class TesseractRecognizer final : public TextRecognizer {
 public:
  // `dataPath`: the folder holding the *.traineddata files; empty for Tesseract's own default
  // (TESSDATA_PREFIX, else the packaged folder).
  explicit TesseractRecognizer(std::string dataPath = {});
  ~TesseractRecognizer() override;
  TesseractRecognizer(const TesseractRecognizer&) = delete;
  TesseractRecognizer& operator=(const TesseractRecognizer&) = delete;

  std::expected<Recognition, std::string> recognize(const ScreenImage& image, std::string_view mode,
                                                    ScreenPoint focus) override;

  // Starts `mode`'s engine now rather than at its first read; its error when it cannot start.
  std::expected<void, std::string> warm(std::string_view mode);

 private:
  struct Engine;
  // The engine of `mode`, created (not yet started) on first request.
  Engine& engine(std::string_view mode);

  std::string dataPath_;
  std::mutex enginesMutex_;
  std::map<std::string, std::unique_ptr<Engine>, std::less<>> engines_;  // guarded by enginesMutex_
};

}  // namespace vesko
