#include "platform/linux/ocr/tesseract_recognizer.h"

#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "app/ocr_boxes.h"
#include "app/recognition_modes.h"
#include "text/unicode.h"

namespace vesko {
namespace {

// Pixels added around a line before it is read alone: the layout's box is tight, and a descender
// or an accent cut at the edge is misread.
constexpr int kCropMargin = 4;
// How far from a line's box the focus still counts as on it (the gap between two words' lines).
constexpr int kFocusSlack = 2;
// Screen text is about 96 pixels an inch; without it Tesseract guesses, and says so on stderr.
constexpr int kScreenResolution = 96;

struct PixelBox {
  int left = 0, top = 0, right = 0, bottom = 0;
  bool contains(ScreenPoint p, int slack) const {
    return p.x >= left - slack && p.x <= right + slack && p.y >= top - slack &&
           p.y <= bottom + slack;
  }
  ScreenRect rect() const {
    return {static_cast<double>(left), static_cast<double>(top), static_cast<double>(right - left),
            static_cast<double>(bottom - top)};
  }
};

std::optional<PixelBox> boxOf(const tesseract::PageIterator& it,
                              tesseract::PageIteratorLevel level) {
  PixelBox box;
  if (!it.BoundingBox(level, &box.left, &box.top, &box.right, &box.bottom)) return std::nullopt;
  return box;
}

std::u16string textOf(const tesseract::ResultIterator& it, tesseract::PageIteratorLevel level) {
  std::unique_ptr<char[]> utf8(it.GetUTF8Text(level));
  if (!utf8) return {};
  std::u16string text = text::fromUtf8(utf8.get()).value_or(std::u16string{});
  // Tesseract ends lines and words with spaces or newlines of its own.
  while (!text.empty() && (text.back() == u' ' || text.back() == u'\n')) text.pop_back();
  return text;
}

// Where no line lies under the focus, the reading holds for the space around it up to the nearest
// lines: the band between the line above and the line below, or only a small square when a line
// beside it shares its height (another column, which must still be read when pointed at).
ScreenRect emptyScope(const std::vector<PixelBox>& lines, ScreenPoint focus, int width,
                      int height) {
  double top = 0, bottom = height;
  for (const PixelBox& line : lines) {
    if (focus.y >= line.top && focus.y <= line.bottom) {
      return {focus.x - kFocusSlack, focus.y - kFocusSlack, 2.0 * kFocusSlack, 2.0 * kFocusSlack};
    }
    if (line.bottom < focus.y) top = std::max(top, static_cast<double>(line.bottom));
    if (line.top > focus.y) bottom = std::min(bottom, static_cast<double>(line.top));
  }
  return {0, top, static_cast<double>(width), bottom - top};
}

}  // namespace

struct TesseractRecognizer::Engine {
  std::mutex mutex;
  std::unique_ptr<tesseract::TessBaseAPI> api;  // guarded by mutex; null until started
  std::string failure;                          // guarded by mutex; why it could not start

  // Starts the engine if needed; false when it cannot (missing language data).
  bool start(const std::string& dataPath, const RecognitionMode& mode) {
    if (api) return true;
    if (!failure.empty()) return false;
    auto started = std::make_unique<tesseract::TessBaseAPI>();
    const std::string languages(mode.languages);
    // Its own diagnostics would go to stderr on every line.
    started->SetVariable("debug_file", "/dev/null");
    if (started->Init(dataPath.empty() ? nullptr : dataPath.c_str(), languages.c_str(),
                      tesseract::OEM_LSTM_ONLY) != 0) {
      failure = "données de reconnaissance " + languages + " introuvables";
      return false;
    }
    api = std::move(started);
    return true;
  }
};

TesseractRecognizer::TesseractRecognizer(std::string dataPath) : dataPath_(std::move(dataPath)) {}

TesseractRecognizer::~TesseractRecognizer() {
  for (auto& [key, engine] : engines_)
    if (engine->api) engine->api->End();
}

TesseractRecognizer::Engine& TesseractRecognizer::engine(std::string_view mode) {
  std::lock_guard guard(enginesMutex_);
  auto found = engines_.find(mode);
  if (found == engines_.end())
    found = engines_.emplace(std::string(mode), std::make_unique<Engine>()).first;
  return *found->second;
}

std::expected<void, std::string> TesseractRecognizer::warm(std::string_view mode) {
  const std::optional<RecognitionMode> known = recognitionMode(mode);
  if (!known) return std::unexpected("mode de reconnaissance inconnu : " + std::string(mode));
  Engine& e = engine(mode);
  std::lock_guard guard(e.mutex);
  if (!e.start(dataPath_, *known)) return std::unexpected(e.failure);
  return {};
}

std::expected<Recognition, std::string> TesseractRecognizer::recognize(const ScreenImage& image,
                                                                       std::string_view mode,
                                                                       ScreenPoint focus) {
  const std::optional<RecognitionMode> known = recognitionMode(mode);
  if (!known) return std::unexpected("mode de reconnaissance inconnu : " + std::string(mode));
  if (!image.valid()) return std::unexpected("image vide");
  Engine& e = engine(mode);
  std::lock_guard guard(e.mutex);
  if (!e.start(dataPath_, *known)) return std::unexpected(e.failure);
  tesseract::TessBaseAPI& api = *e.api;

  api.SetImage(image.pixels.data(), image.width, image.height, image.channels,
               image.width * image.channels);
  api.SetSourceResolution(kScreenResolution);

  // 1. The layout: every text line of the strip, cheap next to reading them.
  api.SetPageSegMode(tesseract::PSM_AUTO);
  std::vector<PixelBox> lines;
  {
    std::unique_ptr<tesseract::PageIterator> layout(api.AnalyseLayout());
    if (layout) {
      do {
        if (auto box = boxOf(*layout, tesseract::RIL_TEXTLINE)) lines.push_back(*box);
      } while (layout->Next(tesseract::RIL_TEXTLINE));
    }
  }
  // 2. The line under the focus; the smallest when boxes overlap (a line inside a taller one).
  const PixelBox* chosen = nullptr;
  for (const PixelBox& line : lines) {
    if (!line.contains(focus, kFocusSlack)) continue;
    if (chosen == nullptr || (line.bottom - line.top) < (chosen->bottom - chosen->top))
      chosen = &line;
  }
  Recognition result;
  if (chosen == nullptr) {
    result.scope = emptyScope(lines, focus, image.width, image.height);
    api.Clear();
    return result;
  }

  // 3. That line alone, read as one line.
  const int left = std::max(0, chosen->left - kCropMargin);
  const int top = std::max(0, chosen->top - kCropMargin);
  const int right = std::min(image.width, chosen->right + kCropMargin);
  const int bottom = std::min(image.height, chosen->bottom + kCropMargin);
  api.SetPageSegMode(tesseract::PSM_SINGLE_LINE);
  api.SetRectangle(left, top, right - left, bottom - top);
  if (api.Recognize(nullptr) != 0) {
    api.Clear();
    return std::unexpected("la reconnaissance a échoué");
  }

  // 4. Words and their boxes, in image pixels (Tesseract reports them in the whole image's frame).
  std::vector<RecognizedWord> words;
  std::optional<PixelBox> lineBox;
  {
    std::unique_ptr<tesseract::ResultIterator> it(api.GetIterator());
    if (it && !it->Empty(tesseract::RIL_WORD)) {
      lineBox = boxOf(*it, tesseract::RIL_TEXTLINE);
      do {
        auto box = boxOf(*it, tesseract::RIL_WORD);
        std::u16string word = textOf(*it, tesseract::RIL_WORD);
        if (box && !word.empty()) words.push_back({std::move(word), box->rect()});
      } while (it->Next(tesseract::RIL_WORD));
    }
  }
  api.Clear();

  result.scope = chosen->rect().grownBy(kFocusSlack, kFocusSlack);
  if (!words.empty()) {
    const PixelBox box = lineBox.value_or(*chosen);
    // The layout's box and the reading's agree closely; their union keeps every word inside.
    const PixelBox merged{std::min(box.left, chosen->left), std::min(box.top, chosen->top),
                          std::max(box.right, chosen->right), std::max(box.bottom, chosen->bottom)};
    OCRLine line = assembleLine(words, merged.rect());
    if (!line.text.empty()) result.lines.push_back(std::move(line));
  }
  return result;
}

}  // namespace vesko
