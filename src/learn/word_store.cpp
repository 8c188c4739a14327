#include "learn/word_store.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <limits>
#include <utility>

#include "dict/lowercase.h"
#include "learn/saved_word_json.h"
#include "learn/uuid.h"

namespace vesko {
namespace {

std::filesystem::path lockPath(const std::filesystem::path& file) {
  return file.parent_path() / (file.filename().string() + ".lock");
}

// Invalid UTF-8 lower-cases to nothing; such a word then matches only itself.
std::string matchKey(std::string_view word) {
  std::string key = lowercased(word);
  if (key.empty() && !word.empty()) return std::string(word);
  return key;
}

// A counter that would pass the largest integer stays there: a corrupt count must not take the
// program down.
long long raised(std::optional<long long> value, long long absentAs) {
  long long current = value.value_or(absentAs);
  return current == std::numeric_limits<long long>::max() ? current : current + 1;
}

// The match rule over a list, const or not.
template <typename Words>
auto findMatch(Words& words, std::string_view word, std::string_view lang) {
  const std::string key = matchKey(word);
  return std::find_if(words.begin(), words.end(), [&](const SavedWord& saved) {
    return saved.lang == lang && matchKey(saved.word) == key;
  });
}

enum class ReadOutcome { missing, unreadable, read };

ReadOutcome readWhole(const std::filesystem::path& file, std::string& text) {
  std::ifstream in(file, std::ios::binary | std::ios::ate);
  if (!in) return errno == ENOENT ? ReadOutcome::missing : ReadOutcome::unreadable;
  const std::streamoff size = in.tellg();
  if (size < 0) return ReadOutcome::unreadable;
  text.resize(static_cast<std::size_t>(size));
  in.seekg(0);
  in.read(text.data(), size);
  // A file that shrank while it was read is read as far as it went; it will not decode.
  text.resize(static_cast<std::size_t>(in.gcount()));
  return in.bad() ? ReadOutcome::unreadable : ReadOutcome::read;
}

// A writer killed between creating its temporary file and renaming it leaves the file behind
// (".mots.json.Ab12Cd", see writeFileAtomically). Every writer of the store holds its lock while
// its temporary file exists, so under the lock any such file is a leftover.
void removeLeftovers(const std::filesystem::path& file) {
  const std::string prefix = "." + file.filename().string() + ".";
  std::error_code error;
  for (std::filesystem::directory_iterator entry(file.parent_path(), error), end;
       !error && entry != end; entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    if (name.size() == prefix.size() + 6 && name.starts_with(prefix)) {
      std::error_code ignored;
      std::filesystem::remove(entry->path(), ignored);
    }
  }
}

}  // namespace

WordStore::WordStore(std::filesystem::path file, const Clock& clock, Log& log, const Loc& loc)
    : file_(std::move(file)), clock_(clock), log_(log), loc_(loc) {
  // Without the folder there is no file to read, and no lock file is made for nothing.
  std::error_code error;
  if (!std::filesystem::exists(file_.parent_path(), error)) return;
  FileLock lock(lockPath(file_));
  if (lock.held()) removeLeftovers(file_);
  readLocked();
}

WordStore::~WordStore() {
  flush();
}

std::optional<SavedWord> WordStore::lookup(std::string_view word, std::string_view lang) const {
  auto found = findMatch(words_, word, lang);
  if (found == words_.end()) return std::nullopt;
  return *found;
}

std::optional<SavedWord> WordStore::byId(std::string_view id) const {
  auto found = std::find_if(words_.begin(), words_.end(),
                            [&](const SavedWord& saved) { return saved.id == id; });
  if (found == words_.end()) return std::nullopt;
  return *found;
}

KeepResult WordStore::keep(SavedWord fresh) {
  KeepResult result{{}, false};
  mutate([&](std::vector<SavedWord>& words) {
    auto found = findMatch(words, fresh.word, fresh.lang);
    if (found != words.end()) {
      SavedWord kept = std::move(*found);
      words.erase(found);
      kept.hits = raised(kept.hits, 1);
      kept.lastSeen = storeDate(clock_.now());
      words.insert(words.begin(), std::move(kept));
      result = {words.front(), false};
      return true;
    }
    fresh.id = newUuid();
    fresh.date = storeDate(clock_.now());
    fresh.hits.reset();
    words.insert(words.begin(), std::move(fresh));
    result = {words.front(), true};
    return true;
  });
  return result;
}

std::optional<long long> WordStore::keepAgain(std::string_view word, std::string_view lang) {
  std::optional<long long> hits;
  mutate([&](std::vector<SavedWord>& words) {
    auto found = findMatch(words, word, lang);
    if (found == words.end()) return false;
    SavedWord kept = std::move(*found);
    words.erase(found);
    kept.hits = raised(kept.hits, 1);
    kept.lastSeen = storeDate(clock_.now());
    hits = kept.hits;
    words.insert(words.begin(), std::move(kept));
    return true;
  });
  return hits;
}

std::optional<long long> WordStore::markSeen(std::string_view word, std::string_view lang) {
  // Another program may have kept or removed the word since; a stat per sighting is cheap.
  reloadIfChanged();
  auto found = findMatch(words_, word, lang);
  if (found == words_.end()) return std::nullopt;
  const StoreDate now = storeDate(clock_.now());
  found->seen = raised(found->seen, 0);
  found->lastSeen = now;
  unwritten_.push_back({std::string(word), std::string(lang), now});
  saveDue_ = clock_.now() + kSightingSaveDelay;
  return found->hits.value_or(1);
}

std::optional<long long> WordStore::removeOnce(std::string_view word, std::string_view lang) {
  std::optional<long long> remaining;
  mutate([&](std::vector<SavedWord>& words) {
    auto found = findMatch(words, word, lang);
    if (found == words.end()) return false;
    if (found->hits.value_or(1) < 2) {
      words.erase(found);
      remaining = 0;
    } else {
      remaining = *found->hits - 1;
      found->hits = remaining;
    }
    return true;
  });
  return remaining;
}

void WordStore::fillReading(std::string_view word, std::string_view lang,
                            std::string_view reading) {
  if (reading.empty()) return;
  mutate([&](std::vector<SavedWord>& words) {
    auto found = std::find_if(words.begin(), words.end(), [&](const SavedWord& saved) {
      return saved.word == word && saved.lang == lang;
    });
    if (found == words.end() || !found->pinyin.empty()) return false;
    found->pinyin = reading;
    return true;
  });
}

bool WordStore::change(const std::string& id, const std::function<void(SavedWord&)>& change) {
  bool found = false;
  mutate([&](std::vector<SavedWord>& words) {
    auto record = std::find_if(words.begin(), words.end(),
                               [&](const SavedWord& saved) { return saved.id == id; });
    if (record == words.end()) return false;
    change(*record);
    record->id = id;
    found = true;
    return true;
  });
  return found;
}

void WordStore::saveNow() {
  mutate([](std::vector<SavedWord>&) { return true; });
}

bool WordStore::flushIfDue() {
  if (!saveDue_ || clock_.now() < *saveDue_) return false;
  flush();
  return true;
}

void WordStore::flush() {
  if (!saveDue_) return;
  saveDue_.reset();
  saveNow();
}

std::optional<std::string> WordStore::pendingNotice() {
  if (!notice_) return std::nullopt;
  std::string text = "⚠️ " +
                     loc_.t("Un fichier de données était illisible ; une copie a été gardée :") +
                     " " + *notice_;
  notice_.reset();
  return text;
}

bool WordStore::reloadIfChanged() {
  if (fileStamp(file_) == stamp_) return false;
  FileLock lock(lockPath(file_));
  readLocked();
  return true;
}

bool WordStore::mutate(const std::function<bool(std::vector<SavedWord>&)>& edit) {
  FileLock lock(lockPath(file_));
  if (!lock.held()) {
    // Without the lock the edit is still made, for this program's views; the write that would
    // risk another program's change is not.
    bool changed = edit(words_);
    if (changed) {
      writeError_ = "mots.json.lock : verrou impossible";
      log_.log("mots : " + *writeError_ + " → rien d'écrit");
    }
    return false;
  }
  if (fileStamp(file_) != stamp_) readLocked();
  if (!edit(words_)) return false;
  return writeLocked();
}

void WordStore::readLocked() {
  stamp_ = fileStamp(file_);
  std::string text;
  switch (readWhole(file_, text)) {
    case ReadOutcome::missing:
      unreadable_ = false;
      words_.clear();
      break;
    case ReadOutcome::unreadable:
      unreadable_ = true;
      words_.clear();
      log_.log("mots : " + file_.filename().string() + " ne peut pas être lu → laissé tel quel");
      break;
    case ReadOutcome::read:
      unreadable_ = false;
      if (auto decoded = decodeWords(text)) {
        words_ = std::move(*decoded);
      } else {
        words_.clear();
        setAsideLocked(decoded.error());
      }
      break;
  }
  // Sightings not yet written were made on the list as it was; they are made again on the list
  // as it is now, where their words may have moved or gone.
  for (const auto& sighting : unwritten_) {
    auto found = findMatch(words_, sighting.word, sighting.lang);
    if (found == words_.end()) continue;
    found->seen = raised(found->seen, 0);
    found->lastSeen = std::max(found->lastSeen.value_or(sighting.when), sighting.when);
  }
}

void WordStore::setAsideLocked(const std::string& reason) {
  log_.log("mots : " + file_.filename().string() + " ne se décode pas (" + reason + ")");
  std::string name;
  if (auto moved = setAside(file_, clock_)) {
    name = moved->filename().string();
    stamp_ = fileStamp(file_);
  } else {
    // The broken file is still where the next save would write: it is kept from being replaced.
    unreadable_ = true;
    name = file_.stem().string() + ".broken-" + minuteStamp(clock_, clock_.now()) +
           file_.extension().string();
    log_.log("mots : mise de côté impossible (" + moved.error().message() + ")");
  }
  log_.log("fichier illisible mis de côté : " + name);
  notice_ = name;
}

bool WordStore::writeLocked() {
  if (unreadable_) {
    writeError_ = file_.filename().string() + " : fichier illisible, laissé tel quel";
    log_.log("mots : " + *writeError_ + " → rien d'écrit");
    return false;
  }
  auto written = writeFileAtomically(file_, encodeWords(words_));
  if (!written) {
    writeError_ = file_.filename().string() + " : " + written.error().message();
    log_.log("mots : écriture impossible : " + *writeError_);
    return false;
  }
  writeError_.reset();
  unwritten_.clear();
  stamp_ = fileStamp(file_);
  return true;
}

}  // namespace vesko
