#include "app/strip_reader.h"

#include <algorithm>
#include <optional>

namespace vesko {
namespace {

ScreenRect toScreen(const ScreenRect& pixels, const ScreenRect& captured, double scale) {
  return {captured.x + pixels.x / scale, captured.y + pixels.y / scale, pixels.width / scale,
          pixels.height / scale};
}

OCRLine toScreen(const OCRLine& line, const ScreenRect& captured, double scale) {
  OCRLine out{line.text, toScreen(line.rect, captured, scale), {}};
  out.charRects.reserve(line.charRects.size());
  for (const ScreenRect& r : line.charRects) out.charRects.push_back(toScreen(r, captured, scale));
  return out;
}

}  // namespace

StripReader::StripReader(ScreenCapture& capture, TextRecognizer& recognizer, const Screens& screens,
                         const Clock& clock, std::function<void(std::string)> log)
    : capture_(capture),
      recognizer_(recognizer),
      screens_(screens),
      clock_(clock),
      log_(std::move(log)) {}

ScreenRect StripReader::captureRect(ScreenPoint point) const {
  const std::optional<ScreenRect> display = screens_.displayAt(point);
  if (!display) return {};
  const ScreenRect strip{point.x - kStripWidth / 2, point.y - kStripHeight / 2, kStripWidth,
                         kStripHeight};
  return strip.intersected(*display);
}

std::vector<OCRLine> StripReader::read(ScreenPoint point, std::span<const std::string> modes) {
  return readNoted(point, modes).lines;
}

StripReader::Result StripReader::readNoted(ScreenPoint point, std::span<const std::string> modes) {
  // Each mode's lines, in the order asked; a mode the cache could not serve stays empty until read.
  std::vector<std::optional<std::vector<OCRLine>>> perMode(modes.size());
  bool allCached = true;
  const TimePoint now = clock_.now();
  for (std::size_t i = 0; i < modes.size(); ++i) {
    perMode[i] = cache_.find(modes[i], point, now);
    allCached = allCached && perMode[i].has_value();
  }

  if (!allCached) {
    const ScreenRect rect = captureRect(point);
    std::optional<ScreenImage> image;
    if (rect.empty()) {
      log_("OCR : aucun écran sous le pointeur");
    } else if (auto captured = capture_.capture(rect); !captured) {
      log_("OCR : capture impossible (" + captured.error() + ")");
    } else if (!captured->valid()) {
      log_("OCR : capture illisible");
    } else {
      image = std::move(*captured);
    }
    if (image) {
      const TimePoint capturedAt = clock_.now();
      const ScreenPoint focus{(point.x - rect.x) * image->scale, (point.y - rect.y) * image->scale};
      for (std::size_t i = 0; i < modes.size(); ++i) {
        if (perMode[i]) continue;
        auto recognized = recognizer_.recognize(*image, modes[i], focus);
        if (!recognized) {
          log_("OCR : " + modes[i] + " : " + recognized.error());
          continue;
        }
        std::vector<OCRLine> lines;
        lines.reserve(recognized->lines.size());
        for (const OCRLine& line : recognized->lines)
          lines.push_back(toScreen(line, rect, image->scale));
        const ScreenRect scope = toScreen(recognized->scope, rect, image->scale);
        cache_.store(modes[i], {capturedAt, rect, scope, lines});
        perMode[i] = std::move(lines);
      }
    }
  }

  Result result;
  bool latinAsked = false, latinText = false;
  for (std::size_t i = 0; i < modes.size(); ++i) {
    const bool gaveText = perMode[i] && std::ranges::any_of(*perMode[i], [](const OCRLine& l) {
                            return !l.text.empty();
                          });
    if (modes[i] == "latin") {
      latinAsked = true;
      latinText = latinText || gaveText;
    }
    if (!perMode[i]) continue;
    result.lines.insert(result.lines.end(), perMode[i]->begin(), perMode[i]->end());
  }
  if (latinAsked && !latinText) result.note = kLatinEmptyNote;
  return result;
}

}  // namespace vesko
