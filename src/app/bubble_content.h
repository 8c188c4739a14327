#pragma once
// What the bubble shows for one hover result, decided apart from any toolkit: the headword in the
// script the learner reads, the reading cut into syllables with their tone colours, the senses
// grouped per reading, the notes (dictionary form, elision, conjugation, proper name), the
// sentence with the word's place in it, and the record a keep stores. Plain values built by pure
// functions; any thread (the Loc is only read).

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/geometry.h"
#include "app/hover_result.h"
#include "dict/pinyin.h"
#include "learn/saved_word.h"

namespace vesko {

class Loc;

// One syllable of a reading: tone-marked pinyin with its tone (1–5, 0 when the source gave none)
// and its colour; kana as one piece with tone 0 and no colour.
struct ReadingSyllable {
  std::string text;
  int tone = 0;
  std::optional<Rgb> color;  // nothing: the interface's secondary text colour
  friend bool operator==(const ReadingSyllable&, const ReadingSyllable&) = default;
};

struct Reading {
  std::vector<ReadingSyllable> syllables;
  std::string text;  // the whole reading as plain text: "xué xí", "たべる"
  bool empty() const { return text.empty(); }
  friend bool operator==(const Reading&, const Reading&) = default;
};

// Numbered pinyin ("xue2 xi2") as marked syllables with their tone colours.
Reading pinyinReading(std::string_view numbered);

// The senses under one reading: the Chinese entries that share it, or one entry of another
// dictionary.
struct SenseGroup {
  std::string headword;  // set only when it differs from the bubble's headword
  Reading reading;
  std::vector<std::string> defs;
  friend bool operator==(const SenseGroup&, const SenseGroup&) = default;
};

// The word's place in its sentence in UTF-8 bytes: [begin, end).
struct ByteRange {
  std::size_t begin = 0;
  std::size_t end = 0;
  friend bool operator==(const ByteRange&, const ByteRange&) = default;
};

// Where `word` stands in `sentence`, compared without regard to case. The sentence was cut out of
// the text around the word, so the word cannot start later in the sentence than it did in the
// text: `latestStart` (its UTF-16 start in the text) rules out later occurrences. Nothing when the
// word is not in the sentence or either text is not UTF-8.
std::optional<ByteRange> findWordInSentence(std::string_view sentence, std::string_view word,
                                            std::size_t latestStart = std::string_view::npos);

// How much the bubble shows at most: a word with dozens of senses would fill the screen.
inline constexpr std::size_t kMaxSenseGroups = 4;
inline constexpr std::size_t kMaxDefsPerGroup = 6;

struct BubbleContent {
  std::string word;          // as it stands in the text
  std::string language;      // "zh", "ja", "fr"…
  std::string headword;      // for Chinese, in the script the learner reads
  bool traditional = false;  // Chinese written in traditional characters where it was read
  Reading reading;           // of the first sense group; empty when there is none
  std::vector<SenseGroup> senses;
  bool moreSenses = false;  // some groups or definitions were left out: show "…"
  std::vector<std::string> notes;
  std::string sentence;
  std::optional<ByteRange> wordInSentence;
  SavedWord record;  // what a keep stores: no id, date or counters yet
};

// The content of `result`, with the notes in the interface language.
BubbleContent bubbleContent(const HoverResult& result, const Loc& loc);

// Where a bubble of `width` × `height` goes for the pointer at `at` on `screen` (the available
// area of the screen that holds the point): below and to the right with a small gap, flipped to
// the left or above where it would leave the screen, and kept on it.
inline constexpr double kBubbleGap = 12;
ScreenRect bubblePlacement(ScreenPoint at, double width, double height, const ScreenRect& screen);

// The languages a sentence in `textLanguage` is translated into from the bubble: the answer
// language, or English (French for an English text) when the sentence is already in it.
std::vector<std::string> sentenceTargets(std::string_view textLanguage,
                                         std::string_view answerLanguage);

}  // namespace vesko
