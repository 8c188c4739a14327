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

HoverRead::HoverRead(AccessibilityReader& accessibility,
                     std::optional<ScreenRecognition> recognition, const WordChooser& chooser,
                     Now now)
    : accessibility_(accessibility),
      recognition_(std::move(recognition)),
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
  } else if (recognition_) {
    const auto modes = recognition_->modes(snapshot);
    if (!modes.empty()) {
      const auto lines = recognition_->reader.read(point, modes);
      report.text = recognition_->lineAt(lines, point);
      stageDone("recognition");
      if (report.text) report.method = ReadMethod::recognition;
    }
  }
  if (!report.text) return report;

  report.result =
      chooser_.read(report.text->text, static_cast<std::ptrdiff_t>(report.text->index), snapshot);
  stageDone("chooser");
  return report;
}

}  // namespace vesko
