#include "cli/input.h"

#include <fmt/format.h>

#include <charconv>
#include <iostream>
#include <iterator>

#include "settings/resources.h"
#include "text/unicode.h"

namespace vesko::cli {

int fail(const Failure& failure) {
  std::cerr << "vesko: " << failure.message << '\n';
  return 2;
}

std::expected<std::u16string, Failure> readText(const std::string& argument) {
  std::string bytes = argument;
  if (argument == "-") {
    bytes.assign(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
    if (bytes.ends_with('\n')) bytes.pop_back();
    if (bytes.ends_with('\r')) bytes.pop_back();
  }
  auto text = text::fromUtf8(bytes);
  if (!text) return std::unexpected(Failure{"the text is not valid UTF-8"});
  return *text;
}

std::expected<long long, Failure> parseInteger(std::string_view text, std::string_view what) {
  long long value = 0;
  auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || text.empty())
    return std::unexpected(Failure{fmt::format("{} must be a whole number, not \"{}\"", what, text)});
  return value;
}

std::expected<std::unique_ptr<CEDict>, Failure> loadDictionary(const DictionaryFiles& files) {
  std::filesystem::path cedict = files.cedict;
  if (cedict.empty()) {
    cedict = Resources::find("cedict", "txt");
    if (cedict.empty())
      return std::unexpected(Failure{fmt::format(
          "the Chinese dictionary is missing ({}): run scripts/fetch-data, or pass --cedict FILE",
          Resources::expected("cedict", "txt").string())});
  }
  std::filesystem::path unihan = files.unihan;
  std::error_code error;
  if (unihan.empty()) {
    unihan = Resources::find("unihan", "tsv");
  } else if (!std::filesystem::is_regular_file(unihan, error)) {
    return std::unexpected(Failure{fmt::format("cannot read {}", unihan.string())});
  }

  auto dictionary = std::make_unique<CEDict>();
  auto stats = dictionary->load(cedict, unihan);
  if (!stats) {
    switch (stats.error()) {
      case LoadError::unreadable:
        return std::unexpected(Failure{fmt::format("cannot read {}", cedict.string())});
      case LoadError::invalidUtf8:
        return std::unexpected(Failure{fmt::format("{} is not valid UTF-8", cedict.string())});
      case LoadError::alreadyLoaded:
        break;
    }
  }
  return dictionary;
}

}  // namespace vesko::cli
