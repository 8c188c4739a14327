// Captures from a private Xvfb server, started for this program and stopped by its process id;
// skipped where Xvfb is not installed.
#include "platform/linux/x11/xshm_capture.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <string>
#include <thread>

#include "platform/linux/x11/x11_screens.h"

// Last: Xlib defines None, Bool and Status as macros, which GoogleTest's own names would meet.
#include <X11/Xlib.h>

extern char** environ;

namespace vesko {
namespace {

class XServer {
 public:
  XServer() {
    if (access("/usr/bin/Xvfb", X_OK) != 0) return;
    // A display number of our own, so that parallel test programs never meet.
    name_ = ":" + std::to_string(300 + getpid() % 600);
    std::string program = "/usr/bin/Xvfb";
    std::string screen = "1024x768x24";
    const char* argv[] = {program.c_str(), name_.c_str(), "-screen", "0",    screen.c_str(),
                          "-nolisten",     "tcp",         "-br",     nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    if (posix_spawn(&pid_, program.c_str(), &actions, nullptr, const_cast<char**>(argv), environ) !=
        0)
      pid_ = 0;
    posix_spawn_file_actions_destroy(&actions);
    for (int i = 0; pid_ != 0 && i < 100; ++i) {
      if (Display* d = XOpenDisplay(name_.c_str())) {
        display_ = d;
        return;
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
  }
  ~XServer() {
    if (display_ != nullptr) XCloseDisplay(display_);
    if (pid_ != 0) {
      kill(pid_, SIGTERM);
      waitpid(pid_, nullptr, 0);
    }
  }
  Display* display() const { return display_; }
  const std::string& name() const { return name_; }

 private:
  pid_t pid_ = 0;
  std::string name_;
  Display* display_ = nullptr;
};

XServer& server() {
  static XServer shared;
  return shared;
}

// Paints a rectangle of `rgb` on the root window, as an application's pixels would be.
void paint(unsigned long rgb, int x, int y, int width, int height) {
  Display* d = server().display();
  GC gc = XCreateGC(d, DefaultRootWindow(d), 0, nullptr);
  XSetForeground(d, gc, rgb);
  XFillRectangle(d, DefaultRootWindow(d), gc, x, y, static_cast<unsigned>(width),
                 static_cast<unsigned>(height));
  XFreeGC(d, gc);
  XSync(d, False);
}

std::array<int, 3> pixelAt(const ScreenImage& image, int x, int y) {
  const std::size_t at = (static_cast<std::size_t>(y) * image.width + x) * 3;
  return {image.pixels[at], image.pixels[at + 1], image.pixels[at + 2]};
}

TEST(XShmCaptureTest, CapturesWhatTheScreenShows) {
  if (server().display() == nullptr) GTEST_SKIP() << "no Xvfb";
  paint(0xFF8000, 100, 50, 40, 20);  // orange
  for (const bool shared : {true, false}) {
    SCOPED_TRACE(shared ? "shared memory" : "XGetImage");
    auto capture = XShmCapture::open(server().name(), shared);
    ASSERT_TRUE(capture) << capture.error();
    EXPECT_EQ((*capture)->sharedMemory(), shared);
    // Twice: the second capture reuses the segment.
    for (int round = 0; round < 2; ++round) {
      const auto image = (*capture)->capture({90, 40, 900, 130});
      ASSERT_TRUE(image) << image.error();
      ASSERT_TRUE(image->valid());
      EXPECT_EQ(image->width, 900);
      EXPECT_EQ(image->height, 130);
      EXPECT_EQ(image->scale, 1);
      EXPECT_EQ(pixelAt(*image, 15, 15), (std::array{255, 128, 0}));
      EXPECT_EQ(pixelAt(*image, 49, 29), (std::array{255, 128, 0}));
      EXPECT_EQ(pixelAt(*image, 5, 5), (std::array{0, 0, 0}));
      EXPECT_EQ(pixelAt(*image, 50, 30), (std::array{0, 0, 0}));
    }
  }
}

TEST(XShmCaptureTest, CutsAtTheScreenEdgeAndRefusesOutside) {
  if (server().display() == nullptr) GTEST_SKIP() << "no Xvfb";
  auto capture = XShmCapture::open(server().name());
  ASSERT_TRUE(capture) << capture.error();
  const auto cut = (*capture)->capture({1000, 700, 900, 130});
  ASSERT_TRUE(cut) << cut.error();
  EXPECT_EQ(cut->width, 24);
  EXPECT_EQ(cut->height, 68);
  // A smaller strip after a larger one, and a larger one again, through the same segment.
  ASSERT_TRUE((*capture)->capture({0, 0, 1024, 768}));
  EXPECT_FALSE((*capture)->capture({2000, 10, 900, 130}));
}

TEST(X11ScreensTest, DisplayUnderThePoint) {
  if (server().display() == nullptr) GTEST_SKIP() << "no Xvfb";
  auto screens = X11Screens::open(server().name());
  ASSERT_TRUE(screens) << screens.error();
  EXPECT_EQ(screens.value()->displayAt({10, 10}), (ScreenRect{0, 0, 1024, 768}));
  EXPECT_EQ(screens.value()->displayAt({1023, 767}), (ScreenRect{0, 0, 1024, 768}));
  EXPECT_FALSE(screens.value()->displayAt({1024, 10}));
  EXPECT_FALSE(screens.value()->displayAt({-1, 10}));
}

TEST(XShmCaptureTest, NoDisplayIsAnError) {
  EXPECT_FALSE(XShmCapture::open(":9999"));
  EXPECT_FALSE(X11Screens::open(":9999"));
}

}  // namespace
}  // namespace vesko
