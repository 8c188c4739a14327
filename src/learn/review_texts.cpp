#include "learn/review_texts.h"

#include <fmt/format.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "learn/review_day.h"
#include "learn/review_rhythm.h"

namespace vesko {
namespace {

// clang-format off
constexpr std::array<std::string_view, 5> kGradeTexts{
  "1 — raté : revient dans 10 minutes, une couleur en moins",
  "2 — pas très à l'aise : revient demain, une couleur en moins",
  "3 — moyen : même rythme",
  "4 — à l'aise : étape suivante",
  "5 — très à l'aise : deux étapes d'un coup",
};
// clang-format on

}  // namespace

std::string fillPlaceholders(std::string_view format, std::initializer_list<std::string> values) {
  std::string out;
  auto next = values.begin();
  for (std::size_t i = 0; i < format.size(); ++i) {
    if (format[i] == '%' && i + 1 < format.size()) {
      const char kind = format[i + 1];
      if (kind == '%') {
        out += '%';
        ++i;
        continue;
      }
      if (kind == 'd' || kind == '@') {
        if (next != values.end()) out += *next++;
        ++i;
        continue;
      }
    }
    out += format[i];
  }
  return out;
}

std::string capitalizedFirst(std::string_view text) {
  if (text.empty()) return {};
  const auto* bytes = reinterpret_cast<const uint8_t*>(text.data());
  const int32_t length = static_cast<int32_t>(text.size());
  int32_t end = 0;
  UChar32 first = 0;
  U8_NEXT(bytes, end, length, first);
  if (first < 0) return std::string(text);
  const UChar32 title = u_totitle(first);
  char encoded[U8_MAX_LENGTH];
  int32_t written = 0;
  UBool failed = false;
  U8_APPEND(reinterpret_cast<uint8_t*>(encoded), written, U8_MAX_LENGTH, title, failed);
  if (failed) return std::string(text);
  return std::string(encoded, static_cast<std::size_t>(written)) + std::string(text.substr(end));
}

std::string levelText(const SavedWord& word, const Loc& loc) {
  if (ReviewRhythm::isAcquired(word)) return "✅ " + capitalizedFirst(loc.t("acquis"));
  if (!word.reviewStep) return loc.t("Nouveau : pas encore relu");
  const long long level = std::clamp(*word.reviewStep, 0LL, 5LL) + 1;
  return fillPlaceholders(loc.t("Niveau %d sur %d"),
                          {std::to_string(level), std::to_string(kAcquiredStep)});
}

std::string rhythmLine(const SavedWord& word, const Loc& loc) {
  const bool marked = word.reviewStep && !ReviewRhythm::isAcquired(word);
  std::string line;
  for (int step = 0; step < kAcquiredStep; ++step) {
    if (step > 0) line += " · ";
    const std::string days = std::to_string(kReviewLadder[static_cast<std::size_t>(step)]);
    line += marked && *word.reviewStep == step ? "[" + days + "]" : days;
  }
  return line + " " + loc.t("jours") + ", " + loc.t("puis une fois par an (acquis)");
}

std::string localDateText(StoreDate date, const Clock& clock) {
  const TimePoint t = timePointOf(date);
  const auto local = std::chrono::floor<std::chrono::seconds>(t) + clock.utcOffset(t);
  const auto day = std::chrono::floor<std::chrono::days>(local);
  const std::chrono::year_month_day ymd{day};
  const std::chrono::hh_mm_ss time{local - day};
  return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}", static_cast<int>(ymd.year()),
                     static_cast<unsigned>(ymd.month()), static_cast<unsigned>(ymd.day()),
                     time.hours().count(), time.minutes().count());
}

std::string nextReviewText(const SavedWord& word, StoreDate now, const Loc& loc,
                           const Clock& clock) {
  const StoreDate due = ReviewRhythm::dueDate(word);
  if (due <= now) return capitalizedFirst(loc.t("à relire maintenant"));
  const std::string date = localDateText(due, clock);
  if (ReviewRhythm::isAcquired(word))
    return fillPlaceholders(loc.t("Une fois par an pour vérifier · prochaine : %@"), {date});
  return fillPlaceholders(loc.t("Prochaine révision : %@"), {date});
}

std::string gradeText(int grade, const Loc& loc) {
  if (grade < 1 || grade > 5) return {};
  return loc.t(kGradeTexts[static_cast<std::size_t>(grade - 1)]);
}

std::string intervalText(double seconds, const Loc& loc) {
  if (seconds < kDaySeconds)
    return fillPlaceholders(loc.t("%d min"), {std::to_string(std::lround(seconds / 60))});
  return fillPlaceholders(loc.t("%d j"), {std::to_string(std::lround(seconds / kDaySeconds))});
}

std::string laterText(std::size_t later, const Loc& loc) {
  return fillPlaceholders(
      loc.t(
          "%d cartes attendent les jours suivants (40 anciennes + 10 nouvelles par jour au plus)."),
      {std::to_string(later)});
}

}  // namespace vesko
