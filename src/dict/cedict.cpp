#include "dict/cedict.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdio>
#include <functional>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>
#include <unordered_map>
#include <unordered_set>

#include "dict/cedict_line.h"
#include "dict/headword_index.h"
#include "dict/mapped_file.h"
#include "text/unicode.h"

namespace vesko {
namespace cedict_detail {

struct Span {
  uint32_t offset = 0;
  uint32_t length = 0;
};

// Offsets into the loaded text (see Tables); lengths in bytes. Kept small: there are some 150,000 of them.
struct EntryRecord {
  uint32_t trad = 0;
  uint32_t simp = 0;
  uint32_t pinyin = 0;
  uint32_t defsBegin = 0;
  uint16_t tradLength = 0;
  uint16_t simpLength = 0;
  uint16_t pinyinLength = 0;
  uint16_t defsCount = 0;
};

struct U16Hash {
  using is_transparent = void;
  std::size_t operator()(std::u16string_view s) const { return std::hash<std::u16string_view>{}(s); }
};
using CharacterMap = std::unordered_map<std::u16string, std::u16string, U16Hash, std::equal_to<>>;

struct Tables {
  explicit Tables(std::size_t expectedStrings) : index(expectedStrings) {}

  // Text offsets run through the main file, then on into `more`.
  std::optional<MappedFile> mainFile;
  std::string_view main;
  std::string more;  // the supplement, then texts made while loading
  std::vector<EntryRecord> entries;
  std::vector<Span> defs;
  HeadwordIndex index;
  CharacterMap s2t;
  CharacterMap t2s;
  int maxLen = 1;

  std::string_view view(uint32_t offset, uint32_t length) const {
    if (offset < main.size()) return {main.data() + offset, length};
    return {more.data() + (offset - main.size()), length};
  }
  std::string_view view(Span span) const { return view(span.offset, span.length); }
  Span spanInMain(std::string_view part) const {
    return {static_cast<uint32_t>(part.data() - main.data()), static_cast<uint32_t>(part.size())};
  }
  Span spanInMore(std::string_view part) const {
    return {static_cast<uint32_t>(main.size() + static_cast<std::size_t>(part.data() - more.data())),
            static_cast<uint32_t>(part.size())};
  }
};

}  // namespace cedict_detail

using cedict_detail::EntryRecord;
using cedict_detail::HeadwordIndex;
using cedict_detail::KeyHash;
using cedict_detail::Span;
using cedict_detail::Tables;

namespace {

constexpr std::size_t kExpectedStrings = 400'000;
constexpr int kRunReach = 24;  // characters taken on either side of the pointer
constexpr std::string_view kRareCharacter =
    "(rare character: an old component, almost never used alone)";
constexpr std::string_view kLiterally = "lit. ";

// Calls `line` for each line, whatever its line break (LF, CR, CRLF, NEL, LS, PS).
template <typename F>
void forEachLine(std::string_view buffer, F&& line) {
  const std::size_t n = buffer.size();
  // Nearly every file uses LF alone: then memchr finds the lines at memory speed.
  const bool onlyLineFeeds = buffer.find('\r') == std::string_view::npos &&
                             buffer.find("\xC2\x85") == std::string_view::npos &&
                             buffer.find("\xE2\x80\xA8") == std::string_view::npos &&
                             buffer.find("\xE2\x80\xA9") == std::string_view::npos;
  if (onlyLineFeeds) {
    for (std::size_t start = 0; start < n;) {
      std::size_t end = buffer.find('\n', start);
      if (end == std::string_view::npos) end = n;
      line(buffer.substr(start, end - start));
      start = end + 1;
    }
    return;
  }
  std::size_t start = 0;
  for (std::size_t i = 0; i < n;) {
    const auto c = static_cast<unsigned char>(buffer[i]);
    std::size_t breakLength = 0;
    if (c == '\n' || c == '\r') {
      breakLength = 1;
    } else if (c == 0xC2 && i + 1 < n && static_cast<unsigned char>(buffer[i + 1]) == 0x85) {
      breakLength = 2;
    } else if (c == 0xE2 && i + 2 < n && static_cast<unsigned char>(buffer[i + 1]) == 0x80 &&
               (static_cast<unsigned char>(buffer[i + 2]) == 0xA8 ||
                static_cast<unsigned char>(buffer[i + 2]) == 0xA9)) {
      breakLength = 3;
    }
    if (breakLength == 0) {
      ++i;
      continue;
    }
    line(buffer.substr(start, i - start));
    i += breakLength;
    start = i;
  }
  if (start < n) line(buffer.substr(start));
}

// Appends valid UTF-8 as UTF-16.
void appendUtf16(std::string_view utf8, std::u16string& out) {
  const auto* bytes = reinterpret_cast<const uint8_t*>(utf8.data());
  const auto length = static_cast<int32_t>(utf8.size());
  for (int32_t i = 0; i < length;) {
    UChar32 c;
    U8_NEXT(bytes, i, length, c);
    if (c < 0) c = 0xFFFD;
    if (c <= 0xFFFF) {
      out.push_back(static_cast<char16_t>(c));
    } else {
      out.push_back(static_cast<char16_t>(U16_LEAD(c)));
      out.push_back(static_cast<char16_t>(U16_TRAIL(c)));
    }
  }
}

std::optional<std::uintmax_t> fileSize(const std::filesystem::path& path) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return std::nullopt;
  auto size = std::filesystem::file_size(path, error);
  if (error) return std::nullopt;
  return size;
}

// Appends the whole file to `out`; false when it cannot be read.
bool appendFile(const std::filesystem::path& path, std::string& out) {
  std::FILE* file = std::fopen(path.c_str(), "rb");
  if (!file) return false;
  char buffer[1 << 16];
  bool ok = true;
  while (true) {
    std::size_t n = std::fread(buffer, 1, sizeof buffer, file);
    out.append(buffer, n);
    if (n < sizeof buffer) {
      ok = !std::ferror(file);
      break;
    }
  }
  std::fclose(file);
  return ok;
}

// Character boundaries (UTF-16 offsets) of a short key: bounds[0] = 0 … bounds[count] = size.
struct Boundaries {
  static constexpr std::size_t kMax = 64;
  std::array<uint32_t, kMax + 1> at{};
  std::size_t count = 0;  // characters; only the first kMax are recorded
  std::size_t total = 0;  // all characters

  void measure(std::u16string_view key) {
    count = 0;
    total = 0;
    at[0] = 0;
    for (std::size_t i = 0; i < key.size();) {
      i = text::nextCharacter(key, i);
      ++total;
      if (count < kMax) at[++count] = static_cast<uint32_t>(i);
    }
  }
};

// A headword form decoded, measured and hashed, waiting for its turn in the index.
struct PreparedForm {
  uint32_t keyBegin = 0;  // into Batch::keys
  uint32_t keyEnd = 0;
  uint64_t hash = 0;
  std::size_t characters = 0;
  std::size_t prefixes = 0;
  std::array<uint32_t, CEDict::kMaxWordLength + 1> prefixEnd{};  // from keyBegin
  std::array<uint64_t, CEDict::kMaxWordLength + 1> prefixHash{};
};

struct PreparedLine {
  uint32_t entry = 0;
  bool twoForms = false;
  std::array<PreparedForm, 2> forms;
};

struct Batch {
  static constexpr std::size_t kLines = 512;
  std::vector<PreparedLine> lines;
  std::u16string keys;
  std::string_view bytes;  // the stretch of the file these lines came from
  Batch() { lines.reserve(kLines); }
};

// Hands batches from one reader thread to one inserting thread; the reader waits when
// `capacity` batches are pending. Owned by the load; both threads call it.
class BatchQueue {
 public:
  explicit BatchQueue(std::size_t capacity) : capacity_(capacity) {}

  void push(Batch&& batch) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return pending_.size() < capacity_; });
    pending_.push_back(std::move(batch));
    changed_.notify_all();
  }
  void close() {
    std::lock_guard lock(mutex_);
    closed_ = true;
    changed_.notify_all();
  }
  // Nothing once the reader has closed the queue and every batch has been taken.
  std::optional<Batch> pop() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return !pending_.empty() || closed_; });
    if (pending_.empty()) return std::nullopt;
    Batch batch = std::move(pending_.front());
    pending_.pop_front();
    changed_.notify_all();
    return batch;
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Batch> pending_;  // guarded by mutex_
  bool closed_ = false;        // guarded by mutex_
  const std::size_t capacity_;
};

class Builder {
 public:
  explicit Builder(Tables& tables) : t_(tables) {}

  // Room for what both files will add, judged from their sizes (CC-CEDICT averages 78 bytes and
  // 1.6 glosses a line, the supplement 28 bytes): growing these mid-load would copy megabytes.
  void reserve(std::size_t mainBytes, std::size_t supplementBytes) {
    t_.entries.reserve(mainBytes / 72 + supplementBytes / 24);
    t_.defs.reserve(mainBytes / 40 + supplementBytes / 24);
  }

  // Two threads share the main file: a reader parses and prepares the lines (the entry records
  // are its own), and the calling thread puts the prepared keys into the index, in file order, a
  // batch at a time, and checks that the batch's bytes are UTF-8 (parsing copes with any bytes;
  // the work is thrown away if the check fails). False when the file is not valid UTF-8.
  bool readMain(std::string_view buffer, LoadStats& stats) {
    BatchQueue queue(8);
    LoadStats counts;
    std::thread reader([&] {
      DictionaryLine line;
      Batch batch;
      const char* from = buffer.data();
      forEachLine(buffer, [&](std::string_view raw) {
        if (!raw.empty() && raw.front() != '#') {
          if (parseDictionaryLine(raw, line) && addLine(line, batch)) ++counts.entries;
          else ++counts.skippedLines;
        }
        if (batch.lines.size() == Batch::kLines) {
          const char* to = raw.data() + raw.size();
          batch.bytes = std::string_view(from, static_cast<std::size_t>(to - from));
          from = to;
          queue.push(std::exchange(batch, Batch{}));
        }
      });
      batch.bytes = std::string_view(from, static_cast<std::size_t>(buffer.data() + buffer.size() - from));
      queue.push(std::move(batch));
      queue.close();
    });
    bool valid = true;
    while (auto batch = queue.pop()) {
      insert(*batch);
      // Batches meet at line ends, and line breaks are ASCII or whole sequences: checking each
      // stretch checks the file.
      valid = valid && text::isValidUtf8(batch->bytes);
    }
    reader.join();
    if (!valid) return false;
    stats.entries = counts.entries;
    stats.skippedLines = counts.skippedLines;
    t_.index.finishEntries();
    t_.maxLen = std::min(maxLen_, CEDict::kMaxWordLength);
    stats.keys = t_.index.keyCount();
    return true;
  }

  // The supplement, in two passes: its lines are parsed and hashed first, then applied in order
  // with the slots of the lines ahead already on their way from memory.
  void readSupplement(LoadStats& stats) {
    struct Prepared {
      SupplementLine line;
      uint32_t keyBegin;
      uint32_t keyEnd;
      uint64_t hash;
    };
    std::vector<Prepared> lines;
    lines.reserve(t_.more.size() / 24);
    std::u16string keys;
    keys.reserve(t_.more.size() / 12);
    SupplementLine line;
    forEachLine(t_.more, [&](std::string_view raw) {
      if (!parseSupplementLine(raw, line)) return;
      const auto begin = static_cast<uint32_t>(keys.size());
      appendUtf16(line.character, keys);
      const auto end = static_cast<uint32_t>(keys.size());
      lines.push_back({line, begin, end, KeyHash::of(std::u16string_view(keys).substr(begin, end - begin))});
    });

    constexpr std::size_t kAhead = 8;
    std::optional<Span> rare;
    for (std::size_t i = 0; i < lines.size(); ++i) {
      if (i + kAhead < lines.size()) t_.index.prefetch(lines[i + kAhead].hash);
      const Prepared& prepared = lines[i];
      const SupplementLine& l = prepared.line;
      const std::u16string_view key =
          std::u16string_view(keys).substr(prepared.keyBegin, prepared.keyEnd - prepared.keyBegin);
      if (const auto* slot = t_.index.find(key, prepared.hash); slot && slot->isKey()) {
        if (l.definition.empty() || hasRealGloss(*slot)) continue;
        if (addGlossedCopy(t_.index.entryList(*slot)[0], l.definition)) {
          // The copy replaces the first entry under this form only: under its other form the
          // entry stays as it was.
          t_.index.replaceFirstEntry(key, prepared.hash, static_cast<uint32_t>(t_.entries.size() - 1));
          ++stats.supplementGlossed;
        }
        continue;
      }
      if (l.pinyin.empty() && l.definition.empty()) continue;
      if (l.character.size() > UINT16_MAX || l.pinyin.size() > UINT16_MAX) continue;
      EntryRecord record;
      record.trad = record.simp = t_.spanInMore(l.character).offset;
      record.tradLength = record.simpLength = static_cast<uint16_t>(l.character.size());
      record.pinyin = t_.spanInMore(l.pinyin).offset;
      record.pinyinLength = static_cast<uint16_t>(l.pinyin.size());
      record.defsBegin = static_cast<uint32_t>(t_.defs.size());
      record.defsCount = 1;
      if (l.definition.empty()) {
        if (!rare) rare = appendText(kRareCharacter);
        if (!rare) continue;
        t_.defs.push_back(*rare);
      } else {
        t_.defs.push_back(t_.spanInMore(l.definition));
      }
      t_.index.addSingleEntryKey(key, prepared.hash, static_cast<uint32_t>(t_.entries.size()));
      t_.entries.push_back(record);
      ++stats.supplementAdded;
    }
    stats.keys = t_.index.keyCount();
    stats.supplementRead = true;
  }

 private:
  // False for a line whose fields do not fit the compact record (headwords of 64 KB…).
  // Reader thread.
  bool addLine(const DictionaryLine& line, Batch& batch) {
    constexpr std::size_t kLongest = UINT16_MAX;
    if (line.trad.size() > kLongest || line.simp.size() > kLongest || line.pinyin.size() > kLongest)
      return false;
    const auto entry = static_cast<uint32_t>(t_.entries.size());
    EntryRecord record;
    record.trad = t_.spanInMain(line.trad).offset;
    record.simp = t_.spanInMain(line.simp).offset;
    record.pinyin = t_.spanInMain(line.pinyin).offset;
    record.tradLength = static_cast<uint16_t>(line.trad.size());
    record.simpLength = static_cast<uint16_t>(line.simp.size());
    record.pinyinLength = static_cast<uint16_t>(line.pinyin.size());
    record.defsBegin = static_cast<uint32_t>(t_.defs.size());
    record.defsCount = static_cast<uint16_t>(std::min<std::size_t>(line.defs.size(), UINT16_MAX));
    for (std::size_t i = 0; i < record.defsCount; ++i) t_.defs.push_back(t_.spanInMain(line.defs[i]));
    t_.entries.push_back(record);

    PreparedLine& prepared = batch.lines.emplace_back();
    prepared.entry = entry;
    prepare(line.trad, batch.keys, prepared.forms[0]);
    prepared.twoForms = line.simp != line.trad;
    if (prepared.twoForms) prepare(line.simp, batch.keys, prepared.forms[1]);
    return true;
  }

  // Reader thread.
  void prepare(std::string_view form, std::u16string& keys, PreparedForm& out) {
    out.keyBegin = static_cast<uint32_t>(keys.size());
    appendUtf16(form, keys);
    out.keyEnd = static_cast<uint32_t>(keys.size());
    const std::u16string_view key = std::u16string_view(keys).substr(out.keyBegin, out.keyEnd - out.keyBegin);
    out.characters = 0;
    out.prefixes = 0;
    if (key.size() > HeadwordIndex::kMaxKeyUnits) {
      out.keyEnd = out.keyBegin;
      return;
    }
    bounds_.measure(key);
    out.characters = bounds_.total;
    out.hash = KeyHash::of(key);
    // The strings that begin the key, up to the longest match ever tried.
    out.prefixes = std::min<std::size_t>(bounds_.count, CEDict::kMaxWordLength + 1) - 1;
    KeyHash prefix;
    for (std::size_t k = 1; k <= out.prefixes; ++k) {
      prefix.append(key.substr(bounds_.at[k - 1], bounds_.at[k] - bounds_.at[k - 1]));
      out.prefixEnd[k] = bounds_.at[k];
      out.prefixHash[k] = prefix.value();
    }
  }

  void prefetch(const PreparedLine& line) const {
    for (std::size_t f = 0; f < (line.twoForms ? 2u : 1u); ++f) {
      const PreparedForm& form = line.forms[f];
      t_.index.prefetch(form.hash);
      for (std::size_t k = 1; k <= form.prefixes; ++k) t_.index.prefetch(form.prefixHash[k]);
    }
  }

  // Calling thread. The slots a few lines ahead are fetched while a line goes in, so the inserts
  // do not wait on memory one after another.
  void insert(const Batch& batch) {
    constexpr std::size_t kAhead = 8;
    const std::u16string_view keys = batch.keys;
    const std::size_t n = batch.lines.size();
    for (std::size_t i = 0; i < std::min(kAhead, n); ++i) prefetch(batch.lines[i]);
    for (std::size_t i = 0; i < n; ++i) {
      if (i + kAhead < n) prefetch(batch.lines[i + kAhead]);
      const PreparedLine& line = batch.lines[i];
      for (std::size_t f = 0; f < (line.twoForms ? 2u : 1u); ++f) {
        const PreparedForm& form = line.forms[f];
        const std::u16string_view key = keys.substr(form.keyBegin, form.keyEnd - form.keyBegin);
        if (!t_.index.addEntry(key, form.hash, line.entry)) continue;
        for (std::size_t k = 1; k <= form.prefixes; ++k)
          t_.index.markPrefix(key.substr(0, form.prefixEnd[k]), form.prefixHash[k]);
      }
      const PreparedForm& trad = line.forms[0];
      const PreparedForm& simp = line.twoForms ? line.forms[1] : line.forms[0];
      maxLen_ = static_cast<int>(std::min<std::size_t>(
          CEDict::kMaxWordLength + 1,
          std::max({static_cast<std::size_t>(maxLen_), trad.characters, simp.characters})));
      // The first line that pairs two single characters sets the conversion both ways.
      if (line.twoForms && trad.characters == 1 && simp.characters == 1) {
        std::u16string tradKey(keys.substr(trad.keyBegin, trad.keyEnd - trad.keyBegin));
        std::u16string simpKey(keys.substr(simp.keyBegin, simp.keyEnd - simp.keyBegin));
        t_.s2t.try_emplace(simpKey, tradKey);
        t_.t2s.try_emplace(std::move(tradKey), std::move(simpKey));
      }
    }
  }

  bool hasRealGloss(const HeadwordIndex::Slot& slot) const {
    const uint32_t* list = t_.index.entryList(slot);
    for (std::size_t i = 0; i < slot.entryCount(); ++i) {
      const EntryRecord& record = t_.entries[list[i]];
      for (uint32_t d = 0; d < record.defsCount; ++d)
        if (!isCrossReference(t_.view(t_.defs[record.defsBegin + d]))) return true;
    }
    return false;
  }

  // Appends a copy of `original` whose glosses are "lit. " + definition, then its own.
  bool addGlossedCopy(uint32_t original, std::string_view definition) {
    std::string gloss(kLiterally);
    gloss.append(definition);
    auto added = appendText(gloss);
    if (!added) return false;
    EntryRecord copy = t_.entries[original];
    const auto begin = static_cast<uint32_t>(t_.defs.size());
    t_.defs.push_back(*added);
    for (uint32_t i = 0; i < copy.defsCount; ++i) t_.defs.push_back(t_.defs[copy.defsBegin + i]);
    copy.defsBegin = begin;
    copy.defsCount = static_cast<uint16_t>(std::min<std::size_t>(copy.defsCount + 1u, UINT16_MAX));
    t_.entries.push_back(copy);
    return true;
  }

  // Texts made while loading go after the supplement. Room for them was reserved, since the
  // supplement's lines are being read from that same buffer: it must never move.
  std::optional<Span> appendText(std::string_view s) {
    if (t_.more.size() + s.size() > t_.more.capacity()) return std::nullopt;
    const std::size_t at = t_.more.size();
    t_.more.append(s);
    return t_.spanInMore(std::string_view(t_.more).substr(at));
  }

  Tables& t_;
  int maxLen_ = 1;
  Boundaries bounds_;  // reader thread
};

// Character boundaries of a stretch of text, relative to `base`.
struct Run {
  static constexpr std::size_t kMax = 2 * kRunReach;
  std::array<std::size_t, kMax + 1> at{};  // UTF-16 indexes into the text
  std::size_t count = 0;
};

struct Piece {
  uint8_t start;   // in characters
  uint8_t length;  // in characters
  friend bool operator==(const Piece&, const Piece&) = default;
};

struct Segmentation {
  std::array<Piece, Run::kMax> pieces{};
  std::size_t count = 0;
  std::size_t singles = 0;

  void add(std::size_t start, std::size_t length) {
    pieces[count++] = {static_cast<uint8_t>(start), static_cast<uint8_t>(length)};
    if (length == 1) ++singles;
  }
  const Piece* covering(std::size_t p) const {
    for (std::size_t i = 0; i < count; ++i)
      if (pieces[i].start <= p && p < pieces[i].start + pieces[i].length) return &pieces[i];
    return nullptr;
  }
};

}  // namespace

// ---------------------------------------------------------------------------------------------
// EntryRef and Entries

std::string_view EntryRef::trad() const {
  const EntryRecord& r = tables_->entries[index_];
  return tables_->view(r.trad, r.tradLength);
}
std::string_view EntryRef::simp() const {
  const EntryRecord& r = tables_->entries[index_];
  return tables_->view(r.simp, r.simpLength);
}
std::string_view EntryRef::pinyin() const {
  const EntryRecord& r = tables_->entries[index_];
  return tables_->view(r.pinyin, r.pinyinLength);
}
std::size_t EntryRef::defCount() const { return tables_->entries[index_].defsCount; }
std::string_view EntryRef::def(std::size_t i) const {
  return tables_->view(tables_->defs[tables_->entries[index_].defsBegin + i]);
}

Entry EntryRef::toEntry() const {
  Entry entry{std::string(trad()), std::string(simp()), std::string(pinyin()), {}};
  entry.defs.reserve(defCount());
  for (std::size_t i = 0; i < defCount(); ++i) entry.defs.emplace_back(def(i));
  return entry;
}

std::vector<Entry> Entries::toVector() const {
  std::vector<Entry> out;
  out.reserve(count_);
  for (EntryRef ref : *this) out.push_back(ref.toEntry());
  return out;
}

// ---------------------------------------------------------------------------------------------
// Loading

CEDict::CEDict() = default;
CEDict::~CEDict() = default;

std::expected<LoadStats, LoadError> CEDict::load(const std::filesystem::path& cedict,
                                                 const std::filesystem::path& unihan) {
  if (loading_.exchange(true)) return std::unexpected(LoadError::alreadyLoaded);
  auto fail = [&](LoadError error) {
    loading_ = false;
    return std::unexpected(error);
  };
  // Offsets into the text are 32 bits; no dictionary comes near.
  constexpr std::uintmax_t kLargest = UINT32_MAX / 4;
  const auto mainSize = fileSize(cedict);
  if (!mainSize || *mainSize > kLargest) return fail(LoadError::unreadable);
  auto mainFile = MappedFile::open(cedict);
  if (!mainFile) return fail(LoadError::unreadable);

  auto tables = std::make_unique<Tables>(kExpectedStrings);
  tables->mainFile = std::move(mainFile);
  tables->main = tables->mainFile->bytes();
  const auto supplementSize = fileSize(unihan);
  const bool withSupplement = supplementSize && *supplementSize <= kLargest;
  const std::size_t supplementBytes = withSupplement ? static_cast<std::size_t>(*supplementSize) : 0;

  LoadStats stats;
  Builder builder(*tables);
  builder.reserve(tables->main.size(), supplementBytes);
  if (!builder.readMain(tables->main, stats)) return fail(LoadError::invalidUtf8);

  if (withSupplement) {
    // The supplement's own texts ("lit. " + definition) go after it: reserve for both, so that
    // the buffer never moves while its lines are read.
    tables->more.reserve(supplementBytes * 4 + kRareCharacter.size() + 16);
    if (appendFile(unihan, tables->more) && tables->more.size() <= supplementBytes &&
        text::isValidUtf8(tables->more)) {
      builder.readSupplement(stats);
    } else {
      tables->more.clear();
    }
  }

  owned_ = std::move(tables);
  tables_.store(owned_.get(), std::memory_order_release);
  return stats;
}

bool CEDict::loaded() const { return tables() != nullptr; }

int CEDict::maxLen() const {
  const Tables* t = tables();
  return t ? t->maxLen : 1;
}

// ---------------------------------------------------------------------------------------------
// Lookups

Entries CEDict::lookup(std::u16string_view word) const {
  const Tables* t = tables();
  if (!t) return {};
  const auto* slot = t->index.find(word);
  if (!slot || !slot->isKey()) return {};
  return Entries(t, t->index.entryList(*slot), slot->entryCount());
}

namespace {

// The longest key that begins at `from`, of at most `limit` characters and at least `minimum`:
// its end, or `from` when there is none. Characters are measured as the walk goes, and it stops
// as soon as no longer key can begin with what has been read.
std::size_t longestFrom(const Tables& t, std::u16string_view text, std::size_t from,
                        std::size_t limit, std::size_t minimum, const HeadwordIndex::Slot** found) {
  KeyHash hash;
  std::size_t best = from;
  std::size_t end = from;
  for (std::size_t k = 1; k <= limit && end < text.size(); ++k) {
    const std::size_t next = text::nextCharacter(text, end);
    hash.append(text.substr(end, next - end));
    end = next;
    if (k < minimum) continue;
    const auto* slot = t.index.find(text.substr(from, end - from), hash.value());
    if (!slot) break;
    if (slot->isKey()) {
      best = end;
      if (found) *found = slot;
    }
    if (!slot->isPrefix()) break;
  }
  return best;
}

// Every key of two characters or more inside the run, as one bit mask per start: bit L of
// ends[s] is set when the L characters from s form a key. Both segmentations read from these,
// so each start is walked once, and a walk stops as soon as no longer key can begin there.
void keysInRun(const Tables& t, std::u16string_view text, const std::size_t* at, std::size_t count,
               std::size_t maxLen, uint64_t* ends) {
  for (std::size_t s = 0; s + 1 < count; ++s) {
    ends[s] = 0;
    const std::size_t limit = std::min(count - s, maxLen);
    KeyHash hash;
    hash.append(text.substr(at[s], at[s + 1] - at[s]));
    for (std::size_t k = 2; k <= limit; ++k) {
      hash.append(text.substr(at[s + k - 1], at[s + k] - at[s + k - 1]));
      const auto* slot = t.index.find(text.substr(at[s], at[s + k] - at[s]), hash.value());
      if (!slot) break;
      if (slot->isKey()) ends[s] |= uint64_t{1} << k;
      if (!slot->isPrefix()) break;
    }
  }
  ends[count - 1] = 0;
}

}  // namespace

std::optional<WordMatch> CEDict::lookupPrefix(std::u16string_view text) const {
  const Tables* t = tables();
  if (!t || text.empty() || !text::isHanAt(text, 0)) return std::nullopt;
  const HeadwordIndex::Slot* slot = nullptr;
  const std::size_t end = longestFrom(*t, text, 0, static_cast<std::size_t>(t->maxLen), 1, &slot);
  if (end == 0) return std::nullopt;
  return WordMatch{text.substr(0, end), Entries(t, t->index.entryList(*slot), slot->entryCount()), 0};
}

std::optional<WordMatch> CEDict::wordAt(std::u16string_view text, std::ptrdiff_t index) const {
  if (index < 0 || static_cast<std::size_t>(index) >= text.size()) return std::nullopt;
  const Tables* t = tables();
  if (!t) return std::nullopt;
  const std::size_t pointer = text::characterStart(text, static_cast<std::size_t>(index));

  // The direct candidate, the longest word from the pointer on, is what a failed comparison
  // falls back to.
  auto direct = [&]() -> std::optional<WordMatch> {
    auto match = lookupPrefix(text.substr(pointer));
    if (match) match->start = pointer;
    return match;
  };

  // The run of Han characters around the pointer: up to 24 before it, up to 24 from it on.
  std::size_t before = 0;
  std::size_t runStart = pointer;
  while (before < kRunReach && runStart > 0) {
    std::size_t previous = text::previousCharacter(text, runStart);
    if (!text::isHanAt(text, previous)) break;
    runStart = previous;
    ++before;
  }
  Run run;
  run.at[0] = runStart;
  std::size_t count = 0;
  for (std::size_t i = runStart; count < before;) {
    i = text::nextCharacter(text, i);
    run.at[++count] = i;
  }
  std::size_t after = 0;
  while (after < kRunReach && run.at[count] < text.size() && text::isHanAt(text, run.at[count])) {
    run.at[count + 1] = text::nextCharacter(text, run.at[count]);
    ++count;
    ++after;
  }
  run.count = count;
  if (after == 0 || run.at[count] - run.at[0] < 2) return direct();

  const std::size_t p = before;
  const auto maxLen = static_cast<std::size_t>(t->maxLen);
  std::array<uint64_t, Run::kMax> ends;
  keysInRun(*t, text, run.at.data(), run.count, maxLen, ends.data());

  // Forward: the longest key from each position on. Backward: the longest key ending at each
  // position, from the end of the run.
  Segmentation forward;
  for (std::size_t i = 0; i < run.count;) {
    const std::size_t k = ends[i] ? static_cast<std::size_t>(std::bit_width(ends[i]) - 1) : 1;
    forward.add(i, k);
    i += k;
  }
  Segmentation backward;
  for (std::size_t end = run.count; end > 0;) {
    std::size_t k = std::min(end, maxLen);
    while (k >= 2 && !(ends[end - k] & (uint64_t{1} << k))) --k;
    if (k < 2) k = 1;
    backward.add(end - k, k);
    end -= k;
  }
  std::reverse(backward.pieces.begin(), backward.pieces.begin() + static_cast<std::ptrdiff_t>(backward.count));

  const Piece* f = forward.covering(p);
  const Piece* b = backward.covering(p);
  const Piece single{static_cast<uint8_t>(p), 1};
  Piece chosen = *f;
  if (b && *f == *b) {
    chosen = *f;
  } else if (b) {
    // Equal counts and equal singles: the backward reading wins, which favours the word that
    // ends at the right-hand neighbour (研究生命 → 生命, not 研究生).
    if (backward.count < forward.count) chosen = *b;
    else if (backward.count == forward.count) chosen = forward.singles < backward.singles ? *f : *b;
    else chosen = *f;
  } else {
    if (backward.count < forward.count) chosen = single;
    else if (backward.count == forward.count) chosen = forward.singles < backward.singles ? *f : single;
    else chosen = *f;
  }

  const std::size_t from = run.at[chosen.start];
  const std::u16string_view word = text.substr(from, run.at[chosen.start + chosen.length] - from);
  const auto* slot = t->index.find(word);
  if (!slot || !slot->isKey()) return direct();
  return WordMatch{word, Entries(t, t->index.entryList(*slot), slot->entryCount()), from};
}

std::vector<std::u16string_view> CEDict::segment(std::u16string_view text) const {
  std::vector<std::u16string_view> pieces;
  pieces.reserve(text.size() / 2);
  const Tables* t = tables();
  const auto maxLen = static_cast<std::size_t>(t ? t->maxLen : 1);
  for (std::size_t i = 0; i < text.size();) {
    std::size_t end = text::nextCharacter(text, i);
    if (t && maxLen >= 2 && end < text.size() && text::isHanAt(text, i)) {
      const std::size_t longest = longestFrom(*t, text, i, maxLen, 2, nullptr);
      if (longest > i) end = longest;
    }
    pieces.push_back(text.substr(i, end - i));
    i = end;
  }
  return pieces;
}

std::vector<FoundWord> CEDict::dictionaryWords(std::u16string_view text, std::size_t limit) const {
  std::vector<FoundWord> words;
  const Tables* t = tables();
  if (!t || limit == 0 || t->maxLen < 2) return words;
  std::unordered_set<std::u16string_view> seen;
  const auto maxLen = static_cast<std::size_t>(t->maxLen);
  for (std::size_t i = 0; i < text.size() && words.size() < limit;) {
    const HeadwordIndex::Slot* slot = nullptr;
    const std::size_t end = longestFrom(*t, text, i, maxLen, 2, &slot);
    if (end == i) {
      i = text::nextCharacter(text, i);
      continue;
    }
    const std::u16string_view word = text.substr(i, end - i);
    if (seen.insert(word).second)
      words.push_back({word, Entries(t, t->index.entryList(*slot), slot->entryCount())});
    i = end;
  }
  return words;
}

std::u16string CEDict::convert(std::u16string_view text, bool toTraditional) const {
  const Tables* t = tables();
  if (!t) return std::u16string(text);
  const auto& table = toTraditional ? t->s2t : t->t2s;
  std::u16string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t end = text::nextCharacter(text, i);
    const std::u16string_view character = text.substr(i, end - i);
    if (auto it = table.find(character); it != table.end()) out.append(it->second);
    else out.append(character);
    i = end;
  }
  return out;
}

}  // namespace vesko
