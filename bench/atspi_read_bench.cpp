// What one accessibility read costs on a live desktop: AtspiReader::read at the characters of our
// GTK and Qt test windows (the hit test, the X cross-check, the offset, the box, the line), each
// call timed alone. Run it on the headless desktop:
//   scripts/headless-desktop start RUN && set -a && . RUN/env && set +a && bench_atspi_read
// Without a display or an accessibility bus it says so and exits 0.
// Target: median <= 5 ms.

#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "app/last_character_rect.h"
#include "platform/linux/atspi/atspi_reader.h"
#include "platform/linux/atspi/session_bus.h"
#include "platform/linux/atspi/x_desktop.h"

extern char** environ;

namespace {

constexpr int kRounds = 100;
const char* const kPieces[] = {"学习", "食べて", "allés", "กิน", "pociąg", "столе"};

// A test window, its character boxes' centres, stopped by its process id.
struct Window {
  pid_t pid = -1;
  std::vector<vesko::ScreenPoint> points;
  ~Window() {
    if (pid > 0) {
      kill(pid, SIGTERM);
      waitpid(pid, nullptr, 0);
    }
  }
};

void start(const char* program, Window& window) {
  int out[2];
  if (pipe(out) != 0) return;
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
  posix_spawn_file_actions_addclose(&actions, out[0]);
  std::vector<char*> argv{const_cast<char*>(program)};
  for (const char* piece : kPieces) argv.push_back(const_cast<char*>(piece));
  argv.push_back(nullptr);
  if (posix_spawn(&window.pid, program, &actions, nullptr, argv.data(), environ) != 0)
    window.pid = -1;
  posix_spawn_file_actions_destroy(&actions);
  close(out[1]);
  std::string pending;
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  bool ready = false;
  while (!ready && std::chrono::steady_clock::now() < deadline) {
    pollfd wait{out[0], POLLIN, 0};
    if (poll(&wait, 1, 200) <= 0) continue;
    char buffer[512];
    const ssize_t n = read(out[0], buffer, sizeof buffer);
    if (n <= 0) break;
    pending.append(buffer, static_cast<std::size_t>(n));
    std::size_t end;
    while ((end = pending.find('\n')) != std::string::npos) {
      std::istringstream line(pending.substr(0, end));
      pending.erase(0, end + 1);
      std::string tag;
      int piece = 0, x = 0, y = 0, w = 0, h = 0;
      line >> tag;
      if (tag == "READY") ready = true;
      if (tag == "AT" && line >> piece >> x >> y >> w >> h)
        window.points.push_back({x + w / 2.0, y + h / 2.0});
    }
  }
  close(out[0]);
}

double percentile(std::vector<double> values, double p) {
  std::sort(values.begin(), values.end());
  return values[static_cast<std::size_t>(p * static_cast<double>(values.size() - 1))];
}

void measure(const char* toolkit, const char* program) {
  Window window;
  start(program, window);
  if (window.points.empty()) {
    std::printf("%s: the test window did not start\n", toolkit);
    return;
  }
  vesko::LastCharacterRect last;
  vesko::atspi::AtspiReader reader(last, {});
  std::vector<double> times;
  int found = 0;
  // Wait until the application answers, as a learner's pointer would find it after start-up.
  for (int tries = 0; tries < 50 && !reader.read(window.points.front()); ++tries) usleep(100'000);
  for (int round = 0; round < kRounds; ++round)
    for (const auto& point : window.points) {
      const auto begin = std::chrono::steady_clock::now();
      const bool ok = reader.read(point).has_value();
      times.push_back(
          std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin)
              .count());
      found += ok;
    }
  std::printf("%s read median: %.2f ms\n", toolkit, percentile(times, 0.5));
  std::printf("%s read p90: %.2f ms\n", toolkit, percentile(times, 0.9));
  std::printf("%s read max: %.2f ms\n", toolkit, percentile(times, 1.0));
  std::printf("%s reads with text: %d of %zu\n", toolkit, found, times.size());
}

}  // namespace

int main() {
  if (!std::getenv("DISPLAY") || !vesko::atspi::XDesktop::open()) {
    std::printf("skipped: no X display (start scripts/headless-desktop and load its env)\n");
    return 0;
  }
  auto bus = vesko::atspi::sessionNameHasOwner("org.a11y.Bus");
  if (!bus || !*bus) {
    std::printf("skipped: no accessibility bus\n");
    return 0;
  }
  setenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1", 0);
  measure("GTK", VESKO_BENCH_GTK_WINDOW);
  measure("Qt", VESKO_BENCH_QT_WINDOW);
  return 0;
}
