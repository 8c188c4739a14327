// Which key each provider is reached with: the credential store's first, the environment's when
// the store holds none or cannot be reached, never one for the providers that need none.

#include "ai/keys.h"

#include <gtest/gtest.h>

#include <map>

#include "support/memory_secret_store.h"

namespace vesko {
namespace {

using testing::MemorySecretStore;

Environment variables(std::map<std::string, std::string> values) {
  return [values = std::move(values)](std::string_view name) -> std::optional<std::string> {
    auto it = values.find(std::string(name));
    if (it == values.end()) return std::nullopt;
    return it->second;
  };
}

TEST(KeysTest, StoreFirstThenEnvironment) {
  MemorySecretStore store;
  ASSERT_TRUE(store.save("claude", "from-store"));
  const Keys keys(
      store, variables({{"ANTHROPIC_API_KEY", "from-env-a"}, {"OPENAI_API_KEY", "from-env-o"}}));
  struct Row {
    AIProvider provider;
    const char* key;
    FoundKey::Source source;
  };
  const Row rows[] = {
      {AIProvider::claude, "from-store", FoundKey::Source::store},
      {AIProvider::openai, "from-env-o", FoundKey::Source::environment},
      {AIProvider::deepseek, "", FoundKey::Source::none},
      {AIProvider::apple, "", FoundKey::Source::none},
      {AIProvider::vesko, "", FoundKey::Source::none},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(providerRow(row.provider).name);
    const FoundKey found = keys.find(row.provider);
    EXPECT_EQ(found.key, row.key);
    EXPECT_EQ(found.source, row.source);
    EXPECT_FALSE(found.storeProblem);
  }
}

TEST(KeysTest, SavingAnEmptyKeyRemovesIt) {
  MemorySecretStore store;
  const Keys keys(store, variables({{"DEEPSEEK_API_KEY", "env"}}));
  ASSERT_TRUE(store.save("deepseek", "stored"));
  EXPECT_EQ(keys.key(AIProvider::deepseek), "stored");
  ASSERT_TRUE(store.save("deepseek", ""));
  EXPECT_EQ(store.size(), 0u);
  EXPECT_EQ(keys.find(AIProvider::deepseek).source, FoundKey::Source::environment);
}

TEST(KeysTest, UnreachableStoreFallsBackAndSaysWhy) {
  MemorySecretStore store(/*reachable=*/false);
  const Keys keys(store, variables({{"OPENAI_API_KEY", "env-key"}}));
  const FoundKey openai = keys.find(AIProvider::openai);
  EXPECT_EQ(openai.key, "env-key");
  EXPECT_EQ(openai.source, FoundKey::Source::environment);
  ASSERT_TRUE(openai.storeProblem);
  EXPECT_NE(openai.storeProblem->find("Secret Service"), std::string::npos);
  EXPECT_EQ(keys.find(AIProvider::claude).source, FoundKey::Source::none);
}

TEST(KeysTest, EveryKeyedProviderHasItsVariable) {
  EXPECT_EQ(keyVariable(AIProvider::claude), "ANTHROPIC_API_KEY");
  EXPECT_EQ(keyVariable(AIProvider::openai), "OPENAI_API_KEY");
  EXPECT_EQ(keyVariable(AIProvider::deepseek), "DEEPSEEK_API_KEY");
  EXPECT_EQ(keyVariable(AIProvider::vesko), "");
}

}  // namespace
}  // namespace vesko
