#pragma once
// What the hover tells the learner besides the bubble, as toasts: a word in a language they do
// not read this way ("thaï n'est pas dans « Tes langues » : Réglages → Langues"), at most once
// per language every few seconds so that a pointer resting on Thai text does not stack them.
// "Nothing to read" shows nothing. Created by the shell; main thread only.

#include <array>
#include <optional>

#include "app/hover_notices.h"
#include "app/steady_clock.h"
#include "desktop/toasts.h"
#include "settings/loc.h"

namespace vesko::desktop {

class ToastNotices final : public HoverNotices {
 public:
  static constexpr double kRepeatAfter = 8.0;  // seconds between two notices for one language

  ToastNotices(Toasts& toasts, const Loc& loc, const SteadyClock& clock)
      : toasts_(toasts), loc_(loc), clock_(clock) {}

  void nothingToRead(const Snapshot&) override {}
  void languageSkipped(Language language, bool readWithKey) override;

 private:
  Toasts& toasts_;
  const Loc& loc_;
  const SteadyClock& clock_;
  // By Language value (zh … pl).
  std::array<std::optional<double>, 7> lastShown_{};
};

}  // namespace vesko::desktop
