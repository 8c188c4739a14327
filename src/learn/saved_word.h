#pragma once
// A kept word and the senses kept with it: plain copyable records, as mots.json stores them.
// Dates are seconds since 2001-01-01 00:00:00 UTC (the file's unit); absent optionals are left
// out of the file. Identity for updates is `id` alone; equality compares every field.

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vesko {

// Seconds since 2001-01-01 00:00:00 UTC.
using StoreDate = double;

struct Sense {
  std::string meaning;
  std::string sentence;
  std::string target;  // the word form targeted in that sentence
  StoreDate date = 0;
  std::optional<std::string> sentenceMeaning;
  std::optional<std::string> sentenceAuto;
  friend bool operator==(const Sense&, const Sense&) = default;
};

struct SavedWord {
  std::string id;  // canonical upper-case UUID text
  std::string word;
  std::string lang;
  std::string pinyin;  // the reading, whatever the language; may be empty
  std::string simp;
  std::string trad;
  std::string definition;
  std::map<std::string, std::string> translations;
  std::string context;  // the sentence the word was met in
  StoreDate date = 0;
  std::optional<long long> hits;  // absent counts as 1
  std::optional<std::string> kind;
  std::optional<StoreDate> lastSeen;
  std::optional<std::string> source;
  std::optional<std::string> place;
  std::optional<std::string> app;
  std::optional<long long> reviewStep;  // 0–6; absent: never reviewed
  std::optional<StoreDate> reviewDue;
  std::optional<long long> seen;  // absent counts as 0
  std::optional<std::string> theme;
  std::optional<long long> confidence;  // last grade, 1–5
  std::optional<std::string> sentenceMeaning;
  std::optional<std::string> sentenceAuto;
  std::optional<std::vector<Sense>> senses;
  std::optional<long long> senseTurn;
  std::optional<std::string> archived;  // "known" or "useless"
  std::optional<std::string> fullContext;
  std::optional<long long> reviews;  // absent counts as 0
  std::optional<bool> triaged;
  std::optional<long long> meaningOK;
  friend bool operator==(const SavedWord&, const SavedWord&) = default;
};

}  // namespace vesko
