#include "learn/uuid.h"

#include <sys/random.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <random>

namespace vesko {
namespace {

constexpr char kHex[] = "0123456789ABCDEF";

void fillRandom(std::array<std::uint8_t, 16>& bytes) {
  std::size_t filled = 0;
  while (filled < bytes.size()) {
    ssize_t got = ::getrandom(bytes.data() + filled, bytes.size() - filled, 0);
    if (got > 0) {
      filled += static_cast<std::size_t>(got);
    } else if (got < 0 && errno != EINTR) {
      // A kernel without getrandom: the library's device-backed source is the next best.
      std::random_device device;
      for (auto& byte : bytes) byte = static_cast<std::uint8_t>(device());
      return;
    }
  }
}

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

bool isDashPlace(std::size_t i) {
  return i == 8 || i == 13 || i == 18 || i == 23;
}

}  // namespace

std::string newUuid() {
  std::array<std::uint8_t, 16> bytes{};
  fillRandom(bytes);
  bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40);  // version 4
  bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80);  // RFC 4122 variant
  std::string text;
  text.reserve(36);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
    text += kHex[bytes[i] >> 4];
    text += kHex[bytes[i] & 0x0F];
  }
  return text;
}

std::optional<std::string> canonicalUuid(std::string_view text) {
  if (text.size() != 36) return std::nullopt;
  std::string canonical(text);
  for (std::size_t i = 0; i < canonical.size(); ++i) {
    if (isDashPlace(i)) {
      if (canonical[i] != '-') return std::nullopt;
      continue;
    }
    int value = hexValue(canonical[i]);
    if (value < 0) return std::nullopt;
    canonical[i] = kHex[value];
  }
  return canonical;
}

}  // namespace vesko
