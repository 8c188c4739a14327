#pragma once
// The global Alt+X shortcut on X11: a passive grab of the key on the root window, on a Display
// connection of its own, also with NumLock and CapsLock down (a grab names the exact modifiers,
// so without those it would miss the key while NumLock is on). The owner watches fd() (a
// QSocketNotifier) and calls takePresses() when it is readable. One thread at a time.

#include <expected>
#include <memory>
#include <string>

namespace vesko {

struct HotkeyError {
  enum class Kind { noDisplay, taken, failed };
  Kind kind;
  std::string message;  // French, for the diagnostic log
};

class X11Hotkey {
 public:
  // Grabs Alt+X. An error when there is no display, or when another program already holds Alt+X
  // (the server's BadAccess): never a crash.
  static std::expected<std::unique_ptr<X11Hotkey>, HotkeyError> open(
      const std::string& displayName = {});
  ~X11Hotkey();
  X11Hotkey(const X11Hotkey&) = delete;
  X11Hotkey& operator=(const X11Hotkey&) = delete;

  // The connection's socket: readable when events may be waiting.
  int fd() const;
  // Reads every event waiting and returns how many Alt+X presses came. A key held down counts
  // once, however often it repeats.
  int takePresses();

 private:
  struct Connection;
  explicit X11Hotkey(std::unique_ptr<Connection> connection);
  std::unique_ptr<Connection> connection_;
};

}  // namespace vesko
