#pragma once
// What the screen reader needs from the platform: a picture of part of the screen, the bounds of
// the display under a point, and a text recogniser. The core holds these interfaces only; the X11
// and Tesseract implementations live under platform/. Each implementation states its own thread
// contract; `StripReader` calls them from whichever read thread it runs on.

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/geometry.h"
#include "app/screen_text.h"

namespace vesko {

// A captured picture: rows top to bottom, `channels` bytes a pixel (1 gray, 3 RGB), no padding.
// `scale` is pixels per screen point (1 on an ordinary X11 screen, 2 on a doubled one).
struct ScreenImage {
  int width = 0;
  int height = 0;
  int channels = 3;
  double scale = 1;
  std::vector<std::uint8_t> pixels;

  bool valid() const {
    return width > 0 && height > 0 && (channels == 1 || channels == 3) &&
           pixels.size() == static_cast<std::size_t>(width) * height * channels;
  }
};

class ScreenCapture {
 public:
  virtual ~ScreenCapture() = default;
  // The pixels of `rect` (global screen points) as the screen shows them; an error text (French,
  // for the diagnostic log) when the capture is refused or fails.
  virtual std::expected<ScreenImage, std::string> capture(const ScreenRect& rect) = 0;
};

class Screens {
 public:
  virtual ~Screens() = default;
  // The bounds of the display that contains `point`, or nothing when the point is on none.
  virtual std::optional<ScreenRect> displayAt(ScreenPoint point) const = 0;
};

// What one recognition gives: the lines read, in image pixels (text, line box and one box per
// grapheme cluster), and the part of the image they account for. A recogniser that reads only the
// line under the focus says so through `scope`: a later pointer outside it must not be answered
// from these lines, since text there was never read.
struct Recognition {
  std::vector<OCRLine> lines;
  ScreenRect scope;
};

class TextRecognizer {
 public:
  virtual ~TextRecognizer() = default;
  // Recognises `image` with the languages of recognition mode `mode` ("latin", "zh-Hans", …),
  // reading at least the line under `focus` (image pixels). An error text (French) when the mode is
  // unknown, its language data is missing or the engine fails.
  virtual std::expected<Recognition, std::string> recognize(const ScreenImage& image,
                                                            std::string_view mode,
                                                            ScreenPoint focus) = 0;
};

}  // namespace vesko
