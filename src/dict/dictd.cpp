#include "dict/dictd.h"

#include <zlib.h>

#include <algorithm>
#include <fstream>
#include <iterator>

#include "dict/dictd_format.h"
#include "dict/lowercase.h"
#include "text/unicode.h"

namespace vesko {
namespace {

// A gzip member of a few megabytes cannot honestly inflate past this; a bomb stops here.
constexpr std::size_t kMaxText = std::size_t{512} << 20;

std::optional<std::string> readWhole(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  if (in.bad()) return std::nullopt;
  return bytes;
}

bool isGzip(std::string_view bytes) {
  return bytes.size() >= 2 && static_cast<unsigned char>(bytes[0]) == 0x1f &&
         static_cast<unsigned char>(bytes[1]) == 0x8b;
}

}  // namespace

std::optional<std::string> gunzip(std::string_view compressed, std::size_t limit) {
  z_stream stream{};
  // 16 + MAX_WBITS: a gzip wrapper, whose header (with dictzip's extra field) zlib reads itself.
  if (inflateInit2(&stream, 16 + MAX_WBITS) != Z_OK) return std::nullopt;
  std::string out;
  if (compressed.size() >= 4) {
    // The last member's trailer holds its size modulo 2^32: a good first guess for one member.
    const auto* tail = reinterpret_cast<const unsigned char*>(compressed.data() + compressed.size() - 4);
    const std::size_t guess = tail[0] | tail[1] << 8 | tail[2] << 16 | std::size_t{tail[3]} << 24;
    out.reserve(std::min(guess, limit));
  }
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(compressed.data()));
  stream.avail_in = static_cast<uInt>(compressed.size());
  char buffer[1 << 16];
  bool ok = true;
  while (true) {
    stream.next_out = reinterpret_cast<Bytef*>(buffer);
    stream.avail_out = sizeof buffer;
    const int status = inflate(&stream, Z_NO_FLUSH);
    const std::size_t produced = sizeof buffer - stream.avail_out;
    if (out.size() + produced > limit) {
      ok = false;
      break;
    }
    out.append(buffer, produced);
    if (status == Z_STREAM_END) {
      if (stream.avail_in == 0) break;
      if (inflateReset(&stream) != Z_OK) {  // another member follows
        ok = false;
        break;
      }
      continue;
    }
    if (status != Z_OK || (produced == 0 && stream.avail_in == 0)) {
      ok = false;  // corrupt, or truncated before the end of the member
      break;
    }
  }
  inflateEnd(&stream);
  if (!ok) return std::nullopt;
  return out;
}

std::expected<DictdFile, std::string> DictdFile::load(const std::filesystem::path& index,
                                                      const std::filesystem::path& dict) {
  DictdFile file;
  auto indexBytes = readWhole(index);
  if (!indexBytes) return std::unexpected("cannot read " + index.string());
  auto dictBytes = readWhole(dict);
  if (!dictBytes) return std::unexpected("cannot read " + dict.string());
  if (isGzip(*dictBytes)) {
    auto text = gunzip(*dictBytes, kMaxText);
    if (!text) return std::unexpected(dict.string() + " is not valid gzip");
    *file.text_ = std::move(*text);
  } else {
    *file.text_ = std::move(*dictBytes);
  }
  *file.index_ = std::move(*indexBytes);

  const std::string_view indexText = *file.index_;
  const std::string_view text = *file.text_;
  std::size_t start = 0;
  while (start < indexText.size()) {
    std::size_t end = indexText.find('\n', start);
    if (end == std::string_view::npos) end = indexText.size();
    const std::string_view line = indexText.substr(start, end - start);
    start = end + 1;
    if (line.empty()) continue;
    auto parsed = parseDictdIndexLine(line);
    if (!parsed || parsed->offset > text.size() || parsed->length > text.size() - parsed->offset ||
        !text::isValidUtf8(parsed->headword)) {
      ++file.skippedLines_;
      continue;
    }
    if (isDictdMetadata(parsed->headword)) continue;
    const std::string_view body = text.substr(parsed->offset, parsed->length);
    if (!text::isValidUtf8(body)) {
      ++file.skippedLines_;
      continue;
    }
    file.entries_.push_back({parsed->headword, body});
  }
  return file;
}

std::expected<std::unique_ptr<DictdDictionary>, std::string> DictdDictionary::load(
    const std::filesystem::path& index, const std::filesystem::path& dict) {
  auto file = DictdFile::load(index, dict);
  if (!file) return std::unexpected(file.error());
  std::unique_ptr<DictdDictionary> out(new DictdDictionary(std::move(*file)));
  const auto& entries = out->file_.entries();
  for (std::size_t i = 0; i < entries.size(); ++i)
    out->headwords_.add(lowercased(entries[i].headword), static_cast<uint32_t>(i));
  out->headwords_.finish();
  return out;
}

std::vector<WordEntry> DictdDictionary::lookup(std::string_view lowercased) const {
  std::vector<WordEntry> out;
  for (uint32_t i : headwords_.find(lowercased)) {
    const FreedictBody body = parseFreedictBody(file_.entries()[i].body);
    if (body.senses.empty()) continue;
    WordEntry entry;
    entry.headword = std::string(body.headword.empty() ? file_.entries()[i].headword : body.headword);
    entry.reading = std::string(body.pronunciation);
    for (std::string_view sense : body.senses) entry.defs.emplace_back(sense);
    out.push_back(std::move(entry));
  }
  return out;
}

bool DictdDictionary::contains(std::string_view lowercased) const {
  return !headwords_.find(lowercased).empty();
}

}  // namespace vesko
