#pragma once
// Kept words sent to Anki as notes through AnkiConnect (its JSON-over-HTTP interface, version 6):
// the deck is created when missing, words whose note is already in the deck are skipped, the
// others are added as notes of the stock "Basic" type: Front the word, Back its reading, its
// definition and the sentence with the word in bold, tagged "vesko" and the language code.
// Stateless; any thread; blocks for the exchanges (a few seconds at most each).

#include <chrono>
#include <expected>
#include <functional>
#include <string>
#include <vector>

#include "learn/saved_word.h"

namespace vesko {

inline constexpr const char* kAnkiConnectURL = "http://127.0.0.1:8765";

struct AnkiTarget {
  std::string url = kAnkiConnectURL;
  std::string deck = "Vesko";
  std::chrono::milliseconds timeout{10000};  // each exchange
  // Asked between exchanges and while one is under way: true abandons the sync (Ctrl-C).
  std::function<bool()> stopped;
};

struct AnkiSyncReport {
  int added = 0;
  int skipped = 0;  // already in the deck
  bool deckCreated = false;
};

struct AnkiFailure {
  enum class Kind {
    notRunning,  // nothing answers at the address: Anki is closed or AnkiConnect is missing
    refused,     // AnkiConnect answered with an error
    badReply,    // what answered does not speak AnkiConnect
    stopped,     // `stopped` said so; notes sent before stay in Anki
  };
  Kind kind = Kind::badReply;
  std::string detail;
};

// The note fields for one word, as sent: {Front, Back}.
struct AnkiNote {
  std::string front;
  std::string back;
};
AnkiNote ankiNote(const SavedWord& word);

std::expected<AnkiSyncReport, AnkiFailure> syncToAnki(const std::vector<SavedWord>& words,
                                                      const AnkiTarget& target);

}  // namespace vesko
