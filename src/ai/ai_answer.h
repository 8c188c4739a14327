#pragma once
// The result of one language-model question: the answer, or a message for the learner that begins
// with "⚠️ " and is never stored as an answer, with the two flags the callers act on. A plain
// value; any thread.

#include <string>
#include <string_view>

namespace vesko {

inline constexpr std::string_view kWarningPrefix = "⚠️ ";

struct AIAnswer {
  std::string text;
  bool unreachable = false;  // not reached, refused with 403/429/5xx, or stayed overloaded
  bool modelGone = false;    // the provider said the model does not exist

  // Both flags in one integer, as the callers pass them on: unreachable is bit 0, modelGone bit 8.
  int flags() const { return (unreachable ? 1 : 0) | (modelGone ? 1 << 8 : 0); }
  bool isMessage() const { return text.starts_with(kWarningPrefix); }
};

}  // namespace vesko
