#pragma once
// Numbered pinyin ("ni3 hao3") to tone-marked pinyin ("nǐ hǎo"), tone numbers and tone colours.
// Stateless; any thread.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vesko {

struct Rgb {
  double red;
  double green;
  double blue;
  std::string hex() const;  // "#rrggbb"
  friend bool operator==(const Rgb&, const Rgb&) = default;
};

class Pinyin {
 public:
  static std::string marked(std::string_view numbered);
  // One tone per syllable: 1–5, or 0 for a syllable without a tone digit.
  static std::vector<int> tones(std::string_view numbered);
  // Nothing for tones other than 1–4: the interface's secondary text colour applies.
  static std::optional<Rgb> toneColor(int tone);
};

}  // namespace vesko
