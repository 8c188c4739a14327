#pragma once
// Where the data files the program loads (dictionaries, tables) are found: $VESKO_RESOURCES, then
// the source tree's resources/ for a build run in place, then the installed share/vesko.
// Stateless; any thread.

#include <filesystem>
#include <string_view>

namespace vesko {

class Resources {
 public:
  // The folder that holds the resources, or the first candidate when none exists yet.
  static std::filesystem::path folder();
  // The path of a resource by name and type ("cedict", "txt"); empty when missing.
  static std::filesystem::path find(std::string_view name, std::string_view type);
  // The path a resource would have, whether or not it exists (for error messages).
  static std::filesystem::path expected(std::string_view name, std::string_view type);
};

}  // namespace vesko
