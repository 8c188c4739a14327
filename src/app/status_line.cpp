#include "app/status_line.h"

#include "app/hover_notices.h"

namespace vesko {

std::string statusLine(const Loc& loc, bool on, std::string_view shortcut) {
  std::string line = loc.t(statusText(on));
  static constexpr std::string_view kMacShortcut = "⌥X";
  for (auto at = line.find(kMacShortcut); at != std::string::npos;
       at = line.find(kMacShortcut, at + shortcut.size()))
    line.replace(at, kMacShortcut.size(), shortcut);
  return line;
}

ProblemText problemText(DesktopProblem problem) {
  switch (problem) {
    case DesktopProblem::noAccessibilityBus:
      return {"Vesko ne joint pas le bus d'accessibilité : le texte des autres programmes reste illisible.",
              "Lance at-spi2-core, ou ouvre une session de bureau."};
    case DesktopProblem::waylandSession:
      return {"Session Wayland : Vesko ne voit ni le pointeur ni l'écran des autres programmes.",
              "Ouvre une session X11 (Xorg) pour lire au survol."};
    case DesktopProblem::shortcutTaken:
      return {"Alt+X est déjà pris par un autre programme.",
              "Libère Alt+X dans cet autre programme, puis relance Vesko."};
  }
  return {};
}

bool waylandSession(const Environment& environment) {
  if (environment("WAYLAND_DISPLAY")) return true;
  const auto type = environment("XDG_SESSION_TYPE");
  return type && *type == "wayland";
}

}  // namespace vesko
