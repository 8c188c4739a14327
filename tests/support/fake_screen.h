#pragma once
// Stand-ins for the screen reader's platform: one display of a chosen size, a capture that counts
// its calls and returns a blank picture of the rectangle's size, and a recogniser that returns
// lines the test wrote in image pixels. Counters are atomic so the threaded tests can read them.

#include <atomic>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "app/screen_capture.h"

namespace vesko::testing {

class FakeScreens final : public Screens {
 public:
  explicit FakeScreens(std::vector<ScreenRect> displays) : displays_(std::move(displays)) {}
  std::optional<ScreenRect> displayAt(ScreenPoint p) const override {
    for (const ScreenRect& d : displays_)
      if (p.x >= d.x && p.x < d.right() && p.y >= d.y && p.y < d.bottom()) return d;
    return std::nullopt;
  }

 private:
  std::vector<ScreenRect> displays_;
};

class FakeCapture final : public ScreenCapture {
 public:
  explicit FakeCapture(double scale = 1) : scale_(scale) {}
  std::expected<ScreenImage, std::string> capture(const ScreenRect& rect) override {
    ++calls;
    {
      std::lock_guard guard(mutex_);
      rects_.push_back(rect);
    }
    if (refuse) return std::unexpected("refusée");
    ScreenImage image;
    image.width = static_cast<int>(rect.width * scale_);
    image.height = static_cast<int>(rect.height * scale_);
    image.channels = 1;
    image.scale = scale_;
    image.pixels.assign(static_cast<std::size_t>(image.width) * image.height, 255);
    return image;
  }
  std::vector<ScreenRect> rects() const {
    std::lock_guard guard(mutex_);
    return rects_;
  }

  std::atomic<int> calls{0};
  std::atomic<bool> refuse{false};

 private:
  double scale_;
  mutable std::mutex mutex_;
  std::vector<ScreenRect> rects_;
};

// Answers every mode with the lines set for it (image pixels), its scope the whole image.
class FakeRecognizer final : public TextRecognizer {
 public:
  void answer(const std::string& mode, std::vector<OCRLine> lines) {
    std::lock_guard guard(mutex_);
    answers_[mode] = std::move(lines);
  }
  std::expected<Recognition, std::string> recognize(const ScreenImage& image, std::string_view mode,
                                                    ScreenPoint focus) override {
    ++calls;
    std::lock_guard guard(mutex_);
    focuses_.push_back(focus);
    const auto found = answers_.find(std::string(mode));
    if (found == answers_.end()) return std::unexpected("mode inconnu");
    return Recognition{found->second,
                       {0, 0, static_cast<double>(image.width), static_cast<double>(image.height)}};
  }
  std::vector<ScreenPoint> focuses() const {
    std::lock_guard guard(mutex_);
    return focuses_;
  }

  std::atomic<int> calls{0};

 private:
  mutable std::mutex mutex_;
  std::map<std::string, std::vector<OCRLine>> answers_;
  std::vector<ScreenPoint> focuses_;
};

}  // namespace vesko::testing
