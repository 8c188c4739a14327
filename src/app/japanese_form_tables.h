#pragma once
// Japanese inflection endings and the dictionary endings they come from, read in row order: a
// surface form such as 食べていました is turned into candidates 食べて, 食べる, … that the Japanese
// dictionary is asked for. Constant data.

#include <string_view>

namespace vesko::japanese {

enum class Then {
  addTe,         // add "て" and read the result again
  addDe,         // add "で" and read the result again
  continuative,  // the rest is a continuative stem (食べ, 書き, し): turn it into dictionary forms
  addEndings,  // add each of `endings`
};

struct FormRule {
  std::u16string_view removed;
  Then then;
  std::u16string_view endings[3];  // for addEndings; empty slots are unused
};

// clang-format off
inline constexpr FormRule kFormRules[] = {
    {u"ていました",   Then::addTe, {}},
    {u"ています",     Then::addTe, {}},
    {u"ていない",     Then::addTe, {}},
    {u"ている",       Then::addTe, {}},
    {u"ていた",       Then::addTe, {}},
    {u"ていて",       Then::addTe, {}},
    {u"てる",         Then::addTe, {}},
    {u"てた",         Then::addTe, {}},
    {u"でいました",   Then::addDe, {}},
    {u"でいます",     Then::addDe, {}},
    {u"でいる",       Then::addDe, {}},
    {u"でいた",       Then::addDe, {}},
    {u"でる",         Then::addDe, {}},
    {u"ませんでした", Then::continuative, {}},
    {u"ましょう",     Then::continuative, {}},
    {u"ました",       Then::continuative, {}},
    {u"ません",       Then::continuative, {}},
    {u"ます",         Then::continuative, {}},
    {u"たくなかった", Then::continuative, {}},
    {u"たくない",     Then::continuative, {}},
    {u"たかった",     Then::continuative, {}},
    {u"たい",         Then::continuative, {}},
    {u"って",         Then::addEndings, {u"う", u"つ", u"る"}},
    {u"った",         Then::addEndings, {u"う", u"つ", u"る"}},
    {u"んで",         Then::addEndings, {u"む", u"ぶ", u"ぬ"}},
    {u"んだ",         Then::addEndings, {u"む", u"ぶ", u"ぬ"}},
    {u"いて",         Then::addEndings, {u"く", {}}},
    {u"いた",         Then::addEndings, {u"く", {}}},
    {u"いで",         Then::addEndings, {u"ぐ", {}}},
    {u"いだ",         Then::addEndings, {u"ぐ", {}}},
    {u"して",         Then::addEndings, {u"す", u"する"}},
    {u"した",         Then::addEndings, {u"す", u"する"}},
    {u"て",           Then::addEndings, {u"る", {}}},
    {u"た",           Then::addEndings, {u"る", {}}},
    {u"られる",       Then::addEndings, {u"る", {}}},
    {u"られた",       Then::addEndings, {u"る", {}}},
    {u"れば",         Then::addEndings, {u"る", {}}},
    {u"し",           Then::addEndings, {u"する", {}}},
    {u"なかった",     Then::addEndings, {u"る", {}}},
    {u"なくて",       Then::addEndings, {u"る", {}}},
    {u"ない",         Then::addEndings, {u"る", {}}},
    {u"くなかった",   Then::addEndings, {u"い", {}}},
    {u"くない",       Then::addEndings, {u"い", {}}},
    {u"かった",       Then::addEndings, {u"い", {}}},
    {u"ければ",       Then::addEndings, {u"い", {}}},
    {u"くて",         Then::addEndings, {u"い", {}}},
    {u"く",           Then::addEndings, {u"い", {}}},
    {u"さ",           Then::addEndings, {u"い", {}}},
};

// 行って and 行った read by the rule for って would give 行う, another verb; they come from 行く.
struct SpecialForm {
  std::u16string_view surface;
  std::u16string_view dictionaryForm;
};
inline constexpr SpecialForm kSpecialForms[] = {
    {u"行って", u"行く"},
    {u"行った", u"行く"},
};

// The continuative stem of a godan verb ends in the i-row kana of its dictionary ending:
// 書き → 書く, 読み → 読む.
struct GodanRow {
  char16_t continuative;
  char16_t dictionary;
};
inline constexpr GodanRow kGodanRows[] = {
    {u'い', u'う'}, {u'き', u'く'}, {u'ぎ', u'ぐ'}, {u'し', u'す'}, {u'ち', u'つ'},
    {u'に', u'ぬ'}, {u'び', u'ぶ'}, {u'み', u'む'}, {u'り', u'る'},
};

// The two irregular verbs, by their continuative stem: し(ます) is する, き(ます) and 来(ます)
// are 来る. A stem that ends in し (勉強し) gives the same ending to its noun (勉強する).
struct IrregularStem {
  std::u16string_view stem;
  std::u16string_view dictionaryForm;
};
inline constexpr IrregularStem kIrregularStems[] = {
    {u"し", u"する"},
    {u"き", u"くる"},
    {u"来", u"来る"},
};
// clang-format on

inline constexpr char16_t kIterationMark = u'々';

}  // namespace vesko::japanese
