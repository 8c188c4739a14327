#pragma once
// What the desktop app's windows share: the program-wide objects created once by the shell, and
// the signals by which one window tells the others that something they show has changed.
// Thread contract: main thread only. Everything referred to outlives every window.

#include <QObject>

namespace vesko {
class AIServices;
class CEDict;
class Clock;
class Loc;
class Log;
class ReviewCounts;
class Settings;
class WordStore;
struct Folders;
}  // namespace vesko

namespace vesko::desktop {

class Toasts;
class Trace;

// Emitted on the main thread; every window connects to what it shows.
class DesktopEvents final : public QObject {
  Q_OBJECT
 signals:
  void languageChanged();    // the interface language changed: draw every text again
  void wordsChanged();       // the kept words changed (a keep, a grade, another program's write)
  void settingsRequested();  // show the settings window
  void reviewRequested();    // show the review window
  void hoverSwitched(bool on);
};

struct DesktopContext {
  Settings& settings;
  const Loc& loc;
  Log& log;
  const Clock& clock;
  const Folders& folders;
  WordStore& store;
  ReviewCounts& counts;
  AIServices& ai;
  // Loaded in the background: every lookup finds nothing until then.
  const CEDict& dictionary;
  Trace& trace;
  Toasts& toasts;
  DesktopEvents& events;
};

}  // namespace vesko::desktop
