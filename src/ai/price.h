#pragma once
// What one model costs, in US dollars per million tokens, found by matching the model's name
// against the providers' published prices (price_table.h). Used to estimate what the learner's own
// keys spend. Pure functions over constant data; any thread.

#include <string_view>

#include "ai/provider.h"

namespace vesko {

struct Price {
  double input = 0;   // dollars per million input tokens
  double output = 0;  // dollars per million output tokens
};

// The first row of `provider` whose words `model` (lower-cased) contains; nothing is charged for
// the local model and the relay, which have no rows.
Price price(AIProvider provider, std::string_view model);

}  // namespace vesko
