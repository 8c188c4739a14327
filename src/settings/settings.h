#pragma once
// The learner's preferences: a flat key-value store kept in settings.json (sorted keys, written
// whole and atomically) that every subsystem reads through typed getters whose defaults come from
// kSettingKeys. Created once in main and handed to whoever reads it.
// Thread contract: every member is safe from any thread. Reads see one published state as a
// whole and see a change at the next read; writes are serialised, and a write made by another
// process (the command line beside the desktop app) is re-read under a lock before ours is
// applied, so that neither loses the other's keys.

#include <atomic>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <shared_mutex>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "settings/clock.h"
#include "settings/setting_keys.h"

namespace vesko {

// A small object of numbers, as the AI usage records are.
using SettingRecord = std::map<std::string, double, std::less<>>;
using SettingValue = std::variant<bool, long long, double, std::string, SettingRecord>;

enum class SettingsError {
  unknownKey,   // not in kSettingKeys
  wrongType,    // the value's type is not the key's
  unreadable,   // the file exists but could not be read (not decoded: read): it is left alone
  writeFailed,  // the folder, the lock or the file could not be written
};

// The value of `text` for `row`'s type: "true"/"false" (also 1/0, yes/no, on/off) for booleans,
// whole numbers, finite reals, any text, a JSON object of numbers for records.
std::expected<SettingValue, std::string> parseSettingValue(const SettingKey& row,
                                                           std::string_view text);
// The value as JSON text ("0.1", "true", "\"auto\"", "{\"calls\":1.0}").
std::string settingJson(const SettingValue& value);
SettingValue defaultValue(const SettingKey& row);

class Settings {
 public:
  // Reads `file` when it exists. A file that cannot be decoded is set aside (see setAsideFile) and
  // the defaults apply. `clock` dates the set-aside copy and must outlive the store.
  Settings(std::filesystem::path file, const Clock& clock);
  ~Settings();
  Settings(const Settings&) = delete;
  Settings& operator=(const Settings&) = delete;

  const std::filesystem::path& file() const { return file_; }
  // Where the last undecodable file was moved, for the log line and the learner's notice.
  std::optional<std::filesystem::path> setAsideFile() const;

  // The stored value when it has the getter's type, else the key's default (zero for a key that
  // is in no row of kSettingKeys).
  bool flag(std::string_view key) const;
  long long integer(std::string_view key) const;
  double real(std::string_view key) const;
  std::string text(std::string_view key) const;
  SettingRecord record(std::string_view key) const;

  // The value as stored, typed by the key's row; nothing when absent, unknown or of another type.
  std::optional<SettingValue> stored(std::string_view key) const;
  // Every stored key that kSettingKeys knows, in key order.
  std::vector<std::pair<std::string, SettingValue>> storedValues() const;

  // Each write re-reads the file if it changed since, applies the change and writes the file, all
  // under an advisory lock on settings.json.lock beside it.
  std::expected<void, SettingsError> set(std::string_view key, SettingValue value);
  std::expected<void, SettingsError> remove(std::string_view key);
  // Read-modify-write of one key in the same locked step (counters, usage records): `change`
  // gets the current value and returns the new one, nothing to remove the key.
  using Change = std::function<std::optional<SettingValue>(std::optional<SettingValue> current)>;
  std::expected<void, SettingsError> update(std::string_view key, const Change& change);
  // The same for keys that only make sense together (a day and that day's count): `change` gets
  // the current value of each key, in the order given, and returns their new values in that order.
  using Changes = std::function<std::vector<std::optional<SettingValue>>(
      std::vector<std::optional<SettingValue>> current)>;
  std::expected<void, SettingsError> update(std::span<const std::string_view> keys,
                                            const Changes& change);

  // A value for this run only, above the file and never written (`vesko tr --ui en`).
  void overrideForRun(std::string_view key, SettingValue value);

  // Picks up a change another process wrote; true when the file had changed.
  bool reloadIfChanged();

  // Grows with every change a reader could see. A hot path may keep a value it read together
  // with the generation it read first, and reuse it while the generation stays the same.
  std::uint64_t generation() const { return generation_.load(std::memory_order_acquire); }

  // Details of the implementation, named here for the helpers of settings.cpp.
  struct Snapshot;
  struct FileStamp {
    bool exists = false;
    unsigned long long device = 0, inode = 0, size = 0;
    long long modifiedNs = 0, changedNs = 0;
    bool operator==(const FileStamp&) const = default;
  };

 private:
  std::shared_ptr<const Snapshot> snapshot() const;
  std::optional<SettingValue> storedAs(std::string_view key, SettingKind kind) const;
  template <typename T>
  T read(std::string_view key) const;
  // Under writeMutex_ and the file lock.
  void readFileLocked();
  void publishLocked();

  const std::filesystem::path file_;
  const Clock& clock_;

  std::atomic<std::uint64_t> generation_{0};  // raised after each publication
  mutable std::shared_mutex publishedMutex_;
  std::shared_ptr<const Snapshot> published_;  // guarded by publishedMutex_

  mutable std::mutex writeMutex_;
  std::shared_ptr<const Snapshot> fromFile_;       // guarded by writeMutex_: the file's values only
  std::shared_ptr<const Snapshot> overrides_;      // guarded by writeMutex_
  FileStamp stamp_;                                // guarded by writeMutex_: the file as last read
  bool unreadable_ = false;                        // guarded by writeMutex_
  std::optional<std::filesystem::path> setAside_;  // guarded by writeMutex_
};

}  // namespace vesko
