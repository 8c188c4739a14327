#pragma once
// What the hover controller tells the learner besides the bubble: that no language is on for this
// hover, or that the word under the pointer is in a language they do not read this way. The
// handler is the desktop shell's, called on the main thread. The texts are built here so that
// every shell words them alike.

#include <string>
#include <string_view>

#include "app/language.h"
#include "settings/loc.h"

namespace vesko {

class HoverNotices {
 public:
  virtual ~HoverNotices() = default;
  // The pointer rests on a new spot but no language is on with the trigger key as it is. Called
  // at every such tick: keep it cheap and idempotent.
  virtual void nothingToRead(const Snapshot& snapshot) = 0;
  // A read found a word of `language`, which the learner does not read this way: not studied, or
  // (`readWithKey`) read only while the trigger key is held. See skippedLanguageText.
  virtual void languageSkipped(Language language, bool readWithKey) = 0;
};

// "thaï n'est pas dans « Tes langues » : Réglages → Langues", or, for a language read only while
// the trigger key is held, "thaï se lit en maintenant la touche", in the interface language.
std::string skippedLanguageText(const Loc& loc, Language language, bool readWithKey);

// The status item's line: "activée (…)" while the hover is on, "désactivée (…)" while off. French;
// the shell translates it with Loc::t.
std::string_view statusText(bool on);

}  // namespace vesko
