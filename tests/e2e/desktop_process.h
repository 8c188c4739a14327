#pragma once
// The desktop app as the end-to-end tests and the desktop benchmark run it: `vesko-desktop`
// started on the headless desktop with a home and a trace file of its own, and the trace read
// back line by line. Stopped with `--quit` (which writes its pending save), then by its process
// id if it does not go. One thread.

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "support/run_command.h"

extern char** environ;

namespace vesko::e2e {

// The trace the app writes with VESKO_TRACE: one JSON object a line.
class TraceFile {
 public:
  explicit TraceFile(std::filesystem::path file) : file_(std::move(file)) {}

  const std::filesystem::path& file() const { return file_; }

  // The first event after those already taken that `match` accepts, waiting up to `timeout`.
  // Events passed over on the way are kept in all().
  std::optional<nlohmann::json> next(const std::function<bool(const nlohmann::json&)>& match,
                                     std::chrono::milliseconds timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    for (;;) {
      readNew();
      while (taken_ < events_.size()) {
        const nlohmann::json& event = events_[taken_++];
        if (match(event)) return event;
      }
      if (std::chrono::steady_clock::now() >= deadline) return std::nullopt;
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
  }
  std::optional<nlohmann::json> next(const std::string& name, std::chrono::milliseconds timeout) {
    return next([&](const nlohmann::json& e) { return e.value("event", "") == name; }, timeout);
  }
  // Skips every event written so far.
  void skipAll() {
    readNew();
    taken_ = events_.size();
  }
  const std::vector<nlohmann::json>& all() {
    readNew();
    return events_;
  }

 private:
  void readNew() {
    std::ifstream in(file_, std::ios::binary);
    if (!in) return;
    in.seekg(static_cast<std::streamoff>(offset_));
    std::string line;
    while (std::getline(in, line)) {
      if (in.eof()) break;  // a line still being written
      offset_ += line.size() + 1;
      auto event = nlohmann::json::parse(line, nullptr, false);
      if (event.is_object()) events_.push_back(std::move(event));
    }
  }

  std::filesystem::path file_;
  std::size_t offset_ = 0;
  std::vector<nlohmann::json> events_;
  std::size_t taken_ = 0;
};

class DesktopProcess {
 public:
  // Starts `program` with VESKO_HOME=`home` and VESKO_TRACE=`home`/trace.jsonl, its standard
  // error going to `home`/desktop.log.
  DesktopProcess(std::string program, const std::filesystem::path& home,
                 std::vector<std::string> arguments = {})
      : program_(std::move(program)), home_(home), trace_(home / "trace.jsonl") {
    setenv("VESKO_HOME", home.c_str(), 1);
    setenv("VESKO_TRACE", trace_.file().c_str(), 1);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    const std::string log = (home / "desktop.log").string();
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, log.c_str(),
                                     O_WRONLY | O_CREAT | O_APPEND, 0644);
    std::vector<std::string> args{program_};
    args.insert(args.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (auto& arg : args) argv.push_back(arg.data());
    argv.push_back(nullptr);
    if (posix_spawn(&pid_, program_.c_str(), &actions, nullptr, argv.data(), environ) != 0)
      pid_ = -1;
    posix_spawn_file_actions_destroy(&actions);
  }
  ~DesktopProcess() { stop(); }
  DesktopProcess(const DesktopProcess&) = delete;
  DesktopProcess& operator=(const DesktopProcess&) = delete;

  pid_t pid() const { return pid_; }
  TraceFile& trace() { return trace_; }
  const std::filesystem::path& home() const { return home_; }

  // Runs the program again with `arguments` (a second instance); its exit code.
  int again(const std::string& arguments) const {
    return vesko::testing::runCommand(program_ + " " + arguments + " 2>>" +
                                      (home_ / "desktop.log").string())
        .status;
  }
  // Whether the process is still running.
  bool running() {
    if (pid_ <= 0) return false;
    if (waitpid(pid_, &status_, WNOHANG) == pid_) {
      pid_ = -1;
      return false;
    }
    return true;
  }
  // Asks the app to quit, and waits for it up to `wait`; then kills it. True when it quit alone.
  bool stop(std::chrono::milliseconds wait = std::chrono::seconds(5)) {
    if (!running()) return pid_ == -1;
    again("--quit");
    const auto deadline = std::chrono::steady_clock::now() + wait;
    while (std::chrono::steady_clock::now() < deadline) {
      if (!running()) return true;
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    kill(pid_, SIGKILL);
    waitpid(pid_, &status_, 0);
    pid_ = -1;
    return false;
  }
  // Resident memory now, in kilobytes (VmRSS); 0 when unknown.
  long residentKilobytes() const {
    std::ifstream status("/proc/" + std::to_string(pid_) + "/status");
    std::string key;
    long value = 0;
    while (status >> key) {
      if (key == "VmRSS:" && status >> value) return value;
      status.ignore(1 << 12, '\n');
    }
    return 0;
  }
  std::string log() const {
    std::ifstream in(home_ / "desktop.log");
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  }

 private:
  std::string program_;
  std::filesystem::path home_;
  TraceFile trace_;
  pid_t pid_ = -1;
  int status_ = 0;
};

}  // namespace vesko::e2e
