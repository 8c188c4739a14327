#include "learn/review_session.h"

#include <istream>
#include <ostream>

#include "learn/mastery.h"
#include "learn/review_day.h"
#include "learn/review_texts.h"

namespace vesko {
namespace {

constexpr const char* kBold = "\x1b[1m";
constexpr const char* kHighlight = "\x1b[1;7m";  // bold, reverse video: visible on any palette
constexpr const char* kDim = "\x1b[2m";
constexpr const char* kReset = "\x1b[0m";

// Length in bytes of the UTF-8 character that starts with `lead`.
std::size_t characterLength(unsigned char lead) {
  return lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
}

// `q`, and in a terminal without signals Ctrl-C and Ctrl-D.
bool isQuit(const std::string& key) {
  return key == "q" || key == "Q" || key == "\x03" || key == "\x04";
}

}  // namespace

ReviewSession::ReviewSession(std::istream& in, std::ostream& out, const Loc& loc,
                             const Clock& clock, ReviewCounts& counts, Grader grader,
                             Options options)
    : in_(in),
      out_(out),
      loc_(loc),
      clock_(clock),
      counts_(counts),
      grader_(std::move(grader)),
      options_(options) {}

std::optional<std::string> ReviewSession::readKey() {
  if (!options_.singleKeys) {
    std::string line;
    if (!std::getline(in_, line)) return std::nullopt;
    const auto start = line.find_first_not_of(" \t\r");
    if (start == std::string::npos) return std::string("\n");
    return line.substr(start, characterLength(static_cast<unsigned char>(line[start])));
  }
  const int lead = in_.get();
  if (lead == std::char_traits<char>::eof()) return std::nullopt;
  if (lead == '\r' || lead == '\n') return std::string("\n");
  std::string key(1, static_cast<char>(lead));
  for (std::size_t i = 1; i < characterLength(static_cast<unsigned char>(lead)); ++i) {
    const int more = in_.get();
    if (more == std::char_traits<char>::eof()) break;
    key += static_cast<char>(more);
  }
  return key;
}

std::string ReviewSession::emphasised(const std::string& text, const char* style) const {
  return options_.colour ? style + text + kReset : text;
}

std::string ReviewSession::marked(const std::string& sentence, const std::string& target) const {
  const auto at = target.empty() ? std::string::npos : sentence.find(target);
  if (at == std::string::npos) return sentence;
  const std::string word = options_.colour ? kHighlight + target + kReset : "[" + target + "]";
  return sentence.substr(0, at) + word + sentence.substr(at + target.size());
}

void ReviewSession::showQuestion(const SavedWord& card, std::size_t position, std::size_t total) {
  out_ << '\n'
       << emphasised("── " + std::to_string(position) + " / " + std::to_string(total) + " ──", kDim)
       << "  " << masteryColour(masteryOf(card)) << ' ' << levelText(card, loc_) << '\n';
  out_ << emphasised(card.word, kBold);
  if (!card.pinyin.empty()) out_ << "  " << card.pinyin;
  out_ << '\n';
  const ShownSense shown = shownSense(card);
  if (!shown.sentence.empty()) out_ << "  " << marked(shown.sentence, shown.target) << '\n';
  out_ << emphasised(loc_.t("Entrée : voir la réponse · q : quitter"), kDim) << '\n';
  out_.flush();
}

void ReviewSession::showAnswer(const ReviewDeck& deck) {
  const SavedWord& card = *deck.current();
  const ShownSense shown = shownSense(card);
  if (!shown.meaning.empty()) out_ << emphasised(shown.meaning, kBold) << '\n';
  const auto translation = card.translations.find(loc_.uiLanguage());
  if (translation != card.translations.end() && translation->second != shown.meaning)
    out_ << translation->second << '\n';
  out_ << emphasised(rhythmLine(card, loc_), kDim) << '\n';
  for (int grade = 1; grade <= 5; ++grade) {
    out_ << "  " << gradeText(grade, loc_);
    if (auto scheduled = deck.preview(grade))
      out_ << "  → " << intervalText(scheduled->interval, loc_);
    out_ << '\n';
  }
  out_ << loc_.t("Ta note (1 à 5) · q : quitter") << '\n';
  out_.flush();
}

std::optional<int> ReviewSession::readGrade() {
  for (;;) {
    auto key = readKey();
    if (!key || isQuit(*key)) return std::nullopt;
    if (key->size() == 1 && (*key)[0] >= '1' && (*key)[0] <= '5') return (*key)[0] - '0';
  }
}

ReviewSession::Outcome ReviewSession::run(const std::vector<SavedWord>& today, std::size_t later) {
  Outcome outcome;
  if (today.empty()) out_ << loc_.t("Rien à relire aujourd'hui.") << '\n';
  ReviewDeck deck(clock_, counts_, grader_);
  deck.start(today, later);
  while (const SavedWord* card = deck.current()) {
    showQuestion(*card, deck.position(), deck.total());
    auto key = readKey();
    if (!key || isQuit(*key)) {
      outcome.quit = true;
      break;
    }
    deck.showAnswer();
    showAnswer(deck);
    auto grade = readGrade();
    if (!grade) {
      outcome.quit = true;
      break;
    }
    auto saved = deck.grade(*grade);
    if (!saved) continue;  // removed meanwhile: nothing to count
    out_ << emphasised(nextReviewText(*saved, storeDateOf(clock_.now()), loc_, clock_), kDim)
         << '\n';
  }
  outcome.graded = deck.graded();
  out_ << '\n'
       << fillPlaceholders(loc_.t("Révision finie : %d cartes notées."),
                           {std::to_string(outcome.graded)})
       << '\n';
  if (later > 0) out_ << laterText(later, loc_) << '\n';
  out_.flush();
  return outcome;
}

}  // namespace vesko
