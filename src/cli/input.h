#pragma once
// Reading what the command line is given: TEXT arguments ("-" for standard input), numbers, and
// the dictionary files. Failures are one-line messages for stderr. Main thread only.

#include <expected>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "dict/cedict.h"

namespace vesko::cli {

// A command's failure: the message printed after "vesko: ", and exit code 2.
struct Failure {
  std::string message;
};

// Prints "vesko: " and the message on stderr; returns the exit code 2.
int fail(const Failure& failure);

// The TEXT argument as UTF-16; "-" reads standard input, without its final line break.
std::expected<std::u16string, Failure> readText(const std::string& argument);
std::expected<long long, Failure> parseInteger(std::string_view text, std::string_view what);

struct DictionaryFiles {
  std::string cedict;  // empty: the installed resource
  std::string unihan;  // empty: the installed resource, if any
};
std::expected<std::unique_ptr<CEDict>, Failure> loadDictionary(const DictionaryFiles& files);

}  // namespace vesko::cli
