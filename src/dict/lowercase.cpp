#include "dict/lowercase.h"

#include <unicode/stringoptions.h>
#include <unicode/ucasemap.h>

#include <memory>

#include "text/unicode.h"

namespace vesko {
namespace {

bool isAsciiLowercase(std::string_view s) {
  for (unsigned char c : s) {
    if (c >= 0x80 || (c >= 'A' && c <= 'Z')) return false;
  }
  return true;
}

}  // namespace

std::string lowercased(std::string_view utf8) {
  // Most words of the word lists are ASCII; they need no ICU call.
  bool ascii = true;
  for (unsigned char c : utf8) ascii = ascii && c < 0x80;
  if (ascii) {
    std::string out(utf8);
    for (char& c : out) {
      if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return out;
  }
  // ICU would accept ill-formed UTF-8 and write U+FFFD; a dictionary key must be the real word.
  if (!text::isValidUtf8(utf8)) return {};
  // Opening a case map costs more than most lowercasings: one per thread, kept.
  thread_local std::unique_ptr<UCaseMap, decltype(&ucasemap_close)> map(nullptr, &ucasemap_close);
  UErrorCode status = U_ZERO_ERROR;
  if (!map) map.reset(ucasemap_open("", U_FOLD_CASE_DEFAULT, &status));
  if (U_FAILURE(status) || !map) return {};
  std::string out(utf8.size() + 8, '\0');
  for (int attempt = 0; attempt < 2; ++attempt) {
    status = U_ZERO_ERROR;
    const int32_t length =
        ucasemap_utf8ToLower(map.get(), out.data(), static_cast<int32_t>(out.size()), utf8.data(),
                             static_cast<int32_t>(utf8.size()), &status);
    if (status == U_BUFFER_OVERFLOW_ERROR) {
      out.assign(static_cast<std::size_t>(length), '\0');
      continue;
    }
    if (U_FAILURE(status)) return {};
    out.resize(static_cast<std::size_t>(length));
    return out;
  }
  return {};
}

bool isLowercase(std::string_view utf8) {
  if (isAsciiLowercase(utf8)) return true;
  const std::string lower = lowercased(utf8);
  return !lower.empty() && lower == utf8;
}

}  // namespace vesko
