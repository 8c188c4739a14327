#include "app/hover_settings.h"

#include <string>
#include <string_view>

#include "app/pointer.h"

namespace vesko {
namespace {

// clang-format off
constexpr std::array<std::pair<Language, std::string_view>, 7> kModeKeys = {{
    {Language::zh, "mode.zh"}, {Language::ja, "mode.ja"}, {Language::th, "mode.th"},
    {Language::fr, "mode.fr"}, {Language::en, "mode.en"}, {Language::ru, "mode.ru"},
    {Language::pl, "mode.pl"},
}};
// clang-format on

ReadingMode readingMode(long long stored) {
  if (stored == 0) return ReadingMode::hover;
  if (stored == 1) return ReadingMode::withKey;
  return ReadingMode::off;
}

std::vector<std::string> splitNames(std::string_view list) {
  std::vector<std::string> names;
  while (!list.empty()) {
    const auto comma = list.find(',');
    auto name = list.substr(0, comma);
    while (!name.empty() && name.front() == ' ') name.remove_prefix(1);
    while (!name.empty() && name.back() == ' ') name.remove_suffix(1);
    if (!name.empty()) names.emplace_back(name);
    if (comma == std::string_view::npos) break;
    list.remove_prefix(comma + 1);
  }
  return names;
}

bool& languageSwitch(Snapshot& snapshot, Language language) {
  switch (language) {
    case Language::zh:
      return snapshot.zh;
    case Language::ja:
      return snapshot.ja;
    case Language::th:
      return snapshot.th;
    case Language::fr:
      return snapshot.fr;
    case Language::en:
      return snapshot.en;
    case Language::ru:
      return snapshot.ru;
    case Language::pl:
      break;
  }
  return snapshot.pl;
}

}  // namespace

HoverSettings::HoverSettings(const Settings& settings) : settings_(settings) {
  read();
}

void HoverSettings::refresh() {
  if (settings_.generation() != generation_) read();
}

void HoverSettings::read() {
  // The generation first: a change published while we read is read again at the next refresh.
  generation_ = settings_.generation();
  delay_ = settings_.real("delay");
  trigger_ = vesko::triggerModifiers(settings_.integer("modifier"));
  for (const auto& [language, key] : kModeKeys)
    modes_[static_cast<std::size_t>(language)] = readingMode(settings_.integer(key));
  snapshot_.dicts = splitNames(settings_.text("dicts"));
  snapshot_.conj = settings_.flag("conj");
  snapshot_.prefLatin = settings_.text("prefLatin");
  snapshot_.prefHan = settings_.text("prefHan");
}

const Snapshot& HoverSettings::snapshot(bool keyHeld) {
  for (const auto& [language, key] : kModeKeys) {
    const ReadingMode m = mode(language);
    languageSwitch(snapshot_, language) =
        m == ReadingMode::hover || (m == ReadingMode::withKey && keyHeld);
  }
  return snapshot_;
}

bool anyLanguageOn(const Snapshot& s) {
  return s.zh || s.ja || s.th || s.fr || s.en || s.ru || s.pl;
}

}  // namespace vesko
