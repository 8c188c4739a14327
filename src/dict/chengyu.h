#pragma once
// Whether a word is a chengyu: four Chinese characters that the dictionary calls an idiom. Such
// words get their own explanation, character by character. Any thread, as the dictionary.

#include <string_view>

#include "dict/cedict.h"

namespace vesko {

bool isChengyu(const CEDict& dictionary, std::u16string_view word);

}  // namespace vesko
