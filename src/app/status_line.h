#pragma once
// What the status item says: the on/off line with this platform's name for the shortcut, and the
// problems that stop the hover from working, each with what the learner can do about it. French
// texts that the caller translates with Loc::t (statusLine translates itself). Pure; any thread.

#include <string>
#include <string_view>

#include "settings/environment.h"
#include "settings/loc.h"

namespace vesko {

// statusText(on) in the interface language, with the texts' "⌥X" (the Mac's name) replaced by
// `shortcut` ("Alt+X"). The tables keep "⌥X" so every platform shares one row.
std::string statusLine(const Loc& loc, bool on, std::string_view shortcut);

enum class DesktopProblem {
  noAccessibilityBus,  // AT-SPI cannot be reached: no application's text can be read
  waylandSession,      // the pointer and the screen are out of reach of an X11 client
  shortcutTaken,       // another program holds Alt+X
};

struct ProblemText {
  std::string_view problem;  // French, for Loc::t
  std::string_view remedy;   // French, for Loc::t
};
ProblemText problemText(DesktopProblem problem);

// Whether the session is Wayland's (WAYLAND_DISPLAY set, or XDG_SESSION_TYPE "wayland"), where
// an X11 client sees neither the pointer over other programs nor their pixels.
bool waylandSession(const Environment& environment);

}  // namespace vesko
