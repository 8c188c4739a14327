#pragma once
// The few calls Vesko makes on the session bus: switching applications' accessibility on (Qt,
// Chromium and Electron build their accessibility trees only when `org.a11y.Status.IsEnabled` is
// true), reading that switch, and asking whether a service is running. Blocking, 1 s at most
// each; any thread.

#include <expected>
#include <string>
#include <string_view>

namespace vesko::atspi {

// Sets `org.a11y.Status.IsEnabled` to true on the accessibility bus launcher, so that
// applications started from now on expose their text. The error says why in a plain sentence.
std::expected<void, std::string> openApplicationsToAccessibility();
// The switch's current value.
std::expected<bool, std::string> applicationsOpenToAccessibility();
// Whether some process owns `name` on the session bus ("org.a11y.Bus", "org.freedesktop.secrets").
std::expected<bool, std::string> sessionNameHasOwner(std::string_view name);

}  // namespace vesko::atspi
