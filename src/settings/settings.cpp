#include "settings/settings.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>

#include "settings/data_safety.h"

namespace vesko {

using nlohmann::json;

struct Settings::Snapshot {
  json values = json::object();
};

namespace {

Settings::FileStamp stampOf(const std::filesystem::path& file) {
  struct stat info {};
  if (::stat(file.c_str(), &info) != 0) return {};
  return {true,
          static_cast<unsigned long long>(info.st_dev),
          static_cast<unsigned long long>(info.st_ino),
          static_cast<unsigned long long>(info.st_size),
          info.st_mtim.tv_sec * 1'000'000'000LL + info.st_mtim.tv_nsec,
          info.st_ctim.tv_sec * 1'000'000'000LL + info.st_ctim.tv_nsec};
}

std::filesystem::path lockPath(const std::filesystem::path& file) {
  return file.parent_path() / (file.filename().string() + ".lock");
}

std::optional<SettingValue> typed(const json& value, SettingKind kind) {
  switch (kind) {
    case SettingKind::boolean:
      if (value.is_boolean()) return value.get<bool>();
      if (value.is_number()) return value.get<double>() != 0;
      return std::nullopt;
    case SettingKind::integer:
      if (value.is_number_integer()) return value.get<long long>();
      if (value.is_number_float()) {
        double number = value.get<double>();
        if (std::isfinite(number) && std::fabs(number) < 9e15)
          return static_cast<long long>(number);
        return std::nullopt;
      }
      if (value.is_boolean()) return static_cast<long long>(value.get<bool>());
      return std::nullopt;
    case SettingKind::real:
      if (value.is_number()) return value.get<double>();
      if (value.is_boolean()) return value.get<bool>() ? 1.0 : 0.0;
      return std::nullopt;
    case SettingKind::text:
      if (value.is_string()) return value.get<std::string>();
      return std::nullopt;
    case SettingKind::record: {
      if (!value.is_object()) return std::nullopt;
      SettingRecord record;
      for (const auto& [field, number] : value.items())
        if (number.is_number()) record.emplace(field, number.get<double>());
      return record;
    }
  }
  return std::nullopt;
}

json toJson(const SettingValue& value) {
  return std::visit(
      [](const auto& v) -> json {
        using T = std::decay_t<decltype(v)>;
        if constexpr (std::is_same_v<T, SettingRecord>) {
          json object = json::object();
          for (const auto& [field, number] : v) object[field] = number;
          return object;
        } else {
          return json(v);
        }
      },
      value);
}

// The value in the key's own type: an integer given for a real key is widened; nothing when the
// types do not agree.
std::optional<SettingValue> fitted(const SettingKey& row, SettingValue value) {
  switch (row.kind) {
    case SettingKind::boolean:
      if (std::holds_alternative<bool>(value)) return value;
      break;
    case SettingKind::integer:
      if (std::holds_alternative<long long>(value)) return value;
      break;
    case SettingKind::real:
      if (std::holds_alternative<double>(value)) return value;
      if (auto* whole = std::get_if<long long>(&value)) return static_cast<double>(*whole);
      break;
    case SettingKind::text:
      if (std::holds_alternative<std::string>(value)) return value;
      break;
    case SettingKind::record:
      if (std::holds_alternative<SettingRecord>(value)) return value;
      break;
  }
  return std::nullopt;
}

std::string lowered(std::string_view text) {
  std::string out(text);
  for (char& c : out)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return out;
}

enum class ReadResult { absent, decoded, undecodable, unreadable };

ReadResult readJsonObject(const std::filesystem::path& file, json& out) {
  int fd = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return errno == ENOENT ? ReadResult::absent : ReadResult::unreadable;
  std::string content;
  char buffer[16384];
  for (;;) {
    ssize_t n = ::read(fd, buffer, sizeof buffer);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) {
      ::close(fd);
      return ReadResult::unreadable;
    }
    if (n == 0) break;
    content.append(buffer, static_cast<std::size_t>(n));
  }
  ::close(fd);
  json parsed = json::parse(content, nullptr, /*allow_exceptions=*/false);
  if (parsed.is_discarded() || !parsed.is_object()) return ReadResult::undecodable;
  out = std::move(parsed);
  return ReadResult::decoded;
}

}  // namespace

std::expected<SettingValue, std::string> parseSettingValue(const SettingKey& row,
                                                           std::string_view text) {
  switch (row.kind) {
    case SettingKind::boolean: {
      auto word = lowered(text);
      if (word == "true" || word == "1" || word == "yes" || word == "on") return true;
      if (word == "false" || word == "0" || word == "no" || word == "off") return false;
      return std::unexpected("expected true or false, not '" + std::string(text) + "'");
    }
    case SettingKind::integer: {
      long long number = 0;
      auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
      if (text.empty() || error != std::errc() || end != text.data() + text.size())
        return std::unexpected("expected a whole number, not '" + std::string(text) + "'");
      return number;
    }
    case SettingKind::real: {
      double number = 0;
      auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
      if (text.empty() || error != std::errc() || end != text.data() + text.size() ||
          !std::isfinite(number))
        return std::unexpected("expected a number, not '" + std::string(text) + "'");
      return number;
    }
    case SettingKind::text:
      return std::string(text);
    case SettingKind::record: {
      json parsed = json::parse(text, nullptr, false);
      bool numbers = parsed.is_object();
      if (numbers)
        for (const auto& field : parsed) numbers = numbers && field.is_number();
      if (!numbers)
        return std::unexpected("expected a JSON object of numbers, not '" + std::string(text) +
                               "'");
      return *typed(parsed, SettingKind::record);
    }
  }
  return std::unexpected(std::string("unknown type"));
}

std::string settingJson(const SettingValue& value) {
  return toJson(value).dump(-1, ' ', false, json::error_handler_t::replace);
}

SettingValue defaultValue(const SettingKey& row) {
  switch (row.kind) {
    case SettingKind::boolean:
      return row.number != 0;
    case SettingKind::integer:
      return static_cast<long long>(row.number);
    case SettingKind::real:
      return row.number;
    case SettingKind::text:
      return std::string(row.text);
    case SettingKind::record:
      return SettingRecord{};
  }
  return false;
}

Settings::Settings(std::filesystem::path file, const Clock& clock)
    : file_(std::move(file)), clock_(clock) {
  std::lock_guard writing(writeMutex_);
  overrides_ = std::make_shared<Snapshot>();
  std::error_code ignored;
  // Without the folder there is no file to read; the lock is taken only when there is.
  if (std::filesystem::is_directory(file_.parent_path(), ignored)) {
    FileLock lock(lockPath(file_));
    readFileLocked();
  } else {
    fromFile_ = std::make_shared<Snapshot>();
  }
  publishLocked();
}

Settings::~Settings() = default;

void Settings::readFileLocked() {
  auto values = std::make_shared<Snapshot>();
  stamp_ = stampOf(file_);
  unreadable_ = false;
  switch (readJsonObject(file_, values->values)) {
    case ReadResult::absent:
    case ReadResult::decoded:
      break;
    case ReadResult::undecodable:
      if (auto moved = setAside(file_, clock_)) {
        setAside_ = *moved;
        stamp_ = stampOf(file_);
      } else {
        unreadable_ = true;  // not moved, so never to be overwritten
      }
      break;
    case ReadResult::unreadable:
      unreadable_ = true;
      break;
  }
  fromFile_ = std::move(values);
}

void Settings::publishLocked() {
  auto merged = std::make_shared<Snapshot>(*fromFile_);
  for (const auto& [key, value] : overrides_->values.items()) merged->values[key] = value;
  {
    std::unique_lock publishing(publishedMutex_);
    published_ = std::move(merged);
  }
  generation_.fetch_add(1, std::memory_order_release);
}

std::shared_ptr<const Settings::Snapshot> Settings::snapshot() const {
  std::shared_lock reading(publishedMutex_);
  return published_;
}

std::optional<std::filesystem::path> Settings::setAsideFile() const {
  std::lock_guard writing(writeMutex_);
  return setAside_;
}

std::optional<SettingValue> Settings::stored(std::string_view key) const {
  const SettingKey* row = findSettingKey(key);
  if (!row) return std::nullopt;
  return storedAs(key, row->kind);
}

std::optional<SettingValue> Settings::storedAs(std::string_view key, SettingKind kind) const {
  std::shared_lock reading(publishedMutex_);
  const json& values = published_->values;
  auto it = values.find(key);
  if (it == values.end()) return std::nullopt;
  return typed(*it, kind);
}

std::vector<std::pair<std::string, SettingValue>> Settings::storedValues() const {
  std::vector<std::pair<std::string, SettingValue>> out;
  auto values = snapshot();
  for (const auto& [key, value] : values->values.items()) {
    const SettingKey* row = findSettingKey(key);
    if (!row) continue;
    if (auto v = typed(value, row->kind)) out.emplace_back(key, std::move(*v));
  }
  return out;
}

template <typename T>
T Settings::read(std::string_view key) const {
  const SettingKey* row = findSettingKey(key);
  if (!row) return T{};
  if (auto value = storedAs(key, row->kind))
    if (const T* typedValue = std::get_if<T>(&*value)) return *typedValue;
  SettingValue fallback = defaultValue(*row);
  if (const T* typedValue = std::get_if<T>(&fallback)) return *typedValue;
  return T{};
}

bool Settings::flag(std::string_view key) const {
  return read<bool>(key);
}
long long Settings::integer(std::string_view key) const {
  return read<long long>(key);
}
double Settings::real(std::string_view key) const {
  return read<double>(key);
}
std::string Settings::text(std::string_view key) const {
  return read<std::string>(key);
}
SettingRecord Settings::record(std::string_view key) const {
  return read<SettingRecord>(key);
}

std::expected<void, SettingsError> Settings::set(std::string_view key, SettingValue value) {
  const SettingKey* row = findSettingKey(key);
  if (!row) return std::unexpected(SettingsError::unknownKey);
  auto fit = fitted(*row, std::move(value));
  if (!fit) return std::unexpected(SettingsError::wrongType);
  return update(key, [&](std::optional<SettingValue>) { return fit; });
}

std::expected<void, SettingsError> Settings::remove(std::string_view key) {
  return update(key, [](std::optional<SettingValue>) { return std::nullopt; });
}

std::expected<void, SettingsError> Settings::update(std::string_view key, const Change& change) {
  const std::string_view keys[] = {key};
  return update(keys, [&](std::vector<std::optional<SettingValue>> current) {
    return std::vector<std::optional<SettingValue>>{change(std::move(current.front()))};
  });
}

std::expected<void, SettingsError> Settings::update(std::span<const std::string_view> keys,
                                                    const Changes& change) {
  std::vector<const SettingKey*> rows;
  for (auto key : keys) {
    const SettingKey* row = findSettingKey(key);
    if (!row) return std::unexpected(SettingsError::unknownKey);
    rows.push_back(row);
  }
  std::lock_guard writing(writeMutex_);
  std::error_code error;
  std::filesystem::create_directories(file_.parent_path(), error);
  if (error) return std::unexpected(SettingsError::writeFailed);
  FileLock lock(lockPath(file_));
  if (!lock.held()) return std::unexpected(SettingsError::writeFailed);

  if (stampOf(file_) != stamp_) readFileLocked();
  if (unreadable_) {
    // A file we could not read may hold the learner's settings: try once more, never overwrite.
    readFileLocked();
    if (unreadable_) return std::unexpected(SettingsError::unreadable);
  }

  json values = fromFile_->values;
  std::vector<std::optional<SettingValue>> current;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    auto& value = current.emplace_back();
    if (auto it = values.find(keys[i]); it != values.end()) value = typed(*it, rows[i]->kind);
  }
  auto next = change(std::move(current));
  if (next.size() != keys.size()) return std::unexpected(SettingsError::wrongType);
  for (std::size_t i = 0; i < keys.size(); ++i) {
    if (next[i]) {
      auto fit = fitted(*rows[i], std::move(*next[i]));
      if (!fit) return std::unexpected(SettingsError::wrongType);
      values[std::string(keys[i])] = toJson(*fit);
    } else {
      values.erase(std::string(keys[i]));
    }
  }

  // nlohmann keeps object keys sorted, so the file is written with sorted keys.
  std::string text = values.dump(2, ' ', false, json::error_handler_t::replace) + "\n";
  if (!writeFileAtomically(file_, text)) return std::unexpected(SettingsError::writeFailed);
  stamp_ = stampOf(file_);
  auto written = std::make_shared<Snapshot>();
  written->values = std::move(values);
  fromFile_ = std::move(written);
  publishLocked();
  return {};
}

void Settings::overrideForRun(std::string_view key, SettingValue value) {
  std::lock_guard writing(writeMutex_);
  auto overrides = std::make_shared<Snapshot>(*overrides_);
  overrides->values[std::string(key)] = toJson(value);
  overrides_ = std::move(overrides);
  publishLocked();
}

bool Settings::reloadIfChanged() {
  std::lock_guard writing(writeMutex_);
  if (stampOf(file_) == stamp_) return false;
  std::error_code ignored;
  if (!std::filesystem::is_directory(file_.parent_path(), ignored)) return false;
  FileLock lock(lockPath(file_));
  readFileLocked();
  publishLocked();
  return true;
}

}  // namespace vesko
