// The desktop shell's X11 pieces and the app itself on a real (headless) X server: the pointer
// as XQueryPointer reports it, Alt+X grabbed with and without NumLock, a second grab refused
// with an error rather than a crash, the active window's class as the application in front, and
// vesko-desktop writing its trace (ready, toggle, bubble) and obeying --quit. Runs on the
// desktop of the e2e_desktop fixture.

#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <X11/Xlib.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "platform/linux/x11/x11_frontmost.h"
#include "platform/linux/x11/x11_hotkey.h"
#include "platform/linux/x11/x11_pointer.h"
#include "settings/resources.h"
#include "support/run_command.h"
#include "support/temp_dir.h"

extern char** environ;

namespace {

using nlohmann::json;
using std::chrono::steady_clock;

bool enterDesktop() {
  std::ifstream env(std::string(VESKO_E2E_RUN) + "/env");
  if (!env) return false;
  std::string line;
  while (std::getline(env, line)) {
    const auto equals = line.find('=');
    if (equals != std::string::npos)
      setenv(line.substr(0, equals).c_str(), line.substr(equals + 1).c_str(), 1);
  }
  return true;
}

void xdotool(const std::string& arguments) {
  vesko::testing::runCommand("xdotool " + arguments);
}

// NumLock's modifier (Mod2 on the server's default keymap) as the server holds it.
bool numLockOn() {
  Display* display = XOpenDisplay(nullptr);
  if (display == nullptr) return false;
  Window root = 0, child = 0;
  int rootX = 0, rootY = 0, x = 0, y = 0;
  unsigned int mask = 0;
  XQueryPointer(display, DefaultRootWindow(display), &root, &child, &rootX, &rootY, &x, &y, &mask);
  XCloseDisplay(display);
  return (mask & Mod2Mask) != 0;
}

// Alt+X presses the hotkey has seen, waiting up to 5 s for `expected` of them.
int pressesSeen(vesko::X11Hotkey& hotkey, int expected) {
  int seen = 0;
  const auto deadline = steady_clock::now() + std::chrono::seconds(5);
  while (seen < expected && steady_clock::now() < deadline) {
    pollfd wait{hotkey.fd(), POLLIN, 0};
    poll(&wait, 1, 100);
    seen += hotkey.takePresses();
  }
  // Anything more that was already on its way.
  pollfd wait{hotkey.fd(), POLLIN, 0};
  if (poll(&wait, 1, 200) > 0) seen += hotkey.takePresses();
  return seen;
}

class X11PiecesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(enterDesktop()) << "no headless desktop: run through ctest (fixture e2e_desktop)";
  }
};

TEST_F(X11PiecesTest, PointerReportsPositionButtonsAndModifiers) {
  auto pointer = vesko::X11Pointer::open();
  ASSERT_TRUE(pointer) << pointer.error();
  struct Row {
    int x, y;
  };
  for (const Row row : {Row{321, 234}, Row{0, 0}, Row{1279, 799}}) {
    SCOPED_TRACE(std::to_string(row.x) + "," + std::to_string(row.y));
    xdotool("mousemove " + std::to_string(row.x) + " " + std::to_string(row.y));
    const vesko::PointerState state = (*pointer)->sample();
    EXPECT_EQ(state.position.x, row.x);
    EXPECT_EQ(state.position.y, row.y);
    EXPECT_FALSE(state.buttonPressed);
    EXPECT_EQ(state.modifiers, 0);
  }
  xdotool("keydown shift keydown ctrl");
  EXPECT_EQ((*pointer)->sample().modifiers, vesko::kShift | vesko::kControl);
  xdotool("keyup shift keyup ctrl");
  EXPECT_EQ((*pointer)->sample().modifiers, 0);
}

TEST_F(X11PiecesTest, HotkeyCountsAltXAlsoWithNumLock) {
  auto hotkey = vesko::X11Hotkey::open();
  ASSERT_TRUE(hotkey) << hotkey.error().message;
  ASSERT_FALSE(numLockOn());
  xdotool("key alt+x");
  EXPECT_EQ(pressesSeen(**hotkey, 1), 1);
  // X alone, and Alt with another key, are not the shortcut: of these, only the last counts.
  xdotool("key x key alt+y key alt+x");
  EXPECT_EQ(pressesSeen(**hotkey, 1), 1);

  xdotool("key Num_Lock");
  ASSERT_TRUE(numLockOn());
  xdotool("key alt+x");
  xdotool("key alt+x");
  EXPECT_EQ(pressesSeen(**hotkey, 2), 2);
  xdotool("key Num_Lock");
  EXPECT_FALSE(numLockOn());
}

TEST_F(X11PiecesTest, SecondGrabIsAnErrorNotACrash) {
  auto first = vesko::X11Hotkey::open();
  ASSERT_TRUE(first) << first.error().message;
  auto second = vesko::X11Hotkey::open();
  ASSERT_FALSE(second);
  EXPECT_EQ(second.error().kind, vesko::HotkeyError::Kind::taken) << second.error().message;
  // The first grab still works.
  xdotool("key alt+x");
  EXPECT_EQ(pressesSeen(**first, 1), 1);
}

TEST_F(X11PiecesTest, NoDisplayIsAnError) {
  EXPECT_FALSE(vesko::X11Pointer::open(":4711"));
  const auto hotkey = vesko::X11Hotkey::open(":4711");
  ASSERT_FALSE(hotkey);
  EXPECT_EQ(hotkey.error().kind, vesko::HotkeyError::Kind::noDisplay);
}

// vesko-desktop started into a home of its own, stopped by its process id.
class DesktopApp {
 public:
  DesktopApp(const std::filesystem::path& home, const std::filesystem::path& trace,
             const std::vector<std::string>& options = {}) {
    setenv("VESKO_HOME", home.c_str(), 1);
    setenv("VESKO_TRACE", trace.c_str(), 1);
    std::vector<std::string> args{VESKO_DESKTOP};
    args.insert(args.end(), options.begin(), options.end());
    std::vector<char*> argv;
    for (auto& arg : args) argv.push_back(arg.data());
    argv.push_back(nullptr);
    if (posix_spawn(&pid_, VESKO_DESKTOP, nullptr, nullptr, argv.data(), environ) != 0) pid_ = -1;
  }
  ~DesktopApp() {
    if (pid_ <= 0) return;
    kill(pid_, SIGTERM);
    waitpid(pid_, nullptr, 0);
  }
  DesktopApp(const DesktopApp&) = delete;
  DesktopApp& operator=(const DesktopApp&) = delete;

  // The exit code once it ended by itself, within 10 s; -1 otherwise.
  int waitForExit() {
    const auto deadline = steady_clock::now() + std::chrono::seconds(10);
    while (steady_clock::now() < deadline) {
      int status = 0;
      if (waitpid(pid_, &status, WNOHANG) == pid_) {
        pid_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return -1;
  }
  pid_t pid() const { return pid_; }

 private:
  pid_t pid_ = -1;
};

// The trace's lines, waiting up to `seconds` for one that `wanted` accepts.
std::optional<json> waitForLine(const std::filesystem::path& trace,
                                const std::function<bool(const json&)>& wanted, int seconds = 20) {
  const auto deadline = steady_clock::now() + std::chrono::seconds(seconds);
  while (steady_clock::now() < deadline) {
    std::ifstream in(trace);
    std::string line;
    while (std::getline(in, line)) {
      json parsed = json::parse(line, nullptr, false);
      if (!parsed.is_discarded() && wanted(parsed)) return parsed;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  return std::nullopt;
}

std::function<bool(const json&)> event(const std::string& name) {
  return [name](const json& line) { return line.value("event", "") == name; };
}

int runDesktop(const std::string& option) {
  return vesko::testing::runCommand(std::string(VESKO_DESKTOP) + " " + option).status;
}

struct Box {
  int x = 0, y = 0, width = 0, height = 0;
};

// The GTK test window showing its lines, with the box of `piece`'s first character; stopped by
// its process id.
struct GtkWindow {
  explicit GtkWindow(std::string piece) {
    int out[2];
    if (pipe(out) != 0) return;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, out[0]);
    std::string program = VESKO_E2E_GTK_WINDOW;
    char* argv[] = {program.data(), piece.data(), nullptr};
    if (posix_spawn(&pid, program.c_str(), &actions, nullptr, argv, environ) != 0) pid = -1;
    posix_spawn_file_actions_destroy(&actions);
    close(out[1]);
    std::string printed;
    const auto deadline = steady_clock::now() + std::chrono::seconds(20);
    while (pid > 0 && printed.find("READY") == std::string::npos && steady_clock::now() < deadline) {
      pollfd wait{out[0], POLLIN, 0};
      if (poll(&wait, 1, 200) <= 0) continue;
      char buffer[256];
      const ssize_t n = read(out[0], buffer, sizeof buffer);
      if (n <= 0) break;
      printed.append(buffer, static_cast<std::size_t>(n));
    }
    close(out[0]);
    std::istringstream lines(printed);
    std::string tag;
    int index = 0;
    Box found;
    while (lines >> tag)
      if (tag == "AT" && lines >> index >> found.x >> found.y >> found.width >> found.height)
        box = found;
  }
  ~GtkWindow() {
    if (pid <= 0) return;
    kill(pid, SIGTERM);
    waitpid(pid, nullptr, 0);
  }
  GtkWindow(const GtkWindow&) = delete;
  GtkWindow& operator=(const GtkWindow&) = delete;

  pid_t pid = -1;
  std::optional<Box> box;
};

class DesktopAppTest : public X11PiecesTest {
 protected:
  vesko::testing::TempDir home_;
  std::filesystem::path trace_ = home_.path() / "trace.jsonl";
};

TEST_F(DesktopAppTest, StartsTogglesWithAltXAndQuitsOnRequest) {
  DesktopApp app(home_.path(), trace_);
  ASSERT_GT(app.pid(), 0);
  const auto ready = waitForLine(trace_, event("ready"));
  ASSERT_TRUE(ready) << "no ready line";
  EXPECT_GE(ready->at("ms").get<long long>(), 0);

  xdotool("key alt+x");
  EXPECT_TRUE(waitForLine(trace_, [](const json& line) {
    return line.value("event", "") == "toggle" && line.value("on", true) == false;
  })) << "Alt+X did not switch the hover off";
  xdotool("key alt+x");
  EXPECT_TRUE(waitForLine(trace_, [](const json& line) {
    return line.value("event", "") == "toggle" && line.value("on", false) == true;
  })) << "Alt+X did not switch the hover on again";

  // A second start hands its request over and ends at once; --quit ends the first.
  EXPECT_EQ(runDesktop("--review"), 0);
  EXPECT_EQ(runDesktop("--quit"), 0);
  EXPECT_EQ(app.waitForExit(), 0);
}

TEST_F(DesktopAppTest, ShowsTheBubbleOverAWord) {
  if (vesko::Resources::find("cedict", "txt").empty()) {
    if (std::getenv("VESKO_REQUIRE_DATA")) FAIL() << "the fetched dictionary is missing";
    GTEST_SKIP() << "run scripts/bootstrap setup for the dictionaries";
  }
  GtkWindow window("学习");
  ASSERT_TRUE(window.box) << "the test window did not show its line";
  DesktopApp app(home_.path(), trace_);
  ASSERT_TRUE(waitForLine(trace_, event("loaded"), 60)) << "the dictionary did not load";
  const Box box = *window.box;
  xdotool("mousemove " + std::to_string(box.x + box.width / 2) + " " +
          std::to_string(box.y + box.height / 2));
  const auto bubble = waitForLine(trace_, event("bubble"));
  ASSERT_TRUE(bubble) << "no bubble line";
  EXPECT_EQ(bubble->at("word"), "学习");
  EXPECT_EQ(bubble->at("lang"), "zh");
  EXPECT_EQ(bubble->at("source"), "accessibility");
  EXPECT_GE(bubble->at("ms").get<long long>(), 0);
}

TEST_F(X11PiecesTest, FrontmostIsTheActiveWindowsClass) {
  auto frontmost = vesko::X11Frontmost::open();
  ASSERT_TRUE(frontmost) << frontmost.error();
  GtkWindow window("学习");
  ASSERT_TRUE(window.box) << "the test window did not show its line";
  xdotool("windowactivate --sync $(xdotool search --pid " + std::to_string(window.pid) +
          " | tail -1)");
  // What xprop says of the active window: WM_CLASS(STRING) = "instance", "Class".
  const std::string wmClass = vesko::testing::runCommand(
      "xprop -id $(xdotool getactivewindow) WM_CLASS").out;
  const auto identifier = (*frontmost)->identifier();
  ASSERT_TRUE(identifier);
  EXPECT_FALSE(identifier->empty());
  EXPECT_NE(wmClass.find("\"" + *identifier + "\""), std::string::npos)
      << *identifier << " not in " << wmClass;
}

}  // namespace
