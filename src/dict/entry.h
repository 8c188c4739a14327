#pragma once
// One Chinese dictionary entry as a plain value: what the bubble shows, what a kept word carries.

#include <string>
#include <vector>

namespace vesko {

struct Entry {
  std::string trad;               // headword in traditional characters
  std::string simp;               // headword in simplified characters
  std::string pinyin;             // numbered syllables as in the source: "zhong1 guo2", "nu:3"
  std::vector<std::string> defs;  // English glosses in file order, trimmed, none empty

  friend bool operator==(const Entry&, const Entry&) = default;
};

}  // namespace vesko
