#pragma once
// The pointer on X11: position, mouse buttons and modifier keys from one XQueryPointer on a
// Display connection of its own. Created once by the desktop shell; `sample` on one thread at a
// time (the main thread's hover timer).

#include <expected>
#include <memory>
#include <string>

#include "app/pointer.h"

namespace vesko {

class X11Pointer final : public PointerSource {
 public:
  // An error sentence (French, for the log) when no X display can be opened.
  static std::expected<std::unique_ptr<X11Pointer>, std::string> open(
      const std::string& displayName = {});
  ~X11Pointer() override;
  X11Pointer(const X11Pointer&) = delete;
  X11Pointer& operator=(const X11Pointer&) = delete;

  PointerState sample() override;

 private:
  struct Connection;
  explicit X11Pointer(std::unique_ptr<Connection> connection);
  std::unique_ptr<Connection> connection_;
};

// The ModifierKey bits of an X11 key-and-button mask (ShiftMask, ControlMask, Mod1Mask, Mod4Mask),
// and whether it holds any mouse button. Pure; for the pointer and its tests.
std::uint8_t modifiersOfMask(unsigned int mask);
bool buttonInMask(unsigned int mask);

}  // namespace vesko
