#pragma once
// One read of the screen at a point: the accessibility reader first, screen recognition when it
// finds no text, then the word chooser. Says which reader answered and how long each stage took,
// for the diagnostic log and `vesko probe`. Created once by whoever wires the reads, with readers
// and a chooser that outlive it; `read` is const, blocks, and runs on a read's background thread,
// as many at once as the readers allow.

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/hover_result.h"
#include "app/language_data.h"
#include "app/screen_text.h"
#include "app/word_chooser.h"

namespace vesko {

enum class ReadMethod { accessibility, recognition };
std::string_view methodName(ReadMethod method);  // "accessibility", "recognition"

struct StageTime {
  std::string stage;  // "accessibility", "recognition", "chooser"
  double milliseconds = 0;
  friend bool operator==(const StageTime&, const StageTime&) = default;
};

struct ReadReport {
  std::optional<ReadMethod> method;  // the reader that gave the text; nothing when none did
  std::optional<TextAtPoint> text;
  std::optional<HoverResult> result;
  std::vector<StageTime> stages;  // in the order they ran
};

// Screen recognition as the read uses it: the reader, the recognition modes the studied languages
// ask for, and the line and character under the point among the lines recognised.
struct ScreenRecognition {
  ScreenReader& reader;
  std::function<std::vector<std::string>(const Snapshot&)> modes;
  std::function<std::optional<TextAtPoint>(const std::vector<OCRLine>&, ScreenPoint)> lineAt;
};

class HoverRead {
 public:
  using Now = std::function<std::chrono::steady_clock::time_point()>;
  // Without `recognition`, accessibility is the only reader.
  HoverRead(AccessibilityReader& accessibility, std::optional<ScreenRecognition> recognition,
            const WordChooser& chooser, Now now = &std::chrono::steady_clock::now);

  ReadReport read(ScreenPoint point, const Snapshot& snapshot) const;

 private:
  AccessibilityReader& accessibility_;
  std::optional<ScreenRecognition> recognition_;
  const WordChooser& chooser_;
  Now now_;
};

}  // namespace vesko
