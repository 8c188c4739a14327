#pragma once
// Shared by the fuzz targets: how an invariant failure is reported, and how one input becomes
// many lines.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

namespace vesko::fuzz {

// Says which invariant broke and on which line, in hex so that the bytes survive a terminal, then
// aborts so that libFuzzer keeps the input.
[[noreturn]] inline void fail(const char* what, std::string_view line) {
  std::fprintf(stderr, "\ninvariant broken: %s\nline (%zu bytes):", what, line.size());
  for (unsigned char c : line) std::fprintf(stderr, " %02x", c);
  std::fprintf(stderr, "\n");
  std::abort();
}

// Compares addresses as integers: a view that escaped its line must be reported, not turned into
// undefined pointer arithmetic.
inline bool inside(std::string_view part, std::string_view whole) {
  const auto begin = reinterpret_cast<std::uintptr_t>(whole.data());
  const auto at = reinterpret_cast<std::uintptr_t>(part.data());
  return at >= begin && at <= begin + whole.size() && part.size() <= begin + whole.size() - at;
}

// Offset of a view already known to lie inside `whole`.
inline std::size_t offsetIn(std::string_view part, std::string_view whole) {
  return static_cast<std::size_t>(part.data() - whole.data());
}

// Calls `fn` on every '\n'-separated line of the input and then, if there was more than one, on
// the whole input. Each line is copied into an allocation of exactly its size first: inside the
// shared input buffer a read past the end of a line would land on the next line, where
// AddressSanitizer could not see it.
template <typename Fn>
void forEachLine(const uint8_t* data, std::size_t size, Fn&& fn) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  std::size_t start = 0;
  while (start <= input.size()) {
    std::size_t end = input.find('\n', start);
    if (end == std::string_view::npos) end = input.size();
    const std::size_t length = end - start;
    std::unique_ptr<char[]> copy(new char[length]);
    if (length != 0) std::memcpy(copy.get(), input.data() + start, length);
    fn(std::string_view(copy.get(), length));
    start = end + 1;
  }
  // The whole input as one line: newlines are then just bytes inside headwords and glosses.
  if (input.find('\n') != std::string_view::npos) fn(input);
}

}  // namespace vesko::fuzz

#define VESKO_FUZZ_CHECK(cond, line)                 \
  do {                                               \
    if (!(cond)) ::vesko::fuzz::fail(#cond, (line)); \
  } while (false)
