#pragma once
// The learner's kept words, newest first, and mots.json, the one file they live in. Created once
// by the program (the desktop app or a `vesko` command) and handed to the views, the review and
// the export. Thread contract: main thread only; the store takes no lock of its own, only the
// file's.
//
// Every change is made under an advisory lock on mots.json.lock beside the file: the file is read
// again when it changed on disk since this store last read or wrote it, the change is applied and
// the whole file is written atomically. So two programs changing the store at once (the desktop
// app and a `vesko keep`) lose nothing of each other's, and a crash leaves the old or the new
// file. Sightings are the exception: they come at hover speed, so they change the list at once
// but are written together 5 seconds after the last one. The owner drives that deferred save: it
// calls flushIfDue() from its main loop (or a timer set to saveDue()), and flush() before it exits
// and when SIGTERM or SIGINT arrives (see exit_signals.h). The destructor flushes too.

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "learn/saved_word.h"
#include "settings/clock.h"
#include "settings/data_safety.h"
#include "settings/loc.h"
#include "settings/log.h"

namespace vesko {

// A sighting's deferred save waits this long after the last sighting.
inline constexpr std::chrono::seconds kSightingSaveDelay{5};

struct KeepResult {
  SavedWord word;  // the record as stored after the keep
  bool added;      // a new record, rather than one kept again
};

class WordStore {
 public:
  // Loads `file` (mots.json): a missing or unreadable file gives an empty list silently (an
  // unreadable one, say for its permissions, is then never written over); a file that does not
  // decode gives an empty list and is set aside under a dated "broken-" name, with a
  // log line and a notice for the learner (pendingNotice). Everything given must outlive the
  // store.
  WordStore(std::filesystem::path file, const Clock& clock, Log& log, const Loc& loc);
  // Writes a pending deferred save.
  ~WordStore();
  WordStore(const WordStore&) = delete;
  WordStore& operator=(const WordStore&) = delete;

  const std::filesystem::path& file() const { return file_; }
  // The list as last read or changed, newest first.
  const std::vector<SavedWord>& words() const { return words_; }

  // The match rule: the first record whose `lang` is `lang` exactly and whose `word`, lower-cased,
  // is `word` lower-cased.
  std::optional<SavedWord> lookup(std::string_view word, std::string_view lang) const;
  std::optional<SavedWord> byId(std::string_view id) const;

  // Keeps `fresh`: when a record matches its word and language, that record is kept again (see
  // keepAgain) and `fresh`'s other fields are dropped; otherwise `fresh` is added at the top with
  // a new id, today's date and no `hits`.
  KeepResult keep(SavedWord fresh);
  // `hits` + 1, `lastSeen` now, moved to the top, saved. The new `hits`; nothing if not kept.
  std::optional<long long> keepAgain(std::string_view word, std::string_view lang);
  // `seen` + 1 and `lastSeen` now, saved kSightingSaveDelay later. The word's `hits` (absent
  // counts as 1); nothing if not kept.
  std::optional<long long> markSeen(std::string_view word, std::string_view lang);
  // Lowers `hits` by one, or deletes the record when `hits` is absent or below 2; saved. The
  // remaining `hits` (0 when deleted); nothing if not kept.
  std::optional<long long> removeOnce(std::string_view word, std::string_view lang);
  // Sets the reading of the first record whose word and language are exactly these, when it has
  // none yet; saved. An empty reading does nothing.
  void fillReading(std::string_view word, std::string_view lang, std::string_view reading);
  // Applies `change` to the record `id` and saves at once (the review's grading). False when no
  // record has that id. `change` must not alter `id`.
  bool change(const std::string& id, const std::function<void(SavedWord&)>& change);

  // Writes the list now (deferred sightings included).
  void saveNow();
  // When the deferred save is due; nothing when none is pending.
  std::optional<TimePoint> saveDue() const { return saveDue_; }
  // Writes when the deferred save's time has come; true when it wrote.
  bool flushIfDue();
  // Writes a pending deferred save now.
  void flush();

  // "⚠️ Un fichier de données était illisible ; une copie a été gardée :
  // mots.broken-….json" in the interface language, once, after a file was set aside; nothing
  // otherwise. The caller shows it.
  std::optional<std::string> pendingNotice();

  // Why the last write failed ("mots.json : Permission denied"), until a write succeeds. A failed
  // write leaves the file as it was and the change in memory; the next save tries again.
  const std::optional<std::string>& writeError() const { return writeError_; }

  // Picks up a change another program wrote; true when the file had changed.
  bool reloadIfChanged();

 private:
  struct Sighting {
    std::string word;
    std::string lang;
    StoreDate when;
  };
  // Applies `edit` to the list under the file lock, after reading the file again if it changed,
  // and writes it when `edit` returns true. False when nothing changed or the write failed.
  bool mutate(const std::function<bool(std::vector<SavedWord>&)>& edit);
  // Under the file lock. Reads the file into words_ and replays the sightings not yet written.
  void readLocked();
  bool writeLocked();
  void setAsideLocked(const std::string& reason);

  const std::filesystem::path file_;
  const Clock& clock_;
  Log& log_;
  const Loc& loc_;

  std::vector<SavedWord> words_;
  FileStamp stamp_;  // the file as it was when last read or written
  // The file exists but cannot be read (permissions): it is never replaced.
  bool unreadable_ = false;
  std::vector<Sighting> unwritten_;  // sightings applied to words_ but not yet in the file
  std::optional<TimePoint> saveDue_;
  std::optional<std::string> notice_;  // the set-aside copy's name, until pendingNotice
  std::optional<std::string> writeError_;
};

}  // namespace vesko
