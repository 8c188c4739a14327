#include "settings/log.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace vesko {
namespace {

// One entry is one line of the file, whatever the message holds.
void flatten(std::string& message) {
  std::replace_if(
      message.begin(), message.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
}

}  // namespace

Log::Log(std::filesystem::path file, const Settings& settings, const Clock& clock)
    : file_(std::move(file)), settings_(settings), clock_(clock), worker_([this] { run(); }) {}

Log::~Log() {
  {
    std::lock_guard lock(queueMutex_);
    stopping_ = true;
  }
  work_.notify_one();
  worker_.join();
}

void Log::log(std::string message) {
  // The switch is read now, as the call is made: lines logged while it was on are written even
  // if it is turned off before the worker reaches them.
  Entry entry{clock_.now(), std::move(message), fileSwitch()};
  bool wake;
  {
    std::lock_guard lock(queueMutex_);
    pending_.push_back(std::move(entry));
    ++queued_;
    wake = std::exchange(idle_, false);
  }
  // Waking a sleeping worker is a system call of several microseconds; while lines keep coming
  // the worker polls instead, and only the first line after a quiet spell pays for the wake.
  if (wake) work_.notify_one();
}

bool Log::fileSwitch() {
  // The generation is read before the switch, so a pair stored here is never newer in name than
  // in value; a pair from an older generation is simply read again.
  const std::uint64_t generation = settings_.generation();
  const std::uint64_t cached = switchCache_.load(std::memory_order_relaxed);
  if (cached >> 1 == generation) return cached & 1;
  const bool on = settings_.flag("debugLog");
  switchCache_.store(generation << 1 | (on ? 1 : 0), std::memory_order_relaxed);
  return on;
}

void Log::run() {
  std::vector<Entry> batch;
  int quietPolls = 0;
  std::unique_lock lock(queueMutex_);
  for (;;) {
    if (pending_.empty()) {
      if (stopping_) return;
      if (quietPolls < kPollsBeforeSleep) {
        work_.wait_for(lock, kPoll);  // flush, recent and the destructor cut it short
        if (pending_.empty()) ++quietPolls;
      } else {
        idle_ = true;
        work_.wait(lock, [&] { return !pending_.empty() || stopping_; });
        idle_ = false;
      }
      continue;
    }
    quietPolls = 0;
    batch.swap(pending_);
    lock.unlock();
    for (auto& entry : batch) {
      flatten(entry.message);
      if (entry.toFile) writeLine(entry);
      record(std::move(entry));
    }
    lock.lock();
    processed_ += batch.size();
    batch.clear();
    done_.notify_all();
  }
}

void Log::record(Entry entry) {
  std::lock_guard lock(recordMutex_);
  if (record_.size() >= kMaxEntries)
    record_.erase(record_.begin(), record_.end() - (kMaxEntries - 1));
  record_.push_back(std::move(entry));
}

void Log::writeLine(const Entry& entry) const {
  std::string line = timeOfDay(clock_, entry.time) + "  " + entry.message + "\n";
  struct stat info {};
  if (::stat(file_.c_str(), &info) == 0 &&
      static_cast<std::uintmax_t>(info.st_size) > kMaxFileBytes)
    ::unlink(file_.c_str());
  int fd = ::open(file_.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
  if (fd < 0 && errno == ENOENT) {
    // A first run: the state folder does not exist yet.
    std::error_code ignored;
    std::filesystem::create_directories(file_.parent_path(), ignored);
    fd = ::open(file_.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
  }
  if (fd < 0) return;
  // One write call per line: with O_APPEND the line lands whole at the end.
  [[maybe_unused]] ssize_t written = ::write(fd, line.data(), line.size());
  ::close(fd);
}

void Log::flush() const {
  std::unique_lock lock(queueMutex_);
  const std::uint64_t target = queued_;
  if (processed_ >= target) return;
  work_.notify_one();  // rather than wait for the worker's next poll
  done_.wait(lock, [&] { return processed_ >= target; });
}

std::string Log::recent(TimePoint since) const {
  flush();
  std::string out;
  std::lock_guard lock(recordMutex_);
  for (const auto& entry : record_) {
    if (entry.time < since) continue;
    if (!out.empty()) out += '\n';
    out += timeOfDay(clock_, entry.time);
    out += "  ";
    out += entry.message;
  }
  return out;
}

namespace {

// Seconds since midnight of a line that starts "HH:mm:ss  "; -1 otherwise.
int secondOfDay(std::string_view line) {
  if (line.size() < 10 || line[2] != ':' || line[5] != ':' || line.substr(8, 2) != "  ") return -1;
  auto number = [&](std::size_t at) {
    char a = line[at], b = line[at + 1];
    if (a < '0' || a > '9' || b < '0' || b > '9') return -1;
    return (a - '0') * 10 + (b - '0');
  };
  int h = number(0), m = number(3), s = number(6);
  if (h < 0 || h > 23 || m < 0 || m > 59 || s < 0 || s > 59) return -1;
  return h * 3600 + m * 60 + s;
}

}  // namespace

std::string recentFileLines(const std::filesystem::path& file, std::chrono::seconds window,
                            const Clock& clock) {
  std::error_code error;
  auto modified = std::filesystem::last_write_time(file, error);
  if (error) return {};
  auto now = clock.now();
  if (now - std::chrono::file_clock::to_sys(modified) > window + std::chrono::seconds(1)) return {};

  std::ifstream in(file, std::ios::binary);
  std::string content((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  std::vector<std::string_view> lines;
  std::string_view rest = content;
  while (!rest.empty()) {
    auto end = rest.find('\n');
    lines.push_back(rest.substr(0, end));
    if (end == std::string_view::npos) break;
    rest.remove_prefix(end + 1);
  }

  constexpr int kDay = 86'400;
  std::string stamp = timeOfDay(clock, now);
  const int nowSecond = secondOfDay(stamp + "  ");
  std::size_t first = lines.size();
  while (first > 0) {
    int second = secondOfDay(lines[first - 1]);
    if (second < 0) break;
    int ago = ((nowSecond - second) % kDay + kDay) % kDay;
    if (ago > window.count()) break;
    --first;
  }
  std::string out;
  for (std::size_t i = first; i < lines.size(); ++i) {
    if (!out.empty()) out += '\n';
    out += lines[i];
  }
  return out;
}

}  // namespace vesko
