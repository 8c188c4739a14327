#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "dict/cedict.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

// Readers hover while the dictionary loads on another thread: they find nothing, then
// everything, and never a half-built table (ThreadSanitizer watches the handover).
TEST(CEDictThreadsTest, LookupsDuringLoadSeeAllOrNothing) {
  testing::TempDir dir;
  // A dictionary large enough that the load takes a while.
  std::string content;
  for (int i = 0; i < 20000; ++i) {
    char32_t a = 0x4E00 + static_cast<char32_t>(i % 20000);
    char32_t b = 0x4E00 + static_cast<char32_t>((i * 7 + 3) % 20000);
    std::u32string word{a, b};
    std::string utf8;
    for (char32_t c : word) {
      utf8 += static_cast<char>(0xE0 | (c >> 12));
      utf8 += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      utf8 += static_cast<char>(0x80 | (c & 0x3F));
    }
    content += utf8 + " " + utf8 + " [x1 y2] /gloss " + std::to_string(i) + "/\n";
  }
  content += "研究 研究 [yan2 jiu1] /research/\n研究生 研究生 [yan2 jiu1 sheng1] /graduate student/\n";
  content += "生命 生命 [sheng1 ming4] /life/\n";
  content += "學習 学习 [xue2 xi2] /to learn/\n學 学 [xue2] /to learn/\n";
  auto file = dir.write("big.txt", content);

  CEDict dict;
  std::atomic<bool> done{false};
  std::vector<std::thread> readers;
  std::atomic<int> emptyBeforeLoad{0};
  std::atomic<int> wrong{0};
  for (int r = 0; r < 3; ++r) {
    readers.emplace_back([&] {
      const std::u16string text = u"我们研究生命。学习";
      bool seenLoaded = false;
      while (!done.load() || !seenLoaded) {
        const bool loaded = dict.loaded();
        auto match = dict.wordAt(text, 4);
        auto learn = dict.lookup(u"学习");
        auto pieces = dict.segment(text);
        auto converted = dict.convert(u"学", true);
        if (loaded) {
          seenLoaded = true;
          // Once loaded, every table must be complete.
          if (!match || match->word != u"生命") ++wrong;
          if (learn.size() != 1 || learn[0].trad() != "學習") ++wrong;
          if (converted != u"學") ++wrong;
        } else if (!match && learn.empty()) {
          ++emptyBeforeLoad;
        }
        std::size_t total = 0;
        for (auto p : pieces) total += p.size();
        if (total != text.size()) ++wrong;
      }
    });
  }
  std::thread loader([&] {
    auto stats = dict.load(file, "");
    EXPECT_TRUE(stats.has_value());
    done = true;
  });
  loader.join();
  for (auto& r : readers) r.join();
  EXPECT_EQ(wrong.load(), 0);
  EXPECT_TRUE(dict.loaded());
}

}  // namespace
}  // namespace vesko
