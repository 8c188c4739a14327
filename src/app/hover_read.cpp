#include "app/hover_read.h"

#include <utility>

namespace vesko {
namespace {

double millisecondsBetween(std::chrono::steady_clock::time_point a,
                           std::chrono::steady_clock::time_point b) {
  return std::chrono::duration<double, std::milli>(b - a).count();
}

}  // namespace

std::string_view methodName(ReadMethod method) {
  return method == ReadMethod::accessibility ? "accessibility" : "recognition";
}

std::vector<std::string> recognitionModes(const Snapshot& snapshot) {
  std::vector<std::string> modes;
  // Latin letters share one model set, so French, English and Polish are recognised together.
  if (snapshot.fr || snapshot.en || snapshot.pl) modes.emplace_back("latin");
  if (snapshot.ru) modes.emplace_back("ru");
  if (snapshot.th) modes.emplace_back("th");
  if (snapshot.ja) modes.emplace_back("ja");
  // Chinese pages come in either script and each model reads only its own well.
  if (snapshot.zh) {
    modes.emplace_back("zh-Hans");
    modes.emplace_back("zh-Hant");
  }
  return modes;
}

HoverRead::HoverRead(AccessibilityReader& accessibility, ScreenReader* screen, LinePicker pickLine,
                     const WordChooser& chooser, Now now)
    : accessibility_(accessibility),
      screen_(screen),
      pickLine_(std::move(pickLine)),
      chooser_(chooser),
      now_(std::move(now)) {}

ReadReport HoverRead::read(ScreenPoint point, const Snapshot& snapshot) const {
  ReadReport report;
  auto mark = now_();
  auto stageDone = [&](const char* stage) {
    const auto end = now_();
    report.stages.push_back({stage, millisecondsBetween(mark, end)});
    mark = end;
  };

  report.text = accessibility_.read(point);
  stageDone("accessibility");
  if (report.text) {
    report.method = ReadMethod::accessibility;
  } else if (screen_ && pickLine_) {
    const auto modes = recognitionModes(snapshot);
    if (!modes.empty()) {
      const auto lines = screen_->read(point, modes);
      report.text = pickLine_(lines, point);
      stageDone("recognition");
      if (report.text) report.method = ReadMethod::recognition;
    }
  }
  if (!report.text) return report;

  report.result = chooser_.read(report.text->text,
                                static_cast<std::ptrdiff_t>(report.text->index), snapshot);
  stageDone("chooser");
  return report;
}

}  // namespace vesko
