#pragma once
// Identities of kept words: random (version 4) UUIDs in their canonical upper-case text, as the
// file stores them. Stateless; any thread.

#include <optional>
#include <string>
#include <string_view>

namespace vesko {

// "0F8A…-4…-[89AB]…": 122 bits from the kernel's random source.
std::string newUuid();
// The canonical upper-case text of any well-formed UUID ("0f8a…" → "0F8A…"); nothing otherwise.
std::optional<std::string> canonicalUuid(std::string_view text);

}  // namespace vesko
