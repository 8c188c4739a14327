// What one tick of the hover timer costs the main thread when it ends before a read: the timer
// fires 33 times a second for as long as the program runs, and most ticks only wait. Each tick is
// timed alone, in the states a tick most often ends in, with collaborators that answer at once,
// so that the figure is the controller's own.
// Target: a waiting tick's median <= 2 µs.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "app/hover_controller.h"
#include "bench_common.h"

namespace {

using vesko::ScreenPoint;

struct Pointer final : vesko::PointerSource {
  vesko::PointerState state;
  vesko::PointerState sample() override { return state; }
};
struct NoOwnWindow final : vesko::OwnWindows {
  bool ownWindowAt(ScreenPoint) const override { return false; }
};
struct OneScreen final : vesko::ScreenScales {
  std::optional<double> scaleFactorAt(ScreenPoint) const override { return 1.0; }
};
struct Frontmost final : vesko::FrontmostApplication {
  std::optional<std::string> identifier() const override { return "bench"; }
};
struct Panel final : vesko::Bubble {
  std::optional<ScreenPoint> at;
  vesko::ScreenRect rect;
  bool visible() const override { return at.has_value(); }
  vesko::ScreenRect frame() const override { return rect; }
  std::optional<ScreenPoint> anchor() const override { return at; }
  void show(ScreenPoint point, const vesko::HoverResult&) override {
    at = point;
    rect = {point.x + 20, point.y - 20, 300, 160};
  }
  void close() override { at.reset(); }
  bool onWayTowards(ScreenPoint pointer) const override {
    return at && vesko::headingTowards(*at, pointer, rect);
  }
};
struct Reads final : vesko::Reader {
  std::uint64_t last = 0;
  void start(vesko::ReadRequest request) override { last = request.generation; }
};
struct Notices final : vesko::HoverNotices {
  void nothingToRead(const vesko::Snapshot&) override {}
  void languageSkipped(vesko::Language, bool) override {}
};
struct Loaded final : vesko::DictionariesLoaded {
  bool loaded() const override { return true; }
};
struct Clock final : vesko::SteadyClock {
  double now = 1000;
  double seconds() const override { return now; }
};

std::filesystem::path makeTempFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "vesko-bench-XXXXXX").string();
  if (!::mkdtemp(pattern.data())) {
    std::perror("mkdtemp");
    std::exit(2);
  }
  return pattern;
}

struct Loop {
  explicit Loop(const std::filesystem::path& folder)
      : settings(folder / "settings.json", wallClock),
        log(folder / "debug.log", settings, wallClock),
        controller(vesko::HoverCollaborators{
            .pointer = pointer,
            .ownWindows = ownWindows,
            .screens = screens,
            .frontmost = frontmost,
            .bubble = bubble,
            .reader = reader,
            .notices = notices,
            .dictionaries = loaded,
            .clock = clock,
            .settings = settings,
            .skipped = skipped,
            .log = log,
        }) {}

  double timedTick() {
    clock.now += vesko::HoverController::kTickInterval;
    const auto start = vesko::bench::Clock::now();
    controller.tick();
    return std::chrono::duration<double, std::nano>(vesko::bench::Clock::now() - start).count();
  }
  // Rests at `point` until the read starts, then answers it with a word.
  void readAt(ScreenPoint point) {
    pointer.state.position = point;
    const auto before = reader.last;
    for (int i = 0; i < 100 && reader.last == before; ++i) timedTick();
    vesko::HoverResult::Word word;
    word.word = "学习";
    controller.answer(reader.last, vesko::HoverResult{word});
  }

  vesko::SystemClock wallClock;
  vesko::Settings settings;
  vesko::Log log;
  Pointer pointer;
  NoOwnWindow ownWindows;
  OneScreen screens;
  Frontmost frontmost;
  Panel bubble;
  Reads reader;
  Notices notices;
  Loaded loaded;
  Clock clock;
  vesko::SkippedLanguage skipped;
  vesko::HoverController controller;
};

void report(const char* name, std::vector<double> ns) {
  std::printf("%s median: %.3f µs\n", name, vesko::bench::percentile(ns, 0.50) / 1000);
  std::printf("%s p90: %.3f µs\n", name, vesko::bench::percentile(ns, 0.90) / 1000);
  std::printf("%s p99: %.3f µs\n", name, vesko::bench::percentile(ns, 0.99) / 1000);
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  bool gbench = false;
  long ticks = 100'000;
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    if (arg == "--gbench") {
      gbench = true;
    } else if (arg == "--ticks" && i + 1 < argc) {
      ticks = std::max(100L, std::atol(argv[++i]));
    } else {
      std::fprintf(stderr,
                   "usage: bench_hover_tick [--ticks N] [--gbench] [--benchmark_* flags]\n");
      return 2;
    }
  }

  const auto folder = makeTempFolder();
  Loop loop(folder);
  loop.readAt({500, 300});

  // At rest on the spot just read, the bubble shown: ends at "this spot was read already".
  std::vector<double> resting;
  for (long i = 0; i < ticks; ++i) resting.push_back(loop.timedTick());
  report("tick at rest on a spot read", resting);

  // Moving by small steps near the anchor: each tick is a move, which ends the tick.
  std::vector<double> moving;
  for (long i = 0; i < ticks; ++i) {
    loop.pointer.state.position = {500.0 + (i % 2) * 5, 300};
    moving.push_back(loop.timedTick());
  }
  report("tick while moving", moving);

  // On the way from the anchor into the bubble, which must stay: the path test runs every tick.
  std::vector<double> towards;
  loop.pointer.state.position = {530, 310};
  loop.timedTick();
  for (long i = 0; i < ticks; ++i) towards.push_back(loop.timedTick());
  report("tick on the way to the bubble", towards);

  // A read in flight at a new spot.
  loop.pointer.state.position = {900, 700};
  while (!loop.controller.readInFlight()) loop.timedTick();
  std::vector<double> inFlight;
  for (long i = 0; i < ticks / 40; ++i) inFlight.push_back(loop.timedTick());  // < 4 s of ticks
  report("tick with a read in flight", inFlight);
  loop.controller.answer(loop.reader.last, std::nullopt);

  // A mouse button down: ends at once.
  loop.pointer.state.buttonPressed = true;
  std::vector<double> pressed;
  for (long i = 0; i < ticks; ++i) pressed.push_back(loop.timedTick());
  report("tick with a button down", pressed);
  loop.pointer.state.buttonPressed = false;

  if (gbench) {
    benchmark::RegisterBenchmark("HoverController/tickAtRest", [&loop](benchmark::State& state) {
      for (auto _ : state) {
        loop.clock.now += vesko::HoverController::kTickInterval;
        loop.controller.tick();
      }
    });
    benchmark::RunSpecifiedBenchmarks();
  }
  std::error_code ignored;
  std::filesystem::remove_all(folder, ignored);
  return 0;
}
