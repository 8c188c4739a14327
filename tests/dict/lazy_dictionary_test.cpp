#include "dict/lazy_dictionary.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace vesko {
namespace {

class OneWord final : public WordDictionary {
 public:
  std::vector<WordEntry> lookup(std::string_view lowercased) const override {
    if (lowercased != "kot") return {};
    return {{"kot", "", {"cat"}}};
  }
  bool contains(std::string_view lowercased) const override { return lowercased == "kot"; }
};

TEST(LazyDictionaryTest, LoadsOnceOnFirstUseFromManyThreads) {
  std::atomic<int> loads{0};
  LazyDictionary lazy([&loads]() -> std::expected<std::unique_ptr<WordDictionary>, std::string> {
    ++loads;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));  // let the others pile up
    return std::make_unique<OneWord>();
  });
  EXPECT_EQ(loads.load(), 0);  // creating it costs nothing

  std::atomic<int> found{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) {
    threads.emplace_back([&] {
      if (lazy.lookup("kot").size() == 1 && lazy.contains("kot") && !lazy.contains("pies")) ++found;
    });
  }
  for (auto& t : threads) t.join();
  EXPECT_EQ(loads.load(), 1);
  EXPECT_EQ(found.load(), 8);
  EXPECT_FALSE(lazy.error().has_value());
}

TEST(LazyDictionaryTest, AFailedLoadFindsNothingAndSaysWhy) {
  int loads = 0;
  LazyDictionary lazy([&loads]() -> std::expected<std::unique_ptr<WordDictionary>, std::string> {
    ++loads;
    return std::unexpected("cannot read pl/freedict-pol-eng.index");
  });
  EXPECT_TRUE(lazy.lookup("kot").empty());
  EXPECT_FALSE(lazy.contains("kot"));
  EXPECT_FALSE(lazy.load());
  EXPECT_EQ(lazy.error(), "cannot read pl/freedict-pol-eng.index");
  EXPECT_EQ(loads, 1);  // not retried on every lookup
}

class Stems final : public Conjugator {
 public:
  std::optional<BaseForm> baseForm(std::string_view word) const override {
    if (word == "kota") return BaseForm{"kot", "forme fléchie de « kot »"};
    return std::nullopt;
  }
};

TEST(LazyConjugatorTest, LoadsOnFirstUse) {
  int loads = 0;
  LazyConjugator lazy([&loads]() -> std::expected<std::unique_ptr<Conjugator>, std::string> {
    ++loads;
    return std::make_unique<Stems>();
  });
  EXPECT_EQ(loads, 0);
  EXPECT_EQ(lazy.baseForm("kota"), (BaseForm{"kot", "forme fléchie de « kot »"}));
  EXPECT_EQ(lazy.baseForm("kot"), std::nullopt);
  EXPECT_EQ(loads, 1);
}

}  // namespace
}  // namespace vesko
