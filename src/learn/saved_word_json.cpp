#include "learn/saved_word_json.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>
#include <type_traits>
#include <utility>

#include "learn/uuid.h"

namespace vesko {
namespace {

using nlohmann::json;

// Integers beyond 2^53 would not survive a writer that keeps numbers as doubles; they are refused
// rather than rounded.
constexpr double kLargestExactInteger = 9'007'199'254'740'992.0;

enum class Kind { text, integer, date, flag, translations, senses };

// One key of a record: where its value goes. A required key that is missing (or null) refuses
// the file; an optional one is left absent.
template <typename Record>
struct Column {
  std::string_view key;
  Kind kind;
  bool required;
  std::string Record::*text = nullptr;
  std::optional<std::string> Record::*optionalText = nullptr;
  std::optional<long long> Record::*integer = nullptr;
  StoreDate Record::*date = nullptr;
  std::optional<StoreDate> Record::*optionalDate = nullptr;
  std::optional<bool> Record::*flag = nullptr;
};

template <typename R>
constexpr Column<R> text(std::string_view key, std::string R::*field) {
  return {key, Kind::text, true, field};
}
template <typename R>
constexpr Column<R> optionalText(std::string_view key, std::optional<std::string> R::*field) {
  return {key, Kind::text, false, nullptr, field};
}
template <typename R>
constexpr Column<R> integer(std::string_view key, std::optional<long long> R::*field) {
  return {key, Kind::integer, false, nullptr, nullptr, field};
}
template <typename R>
constexpr Column<R> date(std::string_view key, StoreDate R::*field) {
  return {key, Kind::date, true, nullptr, nullptr, nullptr, field};
}
template <typename R>
constexpr Column<R> optionalDate(std::string_view key, std::optional<StoreDate> R::*field) {
  return {key, Kind::date, false, nullptr, nullptr, nullptr, nullptr, field};
}

using W = SavedWord;
// clang-format off
const Column<SavedWord> kWordColumns[] = {
  text("id", &W::id),
  text("word", &W::word),
  text("lang", &W::lang),
  text("pinyin", &W::pinyin),
  text("simp", &W::simp),
  text("trad", &W::trad),
  text("definition", &W::definition),
  {"translations", Kind::translations, true},
  text("context", &W::context),
  date("date", &W::date),
  integer("hits", &W::hits),
  optionalText("kind", &W::kind),
  optionalDate("lastSeen", &W::lastSeen),
  optionalText("source", &W::source),
  optionalText("place", &W::place),
  optionalText("app", &W::app),
  integer("reviewStep", &W::reviewStep),
  optionalDate("reviewDue", &W::reviewDue),
  integer("seen", &W::seen),
  optionalText("theme", &W::theme),
  integer("confidence", &W::confidence),
  optionalText("sentenceMeaning", &W::sentenceMeaning),
  optionalText("sentenceAuto", &W::sentenceAuto),
  {"senses", Kind::senses, false},
  integer("senseTurn", &W::senseTurn),
  optionalText("archived", &W::archived),
  optionalText("fullContext", &W::fullContext),
  integer("reviews", &W::reviews),
  {"triaged", Kind::flag, false, nullptr, nullptr, nullptr, nullptr, nullptr, &W::triaged},
  integer("meaningOK", &W::meaningOK),
};
const Column<Sense> kSenseColumns[] = {
  text("meaning", &Sense::meaning),
  text("sentence", &Sense::sentence),
  text("target", &Sense::target),
  date("date", &Sense::date),
  optionalText("sentenceMeaning", &Sense::sentenceMeaning),
  optionalText("sentenceAuto", &Sense::sentenceAuto),
};
// clang-format on

template <typename R, std::size_t N>
const Column<R>* findColumn(const Column<R> (&columns)[N], std::string_view key) {
  for (const auto& column : columns)
    if (column.key == key) return &column;
  return nullptr;
}

// One scalar of the file, as the parser hands it over.
struct Scalar {
  enum class Type { null, flag, integer, unsigned_, real, text } type;
  bool flag = false;
  long long integer = 0;
  unsigned long long unsignedInteger = 0;
  double real = 0;
  std::string* text = nullptr;
};

// Decodes the file as the parser reads it, straight into the records: no JSON tree is built,
// which makes a large store load several times faster. Every event either fits the layout or
// stops the parse with the reason.
class WordsReader final : public json::json_sax_t {
 public:
  std::vector<SavedWord> words;
  std::string error;

  bool null() override { return scalar({Scalar::Type::null}); }
  bool boolean(bool value) override {
    Scalar s{Scalar::Type::flag};
    s.flag = value;
    return scalar(s);
  }
  bool number_integer(number_integer_t value) override {
    Scalar s{Scalar::Type::integer};
    s.integer = value;
    return scalar(s);
  }
  bool number_unsigned(number_unsigned_t value) override {
    Scalar s{Scalar::Type::unsigned_};
    s.unsignedInteger = value;
    return scalar(s);
  }
  bool number_float(number_float_t value, const string_t&) override {
    Scalar s{Scalar::Type::real};
    s.real = value;
    return scalar(s);
  }
  bool string(string_t& value) override {
    Scalar s{Scalar::Type::text};
    s.text = &value;
    return scalar(s);
  }
  bool binary(binary_t&) override { return fail("valeur binaire"); }

  bool start_object(std::size_t) override {
    if (skipping_) return ++skipping_, true;
    switch (place_) {
      case Place::top:
        return failTop("liste attendue");
      case Place::list:
        current_ = SavedWord{};
        present_ = 0;
        place_ = Place::word;
        return true;
      case Place::word:
        if (!wordColumn_) return skip();
        if (wordColumn_->kind != Kind::translations)
          return wrongType(wordColumn_->key, wordColumn_->kind);
        current_.translations.clear();
        mark(wordColumn_);
        place_ = Place::translations;
        return true;
      case Place::senses:
        sense_ = Sense{};
        sensePresent_ = 0;
        place_ = Place::sense;
        return true;
      case Place::sense:
        if (!senseColumn_) return skip();
        return wrongType(senseColumn_->key, senseColumn_->kind);
      case Place::translations:
        return fail("clé « translations » : textes attendus");
      case Place::done:
        return fail("après la liste");
    }
    return false;
  }

  bool end_object() override {
    if (skipping_) return --skipping_, true;
    switch (place_) {
      case Place::word:
        return finishWord();
      case Place::translations:
        place_ = Place::word;
        return true;
      case Place::sense:
        return finishSense();
      default:
        return fail("objet mal fermé");
    }
  }

  bool start_array(std::size_t) override {
    if (skipping_) return ++skipping_, true;
    switch (place_) {
      case Place::top:
        place_ = Place::list;
        return true;
      case Place::list:
        return fail("objet attendu");
      case Place::word:
        if (!wordColumn_) return skip();
        if (wordColumn_->kind != Kind::senses)
          return wrongType(wordColumn_->key, wordColumn_->kind);
        current_.senses.emplace();
        place_ = Place::senses;
        return true;
      case Place::sense:
        if (!senseColumn_) return skip();
        return wrongType(senseColumn_->key, senseColumn_->kind);
      case Place::senses:
        return fail("sens : objet attendu");
      case Place::translations:
        return fail("clé « translations » : textes attendus");
      case Place::done:
        return fail("après la liste");
    }
    return false;
  }

  bool end_array() override {
    if (skipping_) return --skipping_, true;
    if (place_ == Place::list) {
      place_ = Place::done;
      return true;
    }
    if (place_ == Place::senses) {
      place_ = Place::word;
      return true;
    }
    return fail("liste mal fermée");
  }

  bool key(string_t& key) override {
    if (skipping_) return true;
    if (place_ == Place::word) wordColumn_ = findColumn(kWordColumns, key);
    if (place_ == Place::sense) senseColumn_ = findColumn(kSenseColumns, key);
    if (place_ == Place::translations) translation_ = std::move(key);
    return true;
  }

  bool parse_error(std::size_t, const std::string&, const json::exception&) override {
    error = "JSON illisible";
    return false;
  }

  bool finished() const { return place_ == Place::done && error.empty(); }

 private:
  enum class Place { top, list, word, translations, senses, sense, done };

  bool fail(const std::string& reason) {
    if (error.empty()) error = "entrée " + std::to_string(words.size()) + " : " + reason;
    return false;
  }
  bool failTop(const char* reason) {
    error = reason;
    return false;
  }
  bool skip() {
    skipping_ = 1;
    return true;
  }
  bool wrongType(std::string_view key, Kind kind) {
    static constexpr const char* kExpected[] = {"texte attendu",  "entier attendu",
                                                "nombre attendu", "booléen attendu",
                                                "objet attendu",  "liste attendue"};
    return fail("clé « " + std::string(key) + " » : " + kExpected[static_cast<int>(kind)]);
  }

  void mark(const Column<SavedWord>* column) {
    present_ |= std::uint64_t{1} << (column - kWordColumns);
  }

  template <typename R>
  bool assign(R& record, const Column<R>& column, const Scalar& value) {
    if (value.type == Scalar::Type::null) {
      // An absent optional; a required key stays missing and is reported at the record's end.
      if (column.optionalText) (record.*column.optionalText).reset();
      if (column.integer) (record.*column.integer).reset();
      if (column.optionalDate) (record.*column.optionalDate).reset();
      if (column.flag) (record.*column.flag).reset();
      return true;
    }
    switch (column.kind) {
      case Kind::text:
        if (value.type != Scalar::Type::text) return wrongType(column.key, column.kind);
        if (column.text)
          record.*column.text = std::move(*value.text);
        else
          record.*column.optionalText = std::move(*value.text);
        return true;
      case Kind::date: {
        double number;
        if (value.type == Scalar::Type::integer)
          number = static_cast<double>(value.integer);
        else if (value.type == Scalar::Type::unsigned_)
          number = static_cast<double>(value.unsignedInteger);
        else if (value.type == Scalar::Type::real)
          number = value.real;
        else
          return wrongType(column.key, column.kind);
        if (!std::isfinite(number))
          return fail("clé « " + std::string(column.key) + " » : nombre infini");
        if (column.date)
          record.*column.date = number;
        else
          record.*column.optionalDate = number;
        return true;
      }
      case Kind::integer: {
        long long number;
        if (value.type == Scalar::Type::integer) {
          number = value.integer;
        } else if (value.type == Scalar::Type::unsigned_) {
          if (value.unsignedInteger > static_cast<unsigned long long>(kLargestExactInteger))
            return fail("clé « " + std::string(column.key) + " » : entier trop grand");
          number = static_cast<long long>(value.unsignedInteger);
        } else if (value.type == Scalar::Type::real && value.real == std::trunc(value.real) &&
                   std::fabs(value.real) <= kLargestExactInteger) {
          number = static_cast<long long>(value.real);
        } else {
          return wrongType(column.key, column.kind);
        }
        if (std::fabs(static_cast<double>(number)) > kLargestExactInteger)
          return fail("clé « " + std::string(column.key) + " » : entier trop grand");
        record.*column.integer = number;
        return true;
      }
      case Kind::flag:
        if (value.type != Scalar::Type::flag) return wrongType(column.key, column.kind);
        record.*column.flag = value.flag;
        return true;
      case Kind::translations:
      case Kind::senses:
        return wrongType(column.key, column.kind);
    }
    return false;
  }

  bool scalar(const Scalar& value) {
    if (skipping_) return true;
    switch (place_) {
      case Place::top:
        return failTop("liste attendue");
      case Place::list:
        return fail("objet attendu");
      case Place::senses:
        return fail("sens : objet attendu");
      case Place::word:
        if (!wordColumn_) return true;  // a key this program does not know
        if (!assign(current_, *wordColumn_, value)) return false;
        if (value.type != Scalar::Type::null)
          mark(wordColumn_);
        else
          present_ &= ~(std::uint64_t{1} << (wordColumn_ - kWordColumns));
        return true;
      case Place::sense:
        if (!senseColumn_) return true;
        if (!assign(sense_, *senseColumn_, value)) return false;
        if (value.type != Scalar::Type::null) sensePresent_ |= 1u << (senseColumn_ - kSenseColumns);
        return true;
      case Place::translations:
        if (value.type != Scalar::Type::text) return fail("clé « translations » : textes attendus");
        current_.translations.insert_or_assign(std::move(translation_), std::move(*value.text));
        return true;
      case Place::done:
        return fail("après la liste");
    }
    return false;
  }

  bool finishWord() {
    for (const auto& column : kWordColumns)
      if (column.required && !(present_ & (std::uint64_t{1} << (&column - kWordColumns))))
        return fail("clé « " + std::string(column.key) + " » absente");
    auto id = canonicalUuid(current_.id);
    if (!id) return fail("clé « id » : UUID attendu");
    current_.id = std::move(*id);
    words.push_back(std::move(current_));
    place_ = Place::list;
    return true;
  }

  bool finishSense() {
    for (const auto& column : kSenseColumns)
      if (column.required && !(sensePresent_ & (1u << (&column - kSenseColumns))))
        return fail("sens : clé « " + std::string(column.key) + " » absente");
    current_.senses->push_back(std::move(sense_));
    place_ = Place::senses;
    return true;
  }

  Place place_ = Place::top;
  int skipping_ = 0;  // depth inside a value under an unknown key
  SavedWord current_;
  std::uint64_t present_ = 0;  // bit i: kWordColumns[i] was given
  const Column<SavedWord>* wordColumn_ = nullptr;
  Sense sense_;
  unsigned sensePresent_ = 0;
  const Column<Sense>* senseColumn_ = nullptr;
  std::string translation_;
};

// The length of the well-formed UTF-8 sequence that opens `text`, 0 when it is not one
// (overlong forms, surrogates and values past U+10FFFF included).
std::size_t sequenceLength(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(0);
  std::size_t length;
  unsigned char low = 0x80, high = 0xBF;
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    if (lead == 0xE0) low = 0xA0;
    if (lead == 0xED) high = 0x9F;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    if (lead == 0xF0) low = 0x90;
    if (lead == 0xF4) high = 0x8F;
  } else {
    return 0;
  }
  if (text.size() < length) return 0;
  if (byte(1) < low || byte(1) > high) return 0;
  for (std::size_t i = 2; i < length; ++i)
    if (byte(i) < 0x80 || byte(i) > 0xBF) return 0;
  return length;
}

// The file's text, written directly rather than through a JSON tree: a store of 10,000 words is
// written in a few milliseconds instead of a hundred. The layout is nlohmann-json's dump(2) (or
// dump() when compact): keys in byte order, "key": value, two spaces per level, reals always with
// a fraction or an exponent, texts escaped as JSON requires and invalid UTF-8 replaced by U+FFFD.
class Writer {
 public:
  explicit Writer(bool pretty) : pretty_(pretty) {}
  std::string take() { return std::move(out_); }
  void reserve(std::size_t bytes) { out_.reserve(bytes); }

  void openArray() { open('['); }
  void closeArray() { close(']'); }
  void openObject() { open('{'); }
  void closeObject() { close('}'); }
  // Before each element of an array.
  void element() { separate(); }
  void key(std::string_view name) {
    separate();
    out_ += '"';
    out_ += name;  // field names need no escaping
    out_ += pretty_ ? "\": " : "\":";
  }
  // A key that comes from the data (a language code), escaped like any text.
  void textKey(std::string_view name) {
    separate();
    escaped(name);
    out_ += pretty_ ? ": " : ":";
  }
  void text(std::string_view value) { escaped(value); }
  void integer(long long value) {
    char buffer[24];
    auto end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
    out_.append(buffer, end);
  }
  // The shortest digits that read back as `value`, placed as nlohmann-json places them: plain
  // notation for decimal exponents from -4 to 15 ("763225925.125", "764000000.0", "0.0001"),
  // scientific beyond ("1e-07", "1.5e+20").
  void real(double value) {
    if (value == 0) {
      out_ += std::signbit(value) ? "-0.0" : "0.0";
      return;
    }
    char buffer[40];
    auto end =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific).ptr;
    std::string_view written(buffer, static_cast<std::size_t>(end - buffer));
    if (written.front() == '-') {
      out_ += '-';
      written.remove_prefix(1);
    }
    const std::size_t e = written.find('e');
    std::string digits;
    for (char c : written.substr(0, e))
      if (c != '.') digits += c;
    int exponent = 0;
    std::from_chars(written.data() + e + 1 + (written[e + 1] == '+'),
                    written.data() + written.size(), exponent);
    const int k = static_cast<int>(digits.size());
    const int n = exponent + 1;  // digits before the decimal point
    if (k <= n && n <= 15) {
      out_ += digits;
      out_.append(static_cast<std::size_t>(n - k), '0');
      out_ += ".0";
    } else if (0 < n && n <= 15) {
      out_.append(digits, 0, static_cast<std::size_t>(n));
      out_ += '.';
      out_.append(digits, static_cast<std::size_t>(n));
    } else if (-4 < n && n <= 0) {
      out_ += "0.";
      out_.append(static_cast<std::size_t>(-n), '0');
      out_ += digits;
    } else {
      out_ += digits[0];
      if (k > 1) {
        out_ += '.';
        out_.append(digits, 1);
      }
      char tail[16];
      std::snprintf(tail, sizeof tail, "e%c%02d", n - 1 < 0 ? '-' : '+', std::abs(n - 1));
      out_ += tail;
    }
  }
  void flag(bool value) { out_ += value ? "true" : "false"; }

  template <typename T>
  void optional(std::string_view name, const std::optional<T>& value) {
    if (!value) return;
    key(name);
    if constexpr (std::is_same_v<T, std::string>)
      text(*value);
    else if constexpr (std::is_same_v<T, bool>)
      flag(*value);
    else if constexpr (std::is_same_v<T, double>)
      real(*value);
    else
      integer(*value);
  }

 private:
  void open(char bracket) {
    out_ += bracket;
    ++depth_;
    empty_ = true;
  }
  void close(char bracket) {
    --depth_;
    if (!empty_) newline();
    out_ += bracket;
    empty_ = false;
  }
  void separate() {
    if (!empty_) out_ += ',';
    newline();
    empty_ = false;
  }
  void newline() {
    if (!pretty_) return;
    out_ += '\n';
    out_.append(static_cast<std::size_t>(depth_) * 2, ' ');
  }
  void escaped(std::string_view value) {
    out_ += '"';
    std::size_t i = 0;
    while (i < value.size()) {
      const auto c = static_cast<unsigned char>(value[i]);
      if (c >= 0x20 && c < 0x80 && c != '"' && c != '\\') {
        out_ += static_cast<char>(c);
        ++i;
      } else if (c < 0x80) {
        escapedAscii(static_cast<char>(c));
        ++i;
      } else {
        std::size_t length = sequenceLength(value.substr(i));
        if (length == 0) {
          out_ += "\xEF\xBF\xBD";
          ++i;
        } else {
          out_.append(value.substr(i, length));
          i += length;
        }
      }
    }
    out_ += '"';
  }
  void escapedAscii(char c) {
    switch (c) {
      case '"':
        out_ += "\\\"";
        break;
      case '\\':
        out_ += "\\\\";
        break;
      case '\b':
        out_ += "\\b";
        break;
      case '\f':
        out_ += "\\f";
        break;
      case '\n':
        out_ += "\\n";
        break;
      case '\r':
        out_ += "\\r";
        break;
      case '\t':
        out_ += "\\t";
        break;
      default: {
        char buffer[8];
        std::snprintf(buffer, sizeof buffer, "\\u%04x", static_cast<unsigned>(c));
        out_ += buffer;
      }
    }
  }
  const bool pretty_;
  std::string out_;
  int depth_ = 0;
  bool empty_ = true;
};

void writeSense(Writer& out, const Sense& sense) {
  out.openObject();
  out.key("date");
  out.real(sense.date);
  out.key("meaning");
  out.text(sense.meaning);
  out.key("sentence");
  out.text(sense.sentence);
  out.optional("sentenceAuto", sense.sentenceAuto);
  out.optional("sentenceMeaning", sense.sentenceMeaning);
  out.key("target");
  out.text(sense.target);
  out.closeObject();
}

// The keys in byte order, as the file has them ("senseTurn" before "senses": 'T' < 's').
void writeWord(Writer& out, const SavedWord& word) {
  out.openObject();
  out.optional("app", word.app);
  out.optional("archived", word.archived);
  out.optional("confidence", word.confidence);
  out.key("context");
  out.text(word.context);
  out.key("date");
  out.real(word.date);
  out.key("definition");
  out.text(word.definition);
  out.optional("fullContext", word.fullContext);
  out.optional("hits", word.hits);
  out.key("id");
  out.text(word.id);
  out.optional("kind", word.kind);
  out.key("lang");
  out.text(word.lang);
  out.optional("lastSeen", word.lastSeen);
  out.optional("meaningOK", word.meaningOK);
  out.key("pinyin");
  out.text(word.pinyin);
  out.optional("place", word.place);
  out.optional("reviewDue", word.reviewDue);
  out.optional("reviewStep", word.reviewStep);
  out.optional("reviews", word.reviews);
  out.optional("seen", word.seen);
  out.optional("senseTurn", word.senseTurn);
  if (word.senses) {
    out.key("senses");
    out.openArray();
    for (const auto& sense : *word.senses) {
      out.element();
      writeSense(out, sense);
    }
    out.closeArray();
  }
  out.optional("sentenceAuto", word.sentenceAuto);
  out.optional("sentenceMeaning", word.sentenceMeaning);
  out.key("simp");
  out.text(word.simp);
  out.optional("source", word.source);
  out.optional("theme", word.theme);
  out.key("trad");
  out.text(word.trad);
  out.key("translations");
  out.openObject();
  for (const auto& [language, value] : word.translations) {
    out.textKey(language);
    out.text(value);
  }
  out.closeObject();
  out.optional("triaged", word.triaged);
  out.key("word");
  out.text(word.word);
  out.closeObject();
}

// A strict JSON reader (RFC 8259: no comments, no trailing commas, UTF-8 checked, lone surrogates
// refused) that hands its events to a WordsReader. nlohmann-json's own reader keeps every byte of
// the current token for its error messages, which made it most of a large store's load time.
// Nesting deeper than kMaxDepth is refused: the file's layout needs four levels.
class JsonReader {
 public:
  static constexpr int kMaxDepth = 256;

  JsonReader(std::string_view text, WordsReader& events)
      : at_(text.data()), end_(text.data() + text.size()), events_(events) {}

  // False on a syntax error or when the events refused a value.
  bool read() {
    if (!value(0)) return false;
    space();
    return at_ == end_;
  }

 private:
  void space() {
    while (at_ != end_ && (*at_ == ' ' || *at_ == '\n' || *at_ == '\r' || *at_ == '\t')) ++at_;
  }
  bool take(char c) {
    space();
    if (at_ == end_ || *at_ != c) return false;
    ++at_;
    return true;
  }

  bool value(int depth) {
    space();
    if (at_ == end_) return false;
    switch (*at_) {
      case '{':
        return object(depth + 1);
      case '[':
        return array(depth + 1);
      case '"': {
        std::string text;
        return string(text) && events_.string(text);
      }
      case 't':
        return literal("true") && events_.boolean(true);
      case 'f':
        return literal("false") && events_.boolean(false);
      case 'n':
        return literal("null") && events_.null();
      default:
        return number();
    }
  }

  bool object(int depth) {
    if (depth > kMaxDepth) return false;
    ++at_;
    if (!events_.start_object(std::size_t(-1))) return false;
    if (take('}')) return events_.end_object();
    do {
      space();
      std::string key;
      if (at_ == end_ || *at_ != '"' || !string(key) || !take(':')) return false;
      if (!events_.key(key) || !value(depth)) return false;
    } while (take(','));
    return take('}') && events_.end_object();
  }

  bool array(int depth) {
    if (depth > kMaxDepth) return false;
    ++at_;
    if (!events_.start_array(std::size_t(-1))) return false;
    if (take(']')) return events_.end_array();
    do {
      if (!value(depth)) return false;
    } while (take(','));
    return take(']') && events_.end_array();
  }

  bool literal(std::string_view word) {
    if (static_cast<std::size_t>(end_ - at_) < word.size() ||
        std::string_view(at_, word.size()) != word)
      return false;
    at_ += word.size();
    return true;
  }

  bool hex4(unsigned& code) {
    if (end_ - at_ < 4) return false;
    code = 0;
    for (int i = 0; i < 4; ++i) {
      const char c = *at_++;
      code <<= 4;
      if (c >= '0' && c <= '9')
        code |= static_cast<unsigned>(c - '0');
      else if (c >= 'a' && c <= 'f')
        code |= static_cast<unsigned>(c - 'a' + 10);
      else if (c >= 'A' && c <= 'F')
        code |= static_cast<unsigned>(c - 'A' + 10);
      else
        return false;
    }
    return true;
  }

  static void appendUtf8(std::string& out, unsigned code) {
    if (code < 0x80) {
      out += static_cast<char>(code);
    } else if (code < 0x800) {
      out += static_cast<char>(0xC0 | (code >> 6));
      out += static_cast<char>(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
      out += static_cast<char>(0xE0 | (code >> 12));
      out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (code & 0x3F));
    } else {
      out += static_cast<char>(0xF0 | (code >> 18));
      out += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
      out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (code & 0x3F));
    }
  }

  bool escape(std::string& out) {
    if (at_ == end_) return false;
    switch (*at_++) {
      case '"':
        out += '"';
        return true;
      case '\\':
        out += '\\';
        return true;
      case '/':
        out += '/';
        return true;
      case 'b':
        out += '\b';
        return true;
      case 'f':
        out += '\f';
        return true;
      case 'n':
        out += '\n';
        return true;
      case 'r':
        out += '\r';
        return true;
      case 't':
        out += '\t';
        return true;
      case 'u': {
        unsigned code;
        if (!hex4(code)) return false;
        if (code >= 0xDC00 && code <= 0xDFFF) return false;  // a low surrogate alone
        if (code >= 0xD800 && code <= 0xDBFF) {
          unsigned low;
          if (end_ - at_ < 2 || at_[0] != '\\' || at_[1] != 'u') return false;
          at_ += 2;
          if (!hex4(low) || low < 0xDC00 || low > 0xDFFF) return false;
          code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
        }
        appendUtf8(out, code);
        return true;
      }
      default:
        return false;
    }
  }

  // At the opening quote.
  bool string(std::string& out) {
    ++at_;
    while (true) {
      // The plain run up to the next quote, backslash, control character or non-ASCII byte.
      const char* run = at_;
      while (at_ != end_) {
        const auto c = static_cast<unsigned char>(*at_);
        if (c == '"' || c == '\\' || c < 0x20 || c >= 0x80) break;
        ++at_;
      }
      out.append(run, at_);
      if (at_ == end_) return false;
      const auto c = static_cast<unsigned char>(*at_);
      if (c == '"') {
        ++at_;
        return true;
      }
      if (c == '\\') {
        ++at_;
        if (!escape(out)) return false;
      } else if (c < 0x20) {
        return false;
      } else {
        const std::size_t length =
            sequenceLength(std::string_view(at_, static_cast<std::size_t>(end_ - at_)));
        if (length == 0) return false;
        out.append(at_, length);
        at_ += length;
      }
    }
  }

  static bool isDigit(char c) { return c >= '0' && c <= '9'; }

  bool number() {
    const char* start = at_;
    if (at_ != end_ && *at_ == '-') ++at_;
    if (at_ == end_ || !isDigit(*at_)) return false;
    if (*at_ == '0')
      ++at_;
    else
      while (at_ != end_ && isDigit(*at_)) ++at_;
    bool real = false;
    if (at_ != end_ && *at_ == '.') {
      real = true;
      ++at_;
      if (at_ == end_ || !isDigit(*at_)) return false;
      while (at_ != end_ && isDigit(*at_)) ++at_;
    }
    if (at_ != end_ && (*at_ == 'e' || *at_ == 'E')) {
      real = true;
      ++at_;
      if (at_ != end_ && (*at_ == '+' || *at_ == '-')) ++at_;
      if (at_ == end_ || !isDigit(*at_)) return false;
      while (at_ != end_ && isDigit(*at_)) ++at_;
    }
    if (!real) {
      if (*start == '-') {
        long long value;
        auto [end, error] = std::from_chars(start, at_, value);
        if (error == std::errc() && end == at_) return events_.number_integer(value);
      } else {
        unsigned long long value;
        auto [end, error] = std::from_chars(start, at_, value);
        if (error == std::errc() && end == at_) return events_.number_unsigned(value);
      }
    }
    // A real, or a whole number too large for 64 bits, as nlohmann-json reads it: the nearest
    // double, infinite past the largest.
    double value;
    auto [end, error] = std::from_chars(start, at_, value);
    if (error != std::errc() || end != at_)
      value = std::strtod(std::string(start, at_).c_str(), nullptr);
    return events_.number_float(value, {});
  }

  const char* at_;
  const char* end_;
  WordsReader& events_;
};

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
  Writer out(true);
  out.reserve(words.size() * 640 + 16);
  out.openArray();
  for (const auto& word : words) {
    out.element();
    writeWord(out, word);
  }
  out.closeArray();
  std::string text = out.take();
  text += '\n';
  return text;
}

std::string encodeWord(const SavedWord& word, bool pretty) {
  Writer out(pretty);
  writeWord(out, word);
  return out.take();
}

std::expected<std::vector<SavedWord>, std::string> decodeWords(std::string_view text) {
  WordsReader reader;
  const bool parsed = JsonReader(text, reader).read();
  if (!parsed || !reader.finished())
    return std::unexpected(reader.error.empty() ? "JSON illisible" : reader.error);
  return std::move(reader.words);
}

}  // namespace vesko
