#pragma once
// How the learner's data files are written and how an unreadable one is kept: a file is replaced
// whole through a temporary file in the same folder (written, flushed to disk, renamed over the
// old one), so that a crash leaves either the old or the new file; a file that exists but cannot
// be decoded is moved aside under a dated "broken-" name and never overwritten.
// Stateless; any thread. Two writers of one file must be serialised by the caller.

#include <expected>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "settings/clock.h"

namespace vesko {

// Creates the folder when missing.
std::expected<void, std::error_code> writeFileAtomically(const std::filesystem::path& file,
                                                         std::string_view content);

// mots.json → mots.broken-2025-03-09-1432.json in the same folder ("-2", "-3"… when that name is
// taken within the same minute). Returns the new path.
std::expected<std::filesystem::path, std::error_code> setAside(const std::filesystem::path& file,
                                                               const Clock& clock);

}  // namespace vesko
