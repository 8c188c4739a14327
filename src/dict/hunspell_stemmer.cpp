#include "dict/hunspell_stemmer.h"

#include <hunspell/hunspell.hxx>
#include <unicode/ucnv.h>

#include <fstream>

#include "dict/lowercase.h"
#include "text/unicode.h"

namespace vesko {
namespace {

// The SET line of the .aff file: Hunspell expects words in that encoding (pl_PL is ISO8859-2).
std::string affixEncoding(const std::filesystem::path& aff) {
  std::ifstream in(aff);
  std::string line;
  while (std::getline(in, line)) {
    if (line.rfind("SET ", 0) == 0) {
      std::string name = line.substr(4);
      while (!name.empty() && (name.back() == '\r' || name.back() == ' ')) name.pop_back();
      return name;
    }
  }
  return "ISO8859-1";  // Hunspell's default
}

bool isUtf8Name(std::string_view name) { return name == "UTF-8" || name == "utf-8" || name == "UTF8"; }

}  // namespace

std::expected<std::unique_ptr<HunspellStemmer>, std::string> HunspellStemmer::load(
    const std::filesystem::path& aff, const std::filesystem::path& dic,
    const HeadwordSet* headwords) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(aff, error)) return std::unexpected("no " + aff.string());
  if (!std::filesystem::is_regular_file(dic, error)) return std::unexpected("no " + dic.string());
  std::unique_ptr<HunspellStemmer> out(new HunspellStemmer);
  out->headwords_ = headwords;
  const std::string encoding = affixEncoding(aff);
  if (!isUtf8Name(encoding)) {
    UErrorCode status = U_ZERO_ERROR;
    out->converter_ = ucnv_open(encoding.c_str(), &status);
    if (U_FAILURE(status)) return std::unexpected("unknown encoding " + encoding + " in " + aff.string());
    // A character the dictionary's encoding lacks cannot be in any of its words: stop, do not
    // substitute.
    ucnv_setFromUCallBack(out->converter_, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                          &status);
  }
  // Hunspell reports no error of its own; a dictionary it could not read simply knows no word.
  out->hunspell_ = std::make_unique<Hunspell>(aff.c_str(), dic.c_str());
  return out;
}

HunspellStemmer::~HunspellStemmer() {
  if (converter_) ucnv_close(converter_);
}

std::optional<std::string> HunspellStemmer::toDictionary(std::string_view utf8) const {
  if (!converter_) return std::string(utf8);
  auto utf16 = text::fromUtf8(utf8);
  if (!utf16) return std::nullopt;
  std::string out(utf16->size() * 4 + 4, '\0');
  UErrorCode status = U_ZERO_ERROR;
  ucnv_resetFromUnicode(converter_);
  const int32_t n = ucnv_fromUChars(converter_, out.data(), static_cast<int32_t>(out.size()),
                                    reinterpret_cast<const UChar*>(utf16->data()),
                                    static_cast<int32_t>(utf16->size()), &status);
  if (U_FAILURE(status)) return std::nullopt;
  out.resize(static_cast<std::size_t>(n));
  return out;
}

std::string HunspellStemmer::fromDictionary(std::string_view bytes) const {
  if (!converter_) return std::string(bytes);
  std::u16string utf16(bytes.size() * 2 + 2, u'\0');
  UErrorCode status = U_ZERO_ERROR;
  ucnv_resetToUnicode(converter_);
  const int32_t n = ucnv_toUChars(converter_, reinterpret_cast<UChar*>(utf16.data()),
                                  static_cast<int32_t>(utf16.size()), bytes.data(),
                                  static_cast<int32_t>(bytes.size()), &status);
  if (U_FAILURE(status)) return {};
  utf16.resize(static_cast<std::size_t>(n));
  return text::toUtf8(utf16);
}

std::optional<BaseForm> HunspellStemmer::baseForm(std::string_view word) const {
  if (word.empty() || !text::isValidUtf8(word)) return std::nullopt;
  std::vector<std::string> stems;
  {
    std::lock_guard lock(mutex_);
    auto encoded = toDictionary(word);
    if (!encoded) return std::nullopt;
    for (const std::string& stem : hunspell_->stem(*encoded)) stems.push_back(fromDictionary(stem));
  }
  for (const std::string& stem : stems) {
    std::string lemma = lowercased(stem);
    if (lemma.empty() || lemma == word) continue;
    if (headwords_ && !headwords_->contains(lemma)) continue;
    return BaseForm{lemma, "forme fléchie de « " + lemma + " »"};
  }
  return std::nullopt;
}

}  // namespace vesko
