#pragma once
// Lowercasing of headwords and looked-up words, by Unicode's full case mapping (ICU, root locale):
// "Dom" → "dom", "КНИГА" → "книга", "Ｔシャツ" → "ｔシャツ". The dictionaries key their headwords by
// this form so that a word typed in capitals at the start of a sentence still finds its entry.
// Stateless; any thread.

#include <string>
#include <string_view>

namespace vesko {

// Invalid UTF-8 comes back unchanged: it matches no headword either way.
std::string lowercase(std::string_view utf8);

}  // namespace vesko
