#pragma once
// The terminal that the review sitting talks to: whether standard input and output are one, and
// key-at-a-time input (no line editing, no echo) for as long as the object lives. Plain termios,
// so it works over SSH and inside tmux. Main thread only.

#include <termios.h>

namespace vesko::cli {

class KeyAtATime {
 public:
  // Switches standard input to single keys when it is a terminal; does nothing otherwise.
  KeyAtATime();
  // Puts the terminal back as it was.
  ~KeyAtATime();
  KeyAtATime(const KeyAtATime&) = delete;
  KeyAtATime& operator=(const KeyAtATime&) = delete;

  bool active() const { return active_; }

 private:
  bool active_ = false;
  termios saved_{};
};

// Standard output is a terminal that shows ANSI emphasis (not "dumb", NO_COLOR unset).
bool outputTakesColour();

}  // namespace vesko::cli
