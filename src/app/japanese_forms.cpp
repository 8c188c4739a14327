#include "app/japanese_forms.h"

#include <algorithm>

#include "app/japanese_form_tables.h"

namespace vesko {
namespace {

using japanese::Then;

void add(std::vector<std::u16string>& out, std::u16string candidate) {
  if (std::find(out.begin(), out.end(), candidate) == out.end())
    out.push_back(std::move(candidate));
}

// Depth-first, so that a form read again comes right after the form it was read from:
// 食べていました gives 食べて and then 食べる before the ました reading.
void expand(std::u16string_view form, std::vector<std::u16string>& out, int depth) {
  if (depth > 8) return;  // each reading again shortens the form; this is only a backstop
  bool special = false;
  for (const auto& rule : japanese::kSpecialForms) {
    if (form.size() >= rule.surface.size() && form.ends_with(rule.surface)) {
      std::u16string candidate(form.substr(0, form.size() - rule.surface.size()));
      add(out, candidate + std::u16string(rule.dictionaryForm));
      special = true;
    }
  }
  for (const auto& rule : japanese::kFormRules) {
    if (form.size() <= rule.removed.size() || !form.ends_with(rule.removed)) continue;
    if (special && (rule.removed == u"って" || rule.removed == u"った")) continue;
    const std::u16string_view stem = form.substr(0, form.size() - rule.removed.size());
    switch (rule.then) {
      case Then::addTe:
      case Then::addDe: {
        std::u16string next(stem);
        next += rule.then == Then::addTe ? u'て' : u'で';
        add(out, next);
        expand(next, out, depth + 1);
        break;
      }
      case Then::continuative:
        for (auto& candidate : dictionaryFormsOfStem(stem)) add(out, std::move(candidate));
        break;
      case Then::addEndings:
        for (auto ending : rule.endings)
          if (!ending.empty()) add(out, std::u16string(stem) + std::u16string(ending));
        break;
    }
  }
}

}  // namespace

std::vector<std::u16string> dictionaryFormsOfStem(std::u16string_view stem) {
  std::vector<std::u16string> forms;
  if (stem.empty()) return forms;
  for (const auto& irregular : japanese::kIrregularStems) {
    if (stem == irregular.stem) add(forms, std::u16string(irregular.dictionaryForm));
  }
  // 勉強し → 勉強する: a noun made a verb by する.
  if (stem.size() > 1 && stem.back() == u'し')
    add(forms, std::u16string(stem.substr(0, stem.size() - 1)) + u"する");
  for (const auto& row : japanese::kGodanRows) {
    if (stem.back() == row.continuative) {
      std::u16string godan(stem);
      godan.back() = row.dictionary;
      add(forms, std::move(godan));
    }
  }
  add(forms, std::u16string(stem) + u"る");  // ichidan: 食べ → 食べる
  return forms;
}

std::vector<std::u16string> japaneseCandidates(std::u16string_view surface) {
  std::vector<std::u16string> out;
  expand(surface, out, 0);
  std::erase(out, std::u16string(surface));
  return out;
}

std::u16string withIterationMarksSpelled(std::u16string_view text, std::size_t from,
                                         std::size_t to) {
  std::u16string out;
  to = std::min(to, text.size());
  if (from >= to) return out;
  // The character before the first mark may lie before `from`.
  std::u16string_view previous;
  for (std::size_t i = from; i > 0;) {
    --i;
    if (text[i] == japanese::kIterationMark) continue;
    std::size_t start = i;
    if (i > 0 && (text[i] & 0xFC00) == 0xDC00 && (text[i - 1] & 0xFC00) == 0xD800) start = i - 1;
    previous = text.substr(start, i + 1 - start);
    break;
  }
  for (std::size_t i = from; i < to;) {
    if (text[i] == japanese::kIterationMark) {
      if (previous.empty())
        out += text[i];
      else
        out += previous;
      ++i;
      continue;
    }
    const std::size_t length =
        (text[i] & 0xFC00) == 0xD800 && i + 1 < text.size() && (text[i + 1] & 0xFC00) == 0xDC00 ? 2
                                                                                                : 1;
    previous = text.substr(i, length);
    out += previous;
    i += length;
  }
  return out;
}

}  // namespace vesko
