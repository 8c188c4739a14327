#include "ai/price.h"

#include <gtest/gtest.h>

#include <string>

#include "ai/price_table.h"

namespace vesko {
namespace {

TEST(PriceTest, ModelNamesFindTheirRow) {
  struct Row {
    AIProvider provider;
    const char* model;
    double input;
    double output;
  };
  const Row rows[] = {
      {AIProvider::deepseek, "deepseek-pro", 1.32, 3.96},
      {AIProvider::deepseek, "DeepSeek-PRO-2", 1.32, 3.96},  // names are lower-cased first
      {AIProvider::deepseek, "deepseek-flash", 0.3, 1.2},
      {AIProvider::deepseek, "", 0.3, 1.2},
      {AIProvider::openai, "gpt-5-nano", 0.1, 0.4},
      {AIProvider::openai, "gpt-4o-mini", 0.4, 1.6},
      {AIProvider::openai, "gpt-4.1", 2.0, 8.0},
      {AIProvider::claude, "claude-3-5-haiku-latest", 0.8, 4.0},
      {AIProvider::claude, "claude-haiku-4-5-20251001", 1.0, 5.0},
      {AIProvider::claude, "claude-sonnet-4-20250514", 3.0, 15.0},
      {AIProvider::claude, "claude-3-7-sonnet-4-5", 3.0, 15.0},
      {AIProvider::claude, "claude-sonnet-4-6", 3.0, 15.0},
      // The newest Sonnet and Opus cost less than their predecessors.
      {AIProvider::claude, "claude-sonnet-5-5", 2.0, 10.0},
      {AIProvider::claude, "claude-opus-5-5", 4.0, 20.0},
      {AIProvider::claude, "claude-opus-4-1", 5.0, 25.0},
      {AIProvider::claude, "claude-fable-1", 10.0, 50.0},
      {AIProvider::claude, "Claude-Mythos", 10.0, 50.0},
      {AIProvider::claude, "claude-unknown", 1.0, 5.0},
      {AIProvider::claude, "", 1.0, 5.0},
      // A name only means something for its own provider.
      {AIProvider::openai, "claude-opus-4-1", 2.0, 8.0},
      {AIProvider::apple, "gpt-4o", 0, 0},
      {AIProvider::vesko, "claude-opus-4-1", 0, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(providerRow(row.provider).name) + " " + row.model);
    const Price found = price(row.provider, row.model);
    EXPECT_DOUBLE_EQ(found.input, row.input);
    EXPECT_DOUBLE_EQ(found.output, row.output);
  }
}

TEST(PriceTest, TableRowsAreReachableAndEndInACatchAll) {
  for (auto provider : {AIProvider::claude, AIProvider::openai, AIProvider::deepseek}) {
    SCOPED_TRACE(std::string(providerRow(provider).name));
    const PriceRow* last = nullptr;
    int catchAlls = 0;
    for (const auto& row : kPriceRows) {
      if (row.provider != provider) continue;
      // A row after the catch-all would never be reached.
      EXPECT_EQ(catchAlls, 0) << row.word;
      bool hasAnyOf = false;
      for (auto word : row.anyOf) hasAnyOf = hasAnyOf || !word.empty();
      if (row.word.empty() && !hasAnyOf) ++catchAlls;
      // Words are matched against a lower-cased name.
      for (char c : row.word) EXPECT_FALSE(c >= 'A' && c <= 'Z') << row.word;
      for (auto word : row.anyOf)
        for (char c : word) EXPECT_FALSE(c >= 'A' && c <= 'Z') << word;
      EXPECT_GT(row.price.input, 0) << row.word;
      EXPECT_GE(row.price.output, row.price.input) << row.word;
      last = &row;
    }
    ASSERT_NE(last, nullptr);
    EXPECT_EQ(catchAlls, 1);
    EXPECT_TRUE(last->word.empty());
  }
  for (const auto& row : kPriceRows) {
    EXPECT_NE(row.provider, AIProvider::apple);
    EXPECT_NE(row.provider, AIProvider::vesko);
  }
}

}  // namespace
}  // namespace vesko
