// What one hover's read costs in each language: the word chooser's `read` (language decision,
// word rules, dictionary lookup, sentence) at every letter of real text, each call timed on its
// own so that the tail shows. Chinese runs on the full CEDict and the committed Chinese sample;
// the other languages on a paragraph each, with every installed dictionary, conjugator and the
// recogniser (each loads during the warm-up, before the timing). The resident memory at the end
// is that of all seven languages' data together.
// Targets: Chinese p99 <= 20 µs; other languages p99 <= 300 µs; all dictionaries <= 250 MB.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "app/installed_language_data.h"
#include "app/word_chooser.h"
#include "bench_common.h"
#include "dict/cedict.h"
#include "settings/resources.h"
#include "text/unicode.h"

namespace {

constexpr const char* kUsage =
    "usage: bench_look [--cedict FILE] [--unihan FILE | --no-unihan] [--text FILE]\n"
    "                  [--positions N] [--seed N]\n"
    "The text is the Chinese sample, UTF-8, one paragraph a line.";

constexpr std::size_t kWindow = 300;  // UTF-16 units a screen reader hands over around the pointer

// A paragraph per language, as a page would show it.
struct Sample {
  const char* language;
  const char* text;
};
// clang-format off
constexpr Sample kSamples[] = {
    {"fr", "Quand il est arrivé à la gare, le train de nuit était déjà parti ; il a donc passé "
           "la soirée dans un petit café près du port, à lire le journal qu'on avait oublié sur "
           "la table. Personne ne savait s'il reviendrait l'année prochaine."},
    {"en", "When she reached the station the night train had already left, so she spent the "
           "evening in a small café near the harbour, reading a newspaper that someone had left "
           "on the table. Nobody knew whether she would come back next year."},
    {"pl", "Kiedy dotarł na dworzec, nocny pociąg już odjechał, więc spędził wieczór w małej "
           "kawiarni przy porcie, czytając gazetę, którą ktoś zostawił na stole. Nikt nie "
           "wiedział, czy wróci w przyszłym roku."},
    {"ru", "Когда он пришёл на вокзал, ночной поезд уже ушёл, и он провёл вечер в маленьком "
           "кафе у порта, читая газету, которую кто-то забыл на столе. Никто не знал, вернётся "
           "ли он в следующем году."},
    {"th", "เมื่อเขามาถึงสถานีรถไฟ รถไฟกลางคืนได้ออกไปแล้ว เขาจึงใช้เวลาตอนเย็นในร้านกาแฟเล็กๆ "
           "ใกล้ท่าเรือ อ่านหนังสือพิมพ์ที่มีคนลืมไว้บนโต๊ะ ไม่มีใครรู้ว่าเขาจะกลับมาอีกในปีหน้าหรือไม่"},
    {"ja", "駅に着いたとき、夜行列車はもう出てしまっていたので、彼は港の近くの小さな喫茶店で、"
           "誰かがテーブルに置き忘れた新聞を読みながら夜を過ごした。"},
};
// clang-format on

struct Figures {
  double median = 0, p99 = 0, max = 0;
  std::size_t calls = 0, found = 0;
};

template <typename Call>
Figures timeCalls(std::size_t count, Call&& call) {
  for (std::size_t i = 0; i < std::min<std::size_t>(count, 2000); ++i)
    benchmark::DoNotOptimize(call(i));
  std::vector<double> us(count);
  Figures figures;
  figures.calls = count;
  for (std::size_t i = 0; i < count; ++i) {
    auto start = vesko::bench::Clock::now();
    auto result = call(i);
    auto stop = vesko::bench::Clock::now();
    benchmark::DoNotOptimize(result);
    if (result) ++figures.found;
    us[i] = std::chrono::duration<double, std::micro>(stop - start).count();
  }
  figures.median = vesko::bench::percentile(us, 0.5);
  figures.p99 = vesko::bench::percentile(us, 0.99);
  figures.max = us.back();
  return figures;
}

void print(const char* language, const Figures& f) {
  std::printf("look %s median: %.3f µs\n", language, f.median);
  std::printf("look %s p99: %.3f µs\n", language, f.p99);
  std::printf("look %s max: %.3f µs\n", language, f.max);
  std::printf("look %s found: %.1f%% of %zu positions\n", language,
              100.0 * static_cast<double>(f.found) / static_cast<double>(f.calls), f.calls);
}

vesko::Snapshot studyingAll() {
  vesko::Snapshot snapshot;
  snapshot.zh = snapshot.ja = snapshot.th = snapshot.fr = snapshot.en = snapshot.ru = snapshot.pl =
      true;
  return snapshot;
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  auto options = vesko::bench::parseOptions(argc, argv, kUsage, true,
                                            {{"--positions", true}, {"--seed", true}});
  const auto positions =
      static_cast<std::size_t>(vesko::bench::optionNumber(options, "--positions", 100000, 1000));
  const auto seed = static_cast<unsigned long>(vesko::bench::optionNumber(options, "--seed", 1, 0));

  vesko::CEDict cedict;
  if (!cedict.load(options.cedict, options.unihan)) {
    std::fprintf(stderr, "loading %s failed\n", options.cedict.c_str());
    return 1;
  }
  vesko::InstalledLanguageData data(vesko::Resources::folder());
  vesko::SkippedLanguage skipped;
  vesko::WordChooser chooser(cedict, data, skipped);

  // Chinese: random Han characters of the sample, each in the window a reader would give.
  auto whole = vesko::text::fromUtf8(vesko::bench::readFile(options.text));
  if (!whole) {
    std::fprintf(stderr, "%s is not valid UTF-8\n", options.text.c_str());
    return 1;
  }
  struct Hover {
    std::u16string_view text;
    std::ptrdiff_t index;
  };
  std::vector<Hover> han;
  std::u16string_view rest = *whole;
  while (!rest.empty()) {
    auto newline = rest.find(u'\n');
    auto line = rest.substr(0, newline);
    for (std::size_t i = 0; i < line.size(); ++i) {
      if (!vesko::text::isHanAt(line, i) || (line[i] & 0xFC00) == 0xDC00) continue;
      std::size_t from = i > kWindow / 2 ? i - kWindow / 2 : 0;
      while (from > 0 && from < line.size() && (line[from] & 0xFC00) == 0xDC00) --from;
      std::size_t to = std::min(line.size(), from + kWindow);
      while (to < line.size() && (line[to] & 0xFC00) == 0xDC00) ++to;
      han.push_back({line.substr(from, to - from), static_cast<std::ptrdiff_t>(i - from)});
    }
    rest = newline == std::u16string_view::npos ? std::u16string_view() : rest.substr(newline + 1);
  }
  if (han.empty()) {
    std::fprintf(stderr, "the text has no Han characters\n");
    return 1;
  }
  std::mt19937_64 random(seed);
  std::uniform_int_distribution<std::size_t> pick(0, han.size() - 1);
  std::vector<Hover> hovers(positions);
  for (auto& hover : hovers) hover = han[pick(random)];

  vesko::Snapshot chinese;
  chinese.zh = true;
  print("zh", timeCalls(hovers.size(), [&](std::size_t i) {
          return chooser.read(hovers[i].text, hovers[i].index, chinese);
        }));
  const vesko::Snapshot all = studyingAll();
  print("zh (all languages studied)", timeCalls(hovers.size(), [&](std::size_t i) {
          return chooser.read(hovers[i].text, hovers[i].index, all);
        }));

  // The other languages: every position of the paragraph, repeated up to the count.
  for (const auto& sample : kSamples) {
    const std::u16string text = *vesko::text::fromUtf8(sample.text);
    vesko::Snapshot snapshot = studyingAll();
    snapshot.zh = std::string_view(sample.language) == "ja" ? false : snapshot.zh;
    const std::size_t calls = std::max<std::size_t>(text.size(), positions / 10);
    print(sample.language, timeCalls(calls, [&](std::size_t i) {
            return chooser.read(text, static_cast<std::ptrdiff_t>(i % text.size()), snapshot);
          }));
  }
  auto memory = vesko::bench::processMemory();
  std::printf("resident memory, all languages loaded: %.1f MB\n", memory.rssMb);
  return 0;
}
