// The desktop shell's X11 pieces on a real (headless) X server: the pointer as XQueryPointer
// reports it, Alt+X grabbed with and without NumLock, a second grab refused with an error rather
// than a crash, and the active window's class as the application in front. Runs on the desktop of
// the e2e_desktop fixture; the app itself is tested in desktop_app_e2e_test.cpp.

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

#include "e2e/e2e_desktop.h"
#include "platform/linux/x11/x11_frontmost.h"
#include "platform/linux/x11/x11_hotkey.h"
#include "platform/linux/x11/x11_pointer.h"
#include "support/run_command.h"
#include "support/temp_dir.h"

extern char** environ;

namespace {

using nlohmann::json;
using std::chrono::steady_clock;

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
    ASSERT_TRUE(vesko::e2e::enterDesktop(VESKO_E2E_RUN)) << "no headless desktop: run through ctest (fixture e2e_desktop)";
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
TEST_F(X11PiecesTest, FrontmostIsTheActiveWindowsClass) {
  auto frontmost = vesko::X11Frontmost::open();
  ASSERT_TRUE(frontmost) << frontmost.error();
  vesko::e2e::TestWindow window(VESKO_E2E_GTK_WINDOW, {"学习"});
  ASSERT_TRUE(window.ready()) << "the test window did not show its line";
  xdotool("windowactivate --sync $(xdotool search --pid " + std::to_string(window.pid()) +
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
