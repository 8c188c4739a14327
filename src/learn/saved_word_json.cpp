#include "learn/saved_word_json.h"

#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include "learn/uuid.h"

namespace vesko {
namespace {

using nlohmann::json;

// A field that does not decode; the message names the key.
struct BadField {
  std::string message;
};

// Integers beyond 2^53 would not survive a writer that keeps numbers as doubles; they are refused
// rather than rounded.
constexpr double kLargestExactInteger = 9'007'199'254'740'992.0;

const json* field(const json& object, const char* key) {
  auto found = object.find(key);
  if (found == object.end() || found->is_null()) return nullptr;
  return &*found;
}

std::string text(const json& object, const char* key) {
  const json* value = field(object, key);
  if (!value) throw BadField{std::string("clé « ") + key + " » absente"};
  if (!value->is_string()) throw BadField{std::string("clé « ") + key + " » : texte attendu"};
  return value->get<std::string>();
}

double number(const json& value, const char* key) {
  if (!value.is_number()) throw BadField{std::string("clé « ") + key + " » : nombre attendu"};
  double result = value.get<double>();
  if (!std::isfinite(result)) throw BadField{std::string("clé « ") + key + " » : nombre infini"};
  return result;
}

StoreDate date(const json& object, const char* key) {
  const json* value = field(object, key);
  if (!value) throw BadField{std::string("clé « ") + key + " » absente"};
  return number(*value, key);
}

long long integer(const json& value, const char* key) {
  if (value.is_number_integer()) {
    if (value.is_number_unsigned() &&
        value.get<unsigned long long>() > static_cast<unsigned long long>(kLargestExactInteger))
      throw BadField{std::string("clé « ") + key + " » : entier trop grand"};
    long long result = value.get<long long>();
    if (std::fabs(static_cast<double>(result)) > kLargestExactInteger)
      throw BadField{std::string("clé « ") + key + " » : entier trop grand"};
    return result;
  }
  double result = number(value, key);
  if (result != std::trunc(result) || std::fabs(result) > kLargestExactInteger)
    throw BadField{std::string("clé « ") + key + " » : entier attendu"};
  return static_cast<long long>(result);
}

std::optional<std::string> optionalText(const json& object, const char* key) {
  if (!field(object, key)) return std::nullopt;
  return text(object, key);
}

std::optional<long long> optionalInteger(const json& object, const char* key) {
  const json* value = field(object, key);
  if (!value) return std::nullopt;
  return integer(*value, key);
}

std::optional<StoreDate> optionalDate(const json& object, const char* key) {
  if (!field(object, key)) return std::nullopt;
  return date(object, key);
}

std::optional<bool> optionalFlag(const json& object, const char* key) {
  const json* value = field(object, key);
  if (!value) return std::nullopt;
  if (!value->is_boolean()) throw BadField{std::string("clé « ") + key + " » : booléen attendu"};
  return value->get<bool>();
}

Sense decodeSense(const json& object) {
  if (!object.is_object()) throw BadField{"sens : objet attendu"};
  Sense sense;
  sense.meaning = text(object, "meaning");
  sense.sentence = text(object, "sentence");
  sense.target = text(object, "target");
  sense.date = date(object, "date");
  sense.sentenceMeaning = optionalText(object, "sentenceMeaning");
  sense.sentenceAuto = optionalText(object, "sentenceAuto");
  return sense;
}

SavedWord decodeWord(const json& object) {
  if (!object.is_object()) throw BadField{"objet attendu"};
  SavedWord word;
  auto id = canonicalUuid(text(object, "id"));
  if (!id) throw BadField{"clé « id » : UUID attendu"};
  word.id = std::move(*id);
  word.word = text(object, "word");
  word.lang = text(object, "lang");
  word.pinyin = text(object, "pinyin");
  word.simp = text(object, "simp");
  word.trad = text(object, "trad");
  word.definition = text(object, "definition");
  const json* translations = field(object, "translations");
  if (!translations) throw BadField{"clé « translations » absente"};
  if (!translations->is_object()) throw BadField{"clé « translations » : objet attendu"};
  for (const auto& [language, value] : translations->items()) {
    if (!value.is_string()) throw BadField{"clé « translations » : textes attendus"};
    word.translations.emplace(language, value.get<std::string>());
  }
  word.context = text(object, "context");
  word.date = date(object, "date");
  word.hits = optionalInteger(object, "hits");
  word.kind = optionalText(object, "kind");
  word.lastSeen = optionalDate(object, "lastSeen");
  word.source = optionalText(object, "source");
  word.place = optionalText(object, "place");
  word.app = optionalText(object, "app");
  word.reviewStep = optionalInteger(object, "reviewStep");
  word.reviewDue = optionalDate(object, "reviewDue");
  word.seen = optionalInteger(object, "seen");
  word.theme = optionalText(object, "theme");
  word.confidence = optionalInteger(object, "confidence");
  word.sentenceMeaning = optionalText(object, "sentenceMeaning");
  word.sentenceAuto = optionalText(object, "sentenceAuto");
  if (const json* senses = field(object, "senses")) {
    if (!senses->is_array()) throw BadField{"clé « senses » : liste attendue"};
    std::vector<Sense> decoded;
    decoded.reserve(senses->size());
    for (const auto& sense : *senses) decoded.push_back(decodeSense(sense));
    word.senses = std::move(decoded);
  }
  word.senseTurn = optionalInteger(object, "senseTurn");
  word.archived = optionalText(object, "archived");
  word.fullContext = optionalText(object, "fullContext");
  word.reviews = optionalInteger(object, "reviews");
  word.triaged = optionalFlag(object, "triaged");
  word.meaningOK = optionalInteger(object, "meaningOK");
  return word;
}

template <typename T>
void put(json& object, const char* key, const std::optional<T>& value) {
  if (value) object[key] = *value;
}

json senseJson(const Sense& sense) {
  json object = json::object();
  object["meaning"] = sense.meaning;
  object["sentence"] = sense.sentence;
  object["target"] = sense.target;
  object["date"] = sense.date;
  put(object, "sentenceMeaning", sense.sentenceMeaning);
  put(object, "sentenceAuto", sense.sentenceAuto);
  return object;
}

// nlohmann's objects keep their keys in a std::map, so the dump is in sorted key order.
json wordJson(const SavedWord& word) {
  json object = json::object();
  object["id"] = word.id;
  object["word"] = word.word;
  object["lang"] = word.lang;
  object["pinyin"] = word.pinyin;
  object["simp"] = word.simp;
  object["trad"] = word.trad;
  object["definition"] = word.definition;
  object["translations"] = json::object();
  for (const auto& [language, value] : word.translations) object["translations"][language] = value;
  object["context"] = word.context;
  object["date"] = word.date;
  put(object, "hits", word.hits);
  put(object, "kind", word.kind);
  put(object, "lastSeen", word.lastSeen);
  put(object, "source", word.source);
  put(object, "place", word.place);
  put(object, "app", word.app);
  put(object, "reviewStep", word.reviewStep);
  put(object, "reviewDue", word.reviewDue);
  put(object, "seen", word.seen);
  put(object, "theme", word.theme);
  put(object, "confidence", word.confidence);
  put(object, "sentenceMeaning", word.sentenceMeaning);
  put(object, "sentenceAuto", word.sentenceAuto);
  if (word.senses) {
    json senses = json::array();
    for (const auto& sense : *word.senses) senses.push_back(senseJson(sense));
    object["senses"] = std::move(senses);
  }
  put(object, "senseTurn", word.senseTurn);
  put(object, "archived", word.archived);
  put(object, "fullContext", word.fullContext);
  put(object, "reviews", word.reviews);
  put(object, "triaged", word.triaged);
  put(object, "meaningOK", word.meaningOK);
  return object;
}

// Texts that are not valid UTF-8 (a record decoded from a damaged but parseable file cannot hold
// any, since the parser refuses them; the caller's own texts might) are written with U+FFFD
// rather than failing the whole save.
std::string dumped(const json& value, int indent) {
  return value.dump(indent, ' ', false, json::error_handler_t::replace);
}

}  // namespace

StoreDate storeDate(TimePoint t) {
  using Seconds = std::chrono::duration<double>;
  return std::chrono::duration_cast<Seconds>(t.time_since_epoch()).count() - kStoreEpochUnixSeconds;
}

TimePoint timeOfStoreDate(StoreDate date) {
  using Seconds = std::chrono::duration<double>;
  return TimePoint(
      std::chrono::duration_cast<TimePoint::duration>(Seconds(date + kStoreEpochUnixSeconds)));
}

std::string encodeWords(const std::vector<SavedWord>& words) {
  json array = json::array();
  for (const auto& word : words) array.push_back(wordJson(word));
  std::string text = dumped(array, 2);
  text += '\n';
  return text;
}

std::string encodeWord(const SavedWord& word, bool pretty) {
  return dumped(wordJson(word), pretty ? 2 : -1);
}

std::expected<std::vector<SavedWord>, std::string> decodeWords(std::string_view text) {
  json document = json::parse(text, nullptr, false);
  if (document.is_discarded()) return std::unexpected("JSON illisible");
  if (!document.is_array()) return std::unexpected("liste attendue");
  std::vector<SavedWord> words;
  words.reserve(document.size());
  std::size_t index = 0;
  try {
    for (const auto& object : document) {
      words.push_back(decodeWord(object));
      ++index;
    }
  } catch (const BadField& bad) {
    return std::unexpected("entrée " + std::to_string(index) + " : " + bad.message);
  } catch (const json::exception& error) {
    return std::unexpected("entrée " + std::to_string(index) + " : " + error.what());
  }
  return words;
}

}  // namespace vesko
