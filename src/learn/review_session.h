#pragma once
// One sitting of the day's review in a terminal: each card's word and sentence, the answer on a
// key press, the five grades with the wait each would give, then the grade applied and counted
// in the day's tally. Plain text with optional ANSI emphasis, so it works over SSH, in tmux and
// fed from a pipe. The streams, texts, clock, tally and grading are handed in and must outlive
// the session; one thread.

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "learn/review_counts.h"
#include "learn/review_deck.h"
#include "learn/saved_word.h"
#include "settings/clock.h"
#include "settings/loc.h"

namespace vesko {

class ReviewSession {
 public:
  // Applies `grade` to the kept word `id` and saves it; the record as saved, or nothing when the
  // word is no longer kept.
  using Grader = ReviewDeck::Grader;

  struct Options {
    bool singleKeys = false;  // a terminal in key-at-a-time mode; otherwise one answer per line
    bool colour = false;      // ANSI emphasis; otherwise the word is marked with [ ]
  };

  struct Outcome {
    std::size_t graded = 0;
    bool quit = false;  // `q`, or the input ended
  };

  ReviewSession(std::istream& in, std::ostream& out, const Loc& loc, const Clock& clock,
                ReviewCounts& counts, Grader grader, Options options);
  ReviewSession(const ReviewSession&) = delete;
  ReviewSession& operator=(const ReviewSession&) = delete;

  // Shows `today` in order; `later` is the number of due cards left for the coming days.
  Outcome run(const std::vector<SavedWord>& today, std::size_t later);

 private:
  enum class Answer { next, quit };
  // A key (one character, Enter as "\n"), or nothing at the end of the input.
  std::optional<std::string> readKey();
  void showQuestion(const SavedWord& card, std::size_t position, std::size_t total);
  void showAnswer(const ReviewDeck& deck);
  // The grade the learner chose, or nothing to quit.
  std::optional<int> readGrade();
  std::string emphasised(const std::string& text, const char* style) const;
  std::string marked(const std::string& sentence, const std::string& target) const;

  std::istream& in_;
  std::ostream& out_;
  const Loc& loc_;
  const Clock& clock_;
  ReviewCounts& counts_;
  Grader grader_;
  Options options_;
};

}  // namespace vesko
