#pragma once
// The pointer as the hover timer samples it: where it is, whether a mouse button is down and which
// modifier keys are held, all from one platform query (XQueryPointer on X11), returned as one
// value. The source is owned by the desktop shell and called on the main thread only.

#include <cstdint>

#include "app/geometry.h"

namespace vesko {

// Modifier bits, whatever the platform calls them. Super stands for the Mac's Command key and Alt
// for its Option key (on X11: ShiftMask, ControlMask, Mod1Mask, Mod4Mask).
enum ModifierKey : std::uint8_t {
  kShift = 1 << 0,
  kControl = 1 << 1,
  kAlt = 1 << 2,
  kSuper = 1 << 3,
};

struct PointerState {
  ScreenPoint position;
  bool buttonPressed = false;  // any mouse button
  std::uint8_t modifiers = 0;  // ModifierKey bits
  friend bool operator==(const PointerState&, const PointerState&) = default;
};

class PointerSource {
 public:
  virtual ~PointerSource() = default;
  // Called at every tick of the hover timer: one query, no allocation.
  virtual PointerState sample() = 0;
};

// The trigger key of the `modifier` setting: 1 Control, 2 Shift, 3 Super (Command), any other
// value Alt (Option).
constexpr std::uint8_t triggerModifiers(long long setting) {
  switch (setting) {
    case 1:
      return kControl;
    case 2:
      return kShift;
    case 3:
      return kSuper;
    default:
      return kAlt;
  }
}

}  // namespace vesko
