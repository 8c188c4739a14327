#pragma once
// SIGTERM and SIGINT turned into something the main loop sees, so that a program holding a word
// store writes its pending save before it goes (a logout sends SIGTERM; Ctrl-C sends SIGINT).
// Created once in main, before the store; one instance per process (a second is refused).
//
// The handler only does what is safe in a signal handler: it records the signal number in a
// `volatile sig_atomic_t` and writes one byte to a non-blocking self-pipe. The main loop either
// polls caught() (the command line, after its command) or watches wakeFd() (the desktop app: a
// QSocketNotifier on it), then flushes the store and calls exitAsCaught(), which ends the
// process the way the signal would have, so the parent sees the same status.

#include <optional>

namespace vesko {

class ExitSignals {
 public:
  // Installs the handlers; when another instance already exists, installs nothing (installed()
  // is false).
  ExitSignals();
  // Puts back the handlers that were there before.
  ~ExitSignals();
  ExitSignals(const ExitSignals&) = delete;
  ExitSignals& operator=(const ExitSignals&) = delete;

  bool installed() const { return installed_; }
  // The read end of the self-pipe: readable once a signal has come. -1 when not installed.
  int wakeFd() const;
  // The first signal that came, if any.
  std::optional<int> caught() const;
  // Restores the signal's default action and raises it again; returns only when no signal came.
  void exitAsCaught();

 private:
  bool installed_ = false;
};

}  // namespace vesko
