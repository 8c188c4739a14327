#pragma once
// The desktop app's event trace: with VESKO_TRACE=FILE, one JSON object a line for each thing
// the learner would notice (a bubble shown, a word kept, a card graded, the hover switched), so
// that tests and scripts can follow the app without reading its windows. Each line carries
// "event" and "t" (milliseconds since the Unix epoch) beside the event's own fields.
// Thread contract: main thread only.

#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>

#include <nlohmann/json.hpp>

namespace vesko::desktop {

class Trace {
 public:
  // Off when `file` is nothing; a file that cannot be opened is reported once on stderr and the
  // trace stays off.
  explicit Trace(std::optional<std::filesystem::path> file);
  Trace(const Trace&) = delete;
  Trace& operator=(const Trace&) = delete;

  bool on() const { return file_ != nullptr; }
  // Appends {"event": name, "t": …, …fields} and flushes, so a reader sees it at once.
  void event(std::string_view name, nlohmann::json fields = nlohmann::json::object());

 private:
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  std::unique_ptr<std::FILE, Close> file_;
};

}  // namespace vesko::desktop
