#pragma once
// The diagnostic log: one-line French messages from every stage of the pipeline ("survol :
// recherche sans réponse depuis 4 s → on repart"), kept in memory (the last 400, which a problem
// report attaches) and, while the `debugLog` setting is on, appended to debug.log in the state
// folder. Created once in main and handed to whoever writes to it.
// Thread contract: `log` and `recent` from any thread. `log` never waits for the disk: the log
// owns one worker thread that appends to the record and writes the file, in call order. File
// errors are swallowed; the record is kept whatever happens to the file.

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "settings/clock.h"
#include "settings/settings.h"

namespace vesko {

class Log {
 public:
  static constexpr std::size_t kMaxEntries = 400;
  // A file larger than this is deleted before the next line, so the journal starts afresh rather
  // than being trimmed.
  static constexpr std::uintmax_t kMaxFileBytes = 300'000;

  // `settings` and `clock` must outlive the log; the clock is read on the caller's thread and
  // on the worker.
  Log(std::filesystem::path file, const Settings& settings, const Clock& clock);
  // Finishes what was logged, then stops the worker.
  ~Log();
  Log(const Log&) = delete;
  Log& operator=(const Log&) = delete;

  void log(std::string message);
  // The recorded entries made at or after `since`, oldest first, each as "HH:mm:ss  message",
  // joined with newlines. Includes every `log` call that returned before this call.
  std::string recent(TimePoint since) const;
  // Where the file is, for "Ouvrir debug.log".
  const std::filesystem::path& logFileURL() const { return file_; }
  // Returns once everything logged before the call has been recorded and written.
  void flush() const;

 private:
  struct Entry {
    TimePoint time;
    std::string message;
    bool toFile;
  };

  // While lines come, the worker looks for them every kPoll; after kPollsBeforeSleep empty
  // looks it sleeps until a line wakes it.
  static constexpr std::chrono::milliseconds kPoll{25};
  static constexpr int kPollsBeforeSleep = 40;

  bool fileSwitch();
  void run();
  void record(Entry entry);
  void writeLine(const Entry& entry) const;

  const std::filesystem::path file_;
  const Settings& settings_;
  const Clock& clock_;

  mutable std::mutex queueMutex_;
  mutable std::condition_variable work_;
  mutable std::condition_variable done_;
  std::vector<Entry> pending_;   // guarded by queueMutex_
  std::uint64_t queued_ = 0;     // guarded by queueMutex_: entries ever handed to the worker
  std::uint64_t processed_ = 0;  // guarded by queueMutex_: entries the worker has finished
  bool idle_ = false;            // guarded by queueMutex_: the worker sleeps until woken
  bool stopping_ = false;        // guarded by queueMutex_

  mutable std::mutex recordMutex_;
  std::deque<Entry> record_;  // guarded by recordMutex_

  // The `debugLog` switch as last read, with the settings generation it was read at (generation
  // << 1 | switch), so that a call reads one atomic instead of the settings while nothing changed.
  std::atomic<std::uint64_t> switchCache_{~std::uint64_t{0}};

  std::thread worker_;  // last: starts once everything above exists
};

// For a process that did not write the log itself (the command line): the lines of `file` whose
// time of day lies within `window` before now, found from the end of the file backwards. The
// file's lines carry no date, so a file untouched for longer than the window gives nothing.
std::string recentFileLines(const std::filesystem::path& file, std::chrono::seconds window,
                            const Clock& clock);

}  // namespace vesko
