// Several programs against one mots.json: killed while saving, keeping at the same time, asked to
// stop with a save pending. The programs are runs of word_store_writer.

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "learn/saved_word_json.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

using namespace std::chrono_literals;

std::string readText(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

// Starts the writer with `arguments`; its standard output goes to `out` when given.
pid_t start(const std::vector<std::string>& arguments, int* out = nullptr) {
  int fds[2] = {-1, -1};
  if (out && ::pipe(fds) != 0) return -1;
  pid_t pid = ::fork();
  if (pid == 0) {
    if (out) {
      ::dup2(fds[1], STDOUT_FILENO);
      ::close(fds[0]);
      ::close(fds[1]);
    }
    std::vector<char*> argv{const_cast<char*>(WORD_STORE_WRITER)};
    for (const auto& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    ::execv(WORD_STORE_WRITER, argv.data());
    ::_exit(127);
  }
  if (out) {
    ::close(fds[1]);
    *out = fds[0];
  }
  return pid;
}

int waitFor(pid_t pid) {
  int status = 0;
  while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
  }
  return status;
}

std::size_t leftovers(const std::filesystem::path& folder) {
  std::size_t count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    const auto name = entry.path().filename().string();
    if (name.starts_with(".mots.json.") || name.find("broken") != std::string::npos) ++count;
  }
  return count;
}

TEST(WordStoreProcessesTest, KilledWhileSavingLeavesTheOldOrTheNewFile) {
  testing::TempDir dir;
  const auto file = dir.path() / "mots.json";
  std::mt19937 random(20250309);
  // Microseconds: the writer starts in about 10 ms, then saves every few milliseconds.
  std::uniform_int_distribution<int> pause(0, 40'000);
  std::size_t previous = 0;
  for (int round = 0; round < 200; ++round) {
    SCOPED_TRACE("round " + std::to_string(round));
    pid_t pid = start({"grow", file.string()});
    ASSERT_GT(pid, 0);
    std::this_thread::sleep_for(std::chrono::microseconds(pause(random)));
    ::kill(pid, SIGKILL);
    int status = waitFor(pid);
    ASSERT_TRUE(WIFSIGNALED(status) || (WIFEXITED(status) && WEXITSTATUS(status) == 0));
    if (!std::filesystem::exists(file)) {
      ASSERT_EQ(previous, 0u);  // killed before its first save
      continue;
    }
    // Each save adds one word at the top of what the file held: a whole file is w<n-1> … w0.
    auto words = decodeWords(readText(file));
    ASSERT_TRUE(words) << words.error();
    ASSERT_GE(words->size(), previous);
    for (std::size_t i = 0; i < words->size(); ++i)
      ASSERT_EQ((*words)[i].word, "w" + std::to_string(words->size() - 1 - i));
    previous = words->size();
  }
  EXPECT_GT(previous, 0u);
  // A killed writer may leave its temporary file; the next one clears it before it writes.
  EXPECT_LE(leftovers(dir.path()), 1u);
}

TEST(WordStoreProcessesTest, TwoProgramsKeepingAtOnceLoseNothing) {
  testing::TempDir dir;
  const auto file = dir.path() / "mots.json";
  pid_t first = start({"keep", file.string(), "a", "500"});
  pid_t second = start({"keep", file.string(), "b", "500"});
  ASSERT_GT(first, 0);
  ASSERT_GT(second, 0);
  for (pid_t pid : {first, second}) {
    int status = waitFor(pid);
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  }
  auto words = decodeWords(readText(file));
  ASSERT_TRUE(words) << words.error();
  std::set<std::string> kept;
  for (const auto& word : *words) kept.insert(word.word);
  EXPECT_EQ(words->size(), 1000u);
  for (int i = 0; i < 500; ++i) {
    EXPECT_TRUE(kept.count("a" + std::to_string(i))) << "a" << i;
    EXPECT_TRUE(kept.count("b" + std::to_string(i))) << "b" << i;
  }
}

TEST(WordStoreProcessesTest, PendingSightingIsWrittenOnSigtermAndSigint) {
  for (int signal : {SIGTERM, SIGINT}) {
    SCOPED_TRACE(signal);
    testing::TempDir dir;
    const auto file = dir.path() / "mots.json";
    pid_t keeper = start({"keep", file.string(), "w", "1"});
    ASSERT_TRUE(WIFEXITED(waitFor(keeper)));

    int out = -1;
    pid_t pid = start({"sight", file.string(), "W0", "en"}, &out);
    ASSERT_GT(pid, 0);
    char ready[6] = {};
    ASSERT_EQ(::read(out, ready, 5), 5);  // "ready": the sighting is made, not yet written
    ::close(out);
    EXPECT_FALSE(decodeWords(readText(file))->front().seen);
    ::kill(pid, signal);
    int status = waitFor(pid);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), signal);
    EXPECT_EQ(decodeWords(readText(file))->front().seen, 1);
  }
}

}  // namespace
}  // namespace vesko
