#pragma once
// French elided words and what they stand for: "l'école" is "le" + "école". Read by the French
// elision rule. Constant data.

#include <string_view>

namespace vesko::french {

struct Elision {
  std::u16string_view elided;    // lowercase, before the apostrophe
  std::u16string_view expanded;  // the full word it stands for
};

// clang-format off
inline constexpr Elision kElisions[] = {
    {u"c",       u"ce"},
    {u"l",       u"le"},
    {u"d",       u"de"},
    {u"j",       u"je"},
    {u"qu",      u"que"},
    {u"n",       u"ne"},
    {u"s",       u"se"},
    {u"m",       u"me"},
    {u"t",       u"te"},
    {u"jusqu",   u"jusque"},
    {u"lorsqu",  u"lorsque"},
    {u"puisqu",  u"puisque"},
};

// Kept apart from the table on purpose: "c'mon" is English, and before "il"/"ils" the elided "s"
// is "si" ("s'il pleut" = "si il pleut").
inline constexpr std::u16string_view kEnglishAfterC = u"mon";
inline constexpr std::u16string_view kSiBefore[] = {u"il", u"ils"};
inline constexpr std::u16string_view kSi = u"si";
// clang-format on

}  // namespace vesko::french
