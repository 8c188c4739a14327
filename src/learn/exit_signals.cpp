#include "learn/exit_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>

namespace vesko {
namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT};

// What the handler may touch: plain values written before the handlers are installed.
volatile std::sig_atomic_t caughtSignal = 0;
int pipeRead = -1;
int pipeWrite = -1;
std::atomic<bool> taken{false};
struct sigaction previous[sizeof kSignals / sizeof kSignals[0]];

extern "C" void onExitSignal(int signal) {
  const int savedErrno = errno;
  if (caughtSignal == 0) caughtSignal = signal;
  const char byte = 1;
  // The pipe is non-blocking: when it is full, a wake-up is already pending.
  [[maybe_unused]] ssize_t ignored = ::write(pipeWrite, &byte, 1);
  errno = savedErrno;
}

}  // namespace

ExitSignals::ExitSignals() {
  if (taken.exchange(true)) return;
  int fds[2];
  if (::pipe2(fds, O_CLOEXEC | O_NONBLOCK) != 0) {
    taken = false;
    return;
  }
  pipeRead = fds[0];
  pipeWrite = fds[1];
  caughtSignal = 0;
  struct sigaction action {};
  action.sa_handler = onExitSignal;
  sigemptyset(&action.sa_mask);
  // Interrupted system calls are restarted: the main loop learns of the signal through the pipe
  // or caught(), not through EINTR in some unrelated read.
  action.sa_flags = SA_RESTART;
  for (std::size_t i = 0; i < std::size(kSignals); ++i)
    ::sigaction(kSignals[i], &action, &previous[i]);
  installed_ = true;
}

ExitSignals::~ExitSignals() {
  if (!installed_) return;
  for (std::size_t i = 0; i < std::size(kSignals); ++i)
    ::sigaction(kSignals[i], &previous[i], nullptr);
  ::close(pipeRead);
  ::close(pipeWrite);
  pipeRead = pipeWrite = -1;
  taken = false;
}

int ExitSignals::wakeFd() const {
  return installed_ ? pipeRead : -1;
}

std::optional<int> ExitSignals::caught() const {
  if (!installed_ || caughtSignal == 0) return std::nullopt;
  return static_cast<int>(caughtSignal);
}

void ExitSignals::exitAsCaught() {
  auto signal = caught();
  if (!signal) return;
  std::signal(*signal, SIG_DFL);
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, *signal);
  ::sigprocmask(SIG_UNBLOCK, &set, nullptr);
  std::raise(*signal);
  _exit(128 + *signal);  // not reached: the default action of both signals ends the process
}

}  // namespace vesko
