#pragma once
// What the end-to-end tests share: entering the headless desktop that the e2e_desktop fixture
// starts, knowing whether the fetched dictionaries are there, moving the pointer, and a test
// window of our own that says where its pieces of text are on screen.

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "settings/resources.h"
#include "support/run_command.h"

extern char** environ;

namespace vesko::e2e {

struct Box {
  int x = 0, y = 0, width = 0, height = 0;
  int centerX() const { return x + width / 2; }
  int centerY() const { return y + height / 2; }
};

// The desktop's variables, exported into this process so that every child sees them.
inline bool enterDesktop(const std::string& run) {
  std::ifstream env(run + "/env");
  if (!env) return false;
  std::string line;
  while (std::getline(env, line)) {
    const auto equals = line.find('=');
    if (equals != std::string::npos)
      setenv(line.substr(0, equals).c_str(), line.substr(equals + 1).c_str(), 1);
  }
  return true;
}

inline bool haveAllData() {
  const auto folder = vesko::Resources::folder();
  for (const char* part : {"cedict.txt", "ja", "fr", "pl", "ru", "lang/lid.176.ftz"})
    if (!std::filesystem::exists(folder / part)) return false;
  return true;
}

inline void movePointer(int x, int y) {
  vesko::testing::runCommand("xdotool mousemove " + std::to_string(x) + " " + std::to_string(y));
}

// A test window, started with the pieces of text to locate and stopped by its process id.
class TestWindow {
 public:
  TestWindow(const std::string& program, const std::vector<std::string>& pieces) {
    int out[2];
    if (pipe(out) != 0) return;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, out[0]);
    std::vector<std::string> args{program};
    args.insert(args.end(), pieces.begin(), pieces.end());
    std::vector<char*> argv;
    for (auto& arg : args) argv.push_back(arg.data());
    argv.push_back(nullptr);
    if (posix_spawn(&pid_, program.c_str(), &actions, nullptr, argv.data(), environ) != 0)
      pid_ = -1;
    posix_spawn_file_actions_destroy(&actions);
    close(out[1]);
    readBoxes(out[0]);
    close(out[0]);
  }
  ~TestWindow() {
    if (pid_ <= 0) return;
    kill(pid_, SIGTERM);
    waitpid(pid_, nullptr, 0);
  }
  TestWindow(const TestWindow&) = delete;
  TestWindow& operator=(const TestWindow&) = delete;

  bool ready() const { return ready_; }
  pid_t pid() const { return pid_; }
  const std::map<int, Box>& boxes() const { return boxes_; }

 private:
  // Its "AT n x y w h" lines until "READY", for 20 s at most.
  void readBoxes(int fd) {
    std::string pending;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!ready_ && std::chrono::steady_clock::now() < deadline) {
      pollfd wait{fd, POLLIN, 0};
      if (poll(&wait, 1, 200) <= 0) continue;
      char buffer[512];
      const ssize_t n = read(fd, buffer, sizeof buffer);
      if (n <= 0) break;
      pending.append(buffer, static_cast<std::size_t>(n));
      std::size_t end;
      while ((end = pending.find('\n')) != std::string::npos) {
        std::istringstream line(pending.substr(0, end));
        pending.erase(0, end + 1);
        std::string tag;
        line >> tag;
        if (tag == "READY") ready_ = true;
        int piece = 0;
        Box box;
        if (tag == "AT" && line >> piece >> box.x >> box.y >> box.width >> box.height)
          boxes_[piece] = box;
      }
    }
  }

  pid_t pid_ = -1;
  bool ready_ = false;
  std::map<int, Box> boxes_;
};

}  // namespace vesko::e2e
