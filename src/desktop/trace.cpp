#include "desktop/trace.h"

#include <chrono>
#include <iostream>
#include <string>

namespace vesko::desktop {

Trace::Trace(std::optional<std::filesystem::path> file) {
  if (!file || file->empty()) return;
  file_.reset(std::fopen(file->c_str(), "a"));
  if (!file_) std::cerr << "vesko-desktop: cannot write the trace to " << file->string() << '\n';
}

void Trace::event(std::string_view name, nlohmann::json fields) {
  if (!file_) return;
  if (!fields.is_object()) fields = nlohmann::json::object();
  fields["event"] = name;
  fields["t"] = std::chrono::duration_cast<std::chrono::milliseconds>(
                    std::chrono::system_clock::now().time_since_epoch())
                    .count();
  // Words read off the screen may be broken UTF-8: replaced, never a throw.
  const std::string line =
      fields.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) + '\n';
  std::fwrite(line.data(), 1, line.size(), file_.get());
  std::fflush(file_.get());
}

}  // namespace vesko::desktop
