#pragma once
// The program's name and version, and the data it ships with together with each licence: what the
// about text shows. Plain constants; any thread.

#include <array>
#include <string_view>

namespace vesko {

inline constexpr std::string_view kAppName = "Vesko";
inline constexpr std::string_view kAppVersion = "0.1.0";

struct DataCredit {
  std::string_view name;
  std::string_view holder;
  std::string_view licence;
};

// clang-format off
inline constexpr std::array<DataCredit, 2> kDataCredits{{
  {"CC-CEDICT (Chinese-English dictionary)",
   "© MDBG and the CC-CEDICT contributors; based on CEDICT © 1997, 1998 Paul Andrew Denisowski",
   "Creative Commons Attribution-ShareAlike 4.0 International (CC BY-SA 4.0)"},
  {"Unihan database, Unicode 15.0 (single-character readings and definitions)",
   "© 2022 Unicode, Inc.",
   "Unicode License Agreement for Data Files and Software"},
}};
// clang-format on

}  // namespace vesko
