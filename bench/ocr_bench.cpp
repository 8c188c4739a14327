// What reading the screen costs: starting a recognition engine, reading the line under the pointer
// with a warm engine (French and Chinese, on the committed 900 × 130 strips), a whole strip read
// through StripReader, a read served by the cache, and capturing the strip on the X display when
// there is one (skipped otherwise). Every call is timed alone.
// Targets: one line with a warm engine median <= 60 ms; a cache hit <= 0.1 ms.

#include <benchmark/benchmark.h>
#include <leptonica/allheaders.h>
#include <time.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "app/strip_reader.h"
#include "bench_common.h"
#include "platform/linux/ocr/single_thread_ocr.h"
#include "platform/linux/ocr/tesseract_recognizer.h"
#include "platform/linux/x11/xshm_capture.h"
#include "settings/clock.h"

namespace {

using vesko::bench::Clock;

vesko::ScreenImage loadStrip(const std::string& name) {
  const std::string path = std::string(VESKO_OCR_FIXTURES) + "/" + name;
  Pix* pix = pixRead(path.c_str());
  if (pix == nullptr) {
    std::fprintf(stderr, "cannot read %s\n", path.c_str());
    std::exit(2);
  }
  Pix* gray = pixConvertTo8(pix, 0);
  vesko::ScreenImage image;
  image.width = static_cast<int>(pixGetWidth(gray));
  image.height = static_cast<int>(pixGetHeight(gray));
  image.channels = 1;
  image.pixels.resize(static_cast<std::size_t>(image.width) * image.height);
  for (int y = 0; y < image.height; ++y)
    for (int x = 0; x < image.width; ++x) {
      l_uint32 value = 0;
      pixGetPixel(gray, x, y, &value);
      image.pixels[static_cast<std::size_t>(y) * image.width + x] =
          static_cast<std::uint8_t>(value);
    }
  pixDestroy(&gray);
  pixDestroy(&pix);
  return image;
}

// CPU time of the calling thread: with OpenMP held to one thread all the recognition runs there,
// and on a loaded machine it shows the work apart from the waiting for a core.
double threadCpuMs() {
  timespec t{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
  return static_cast<double>(t.tv_sec) * 1e3 + static_cast<double>(t.tv_nsec) / 1e6;
}

void report(const char* name, std::vector<double> ms, const char* unit = "ms", double scale = 1) {
  std::printf("%s median: %.3f %s\n", name, vesko::bench::percentile(ms, 0.50) * scale, unit);
  std::printf("%s p90: %.3f %s\n", name, vesko::bench::percentile(ms, 0.90) * scale, unit);
}

// A 1920 × 1080 white screen with a fixture strip shown at `origin`; captures cut from it.
class FixtureScreen final : public vesko::ScreenCapture {
 public:
  static constexpr int kWidth = 1920, kHeight = 1080;
  FixtureScreen(const vesko::ScreenImage& strip, int originX, int originY)
      : pixels_(static_cast<std::size_t>(kWidth) * kHeight, 255) {
    for (int y = 0; y < strip.height; ++y)
      for (int x = 0; x < strip.width; ++x)
        pixels_[static_cast<std::size_t>(originY + y) * kWidth + originX + x] =
            strip.pixels[static_cast<std::size_t>(y) * strip.width + x];
  }
  std::expected<vesko::ScreenImage, std::string> capture(const vesko::ScreenRect& rect) override {
    vesko::ScreenImage image;
    image.width = static_cast<int>(rect.width);
    image.height = static_cast<int>(rect.height);
    image.channels = 1;
    image.pixels.resize(static_cast<std::size_t>(image.width) * image.height);
    for (int y = 0; y < image.height; ++y)
      for (int x = 0; x < image.width; ++x)
        image.pixels[static_cast<std::size_t>(y) * image.width + x] =
            pixels_[static_cast<std::size_t>(rect.y + y) * kWidth + static_cast<int>(rect.x) + x];
    return image;
  }

 private:
  std::vector<std::uint8_t> pixels_;
};

class OneDisplay final : public vesko::Screens {
 public:
  std::optional<vesko::ScreenRect> displayAt(vesko::ScreenPoint) const override {
    return vesko::ScreenRect{0, 0, 1920, 1080};
  }
};

// A clock the benchmark moves by hand, so that the cache's age is chosen.
class StillClock final : public vesko::Clock {
 public:
  vesko::TimePoint now() const override { return now_; }
  std::chrono::seconds utcOffset(vesko::TimePoint) const override { return {}; }
  void advance(std::chrono::milliseconds by) { now_ += by; }

 private:
  vesko::TimePoint now_{std::chrono::sys_days{std::chrono::year{2025} / 3 / 9}};
};

struct Case {
  const char* name;
  const char* file;
  const char* mode;
  vesko::ScreenPoint focus;  // on the strip's second line
};
constexpr Case kCases[] = {
    {"French", "fr_strip.png", "latin", {180, 65}},
    {"Chinese", "zh_strip.png", "zh-Hans", {231, 88}},
};

}  // namespace

int main(int argc, char** argv) {
  vesko::ensureSingleThreadedOcr(argv);
  benchmark::Initialize(&argc, argv);
  int runs = 31;
  bool gbench = false;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if (arg == "--gbench") {
      gbench = true;
    } else if (arg == "--runs" && i + 1 < argc) {
      runs = std::max(3, std::atoi(argv[++i]));
    } else {
      std::fprintf(stderr, "usage: bench_ocr [--runs N] [--gbench]\n");
      return 2;
    }
  }
  std::printf("OMP_THREAD_LIMIT: %s\n", std::getenv("OMP_THREAD_LIMIT"));

  vesko::TesseractRecognizer recognizer;
  for (const Case& c : kCases) {
    const vesko::ScreenImage image = loadStrip(c.file);
    auto start = Clock::now();
    if (auto warmed = recognizer.warm(c.mode); !warmed) {
      std::fprintf(stderr, "%s: %s\n", c.mode, warmed.error().c_str());
      return 1;
    }
    std::printf("%s engine start: %.1f ms\n", c.name, vesko::bench::millisecondsSince(start));
    std::vector<double> times, cpu, layout;
    std::size_t characters = 0;
    for (int i = 0; i < runs; ++i) {
      start = Clock::now();
      const double cpuStart = threadCpuMs();
      auto read = recognizer.recognize(image, c.mode, c.focus);
      cpu.push_back(threadCpuMs() - cpuStart);
      times.push_back(vesko::bench::millisecondsSince(start));
      if (read && !read->lines.empty()) characters = read->lines[0].charRects.size();
      // Between the two lines: the layout alone, nothing to read.
      const double layoutStart = threadCpuMs();
      benchmark::DoNotOptimize(recognizer.recognize(image, c.mode, {c.focus.x, 47}));
      layout.push_back(threadCpuMs() - layoutStart);
    }
    std::printf("%s line: %zu characters\n", c.name, characters);
    report((std::string(c.name) + " line, warm engine").c_str(), times);
    report((std::string(c.name) + " line, warm engine, thread cpu").c_str(), cpu);
    report((std::string(c.name) + " layout alone, thread cpu").c_str(), layout);
  }

  // Through StripReader: a miss each time (the clock moves past the cache's lifetime), then hits.
  {
    // The Chinese strip shown at (600, 400): its "去" at (831, 488) on the screen.
    FixtureScreen capture(loadStrip("zh_strip.png"), 600, 400);
    OneDisplay screens;
    StillClock clock;
    vesko::StripReader reader(capture, recognizer, screens, clock, [](std::string) {});
    const vesko::ScreenPoint pointer{831, 488};
    const vesko::ScreenPoint onLine{849, 488};  // the next character, "公"
    const std::vector<std::string> modes{"zh-Hans"};
    if (reader.read(pointer, modes).empty()) {
      std::fprintf(stderr, "the strip read found no line under the pointer\n");
      return 1;
    }
    std::vector<double> misses;
    for (int i = 0; i < runs; ++i) {
      clock.advance(std::chrono::seconds(2));
      auto start = Clock::now();
      reader.read(pointer, modes);
      misses.push_back(vesko::bench::millisecondsSince(start));
    }
    report("Chinese strip read, cache miss", misses);
    std::vector<double> hits;
    for (int i = 0; i < 20'000; ++i) {
      auto start = Clock::now();
      benchmark::DoNotOptimize(reader.read(onLine, modes));
      hits.push_back(vesko::bench::millisecondsSince(start));
    }
    report("strip read, cache hit", hits, "µs", 1000);
    if (gbench) {
      benchmark::RegisterBenchmark("StripReader/cacheHit", [&](benchmark::State& state) {
        for (auto _ : state) benchmark::DoNotOptimize(reader.read(onLine, modes));
      });
    }
  }

  // Capturing the strip, when a display is there.
  for (const bool shared : {true, false}) {
    auto capture = vesko::XShmCapture::open({}, shared);
    if (!capture) {
      std::printf("capture: skipped (%s)\n", capture.error().c_str());
      break;
    }
    const char* name = (*capture)->sharedMemory() ? "XShmGetImage 900x130" : "XGetImage 900x130";
    std::vector<double> times;
    for (int i = 0; i < 2000; ++i) {
      auto start = Clock::now();
      auto image = (*capture)->capture({100, 100, 900, 130});
      times.push_back(vesko::bench::millisecondsSince(start));
      if (!image) {
        std::printf("capture failed: %s\n", image.error().c_str());
        break;
      }
    }
    report(name, times);
  }

  if (gbench) benchmark::RunSpecifiedBenchmarks();
  return 0;
}
