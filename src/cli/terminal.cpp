#include "cli/terminal.h"

#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace vesko::cli {

KeyAtATime::KeyAtATime() {
  if (!::isatty(STDIN_FILENO) || ::tcgetattr(STDIN_FILENO, &saved_) != 0) return;
  termios keys = saved_;
  // ISIG off as well: Ctrl-C then arrives as a key that ends the sitting like `q`, and the
  // terminal is put back before the program goes.
  keys.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO | ISIG);
  keys.c_cc[VMIN] = 1;
  keys.c_cc[VTIME] = 0;
  active_ = ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &keys) == 0;
}

KeyAtATime::~KeyAtATime() {
  if (active_) ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &saved_);
}

bool outputTakesColour() {
  if (!::isatty(STDOUT_FILENO) || std::getenv("NO_COLOR")) return false;
  const char* term = std::getenv("TERM");
  return term && std::string_view(term) != "dumb";
}

}  // namespace vesko::cli
