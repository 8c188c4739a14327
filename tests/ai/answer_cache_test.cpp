// The kept answers of the actions on a selected text: found again by the whole key, kept across
// runs, never a "⚠️ " message, and an unreadable file set aside rather than lost or
// overwritten.

#include "ai/answer_cache.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "support/fake_clock.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

using testing::FakeClock;
using testing::TempDir;

const AnswerKey kKey{"traduction", "小家子氣", "fr", "claude", "claude-haiku-4-5-20251001"};

std::string contentOf(const std::filesystem::path& file) {
  std::ifstream in(file);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

class AnswerCacheTest : public ::testing::Test {
 protected:
  std::filesystem::path file() const { return dir.path() / "data" / AnswerCache::kFileName; }
  TempDir dir;
  FakeClock clock;
};

TEST_F(AnswerCacheTest, KeptAcrossRunsAndFoundOnlyByTheWholeKey) {
  {
    AnswerCache cache(file(), clock);
    EXPECT_FALSE(cache.find(kKey));
    EXPECT_TRUE(cache.store(kKey, "anglais : **petty**"));
  }
  AnswerCache cache(file(), clock);
  EXPECT_EQ(cache.find(kKey), "anglais : **petty**");
  struct Case {
    const char* changed;
    AnswerKey key;
  };
  for (const Case& c : {
           Case{"action", {"redemander", kKey.text, kKey.language, kKey.provider, kKey.model}},
           Case{"text", {kKey.action, "小家子", kKey.language, kKey.provider, kKey.model}},
           Case{"language", {kKey.action, kKey.text, "en", kKey.provider, kKey.model}},
           Case{"provider", {kKey.action, kKey.text, kKey.language, "openai", kKey.model}},
           Case{"model", {kKey.action, kKey.text, kKey.language, kKey.provider, "claude-sonnet"}},
       }) {
    SCOPED_TRACE(c.changed);
    EXPECT_FALSE(cache.find(c.key));
  }
}

TEST_F(AnswerCacheTest, MessagesAndEmptyAnswersAreNeverKept) {
  AnswerCache cache(file(), clock);
  EXPECT_FALSE(cache.store(kKey, "⚠️ Claude ne répond pas."));
  EXPECT_FALSE(cache.store(kKey, ""));
  EXPECT_FALSE(cache.find(kKey));
  EXPECT_FALSE(std::filesystem::exists(file()));
}

TEST_F(AnswerCacheTest, ANewAnswerReplacesTheOldAndForgetRemovesIt) {
  AnswerCache cache(file(), clock);
  cache.store(kKey, "première");
  cache.store(kKey, "seconde");
  EXPECT_EQ(cache.find(kKey), "seconde");
  cache.forget(kKey);
  EXPECT_FALSE(cache.find(kKey));
  EXPECT_FALSE(AnswerCache(file(), clock).find(kKey));
}

TEST_F(AnswerCacheTest, TheOldestAnswersGoBeyondTheLimit) {
  {
    AnswerCache cache(file(), clock, {}, 3);
    for (int i = 0; i < 4; ++i)
      cache.store({"corriger", std::to_string(i), "fr", "claude", ""}, "ok");
  }
  AnswerCache cache(file(), clock, {}, 3);
  EXPECT_FALSE(cache.find({"corriger", "0", "fr", "claude", ""}));
  for (const char* kept : {"1", "2", "3"})
    EXPECT_TRUE(cache.find({"corriger", kept, "fr", "claude", ""}));
}

TEST_F(AnswerCacheTest, UnreadableFilesAreSetAside) {
  for (const char* broken :
       {"{not json", R"({"an":"object"})", R"([{"action":"traduction"}])",
        R"([{"action":1,"text":"a","lang":"fr","provider":"x","answer":"b"}])"}) {
    SCOPED_TRACE(broken);
    std::filesystem::remove_all(dir.path() / "data");
    std::filesystem::create_directories(dir.path() / "data");
    std::ofstream(file()) << broken;
    std::vector<std::string> lines;
    AnswerCache cache(file(), clock, [&](std::string line) { lines.push_back(std::move(line)); });
    EXPECT_FALSE(cache.find(kKey));
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_TRUE(lines[0].starts_with("réponses IA : fichier illisible")) << lines[0];
    // The broken content is kept beside, under another name.
    int kept = 0;
    for (const auto& entry : std::filesystem::directory_iterator(dir.path() / "data"))
      if (entry.path() != file() && contentOf(entry.path()) == broken) ++kept;
    EXPECT_EQ(kept, 1);
    EXPECT_TRUE(cache.store(kKey, "neuve"));
    EXPECT_EQ(AnswerCache(file(), clock).find(kKey), "neuve");
  }
}

}  // namespace
}  // namespace vesko
