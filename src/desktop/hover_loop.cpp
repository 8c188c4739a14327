#include "desktop/hover_loop.h"

#include <QMetaObject>
#include <cmath>

namespace vesko::desktop {
namespace {

// "学习" and "zh", or the word and its language's code.
std::pair<std::string, std::string> wordAndLanguage(const HoverResult& result) {
  if (const auto* chinese = result.chinese()) return {chinese->word, "zh"};
  const auto* word = result.word();
  return {word->word, std::string(languageCode(word->language))};
}

}  // namespace

void HoverLoop::StartTimes::start(ReadRequest request) {
  recent_[request.generation % recent_.size()] = {request.generation, clock_.seconds()};
  inner_->start(std::move(request));
}

std::optional<double> HoverLoop::StartTimes::startOf(std::uint64_t generation) const {
  const Started& started = recent_[generation % recent_.size()];
  if (started.generation != generation) return std::nullopt;
  return started.at;
}

HoverLoop::HoverLoop(HoverLoopParts parts)
    : with_(parts),
      startTimes_(clock_),
      reader_(std::make_unique<ThreadedReader>(
          parts.read,
          [this](std::uint64_t generation, ReadReport report) {
            // On the reader's worker: hand the report to the main thread.
            QMetaObject::invokeMethod(
                this,
                [this, generation, report = std::move(report)] { answer(generation, report); },
                Qt::QueuedConnection);
          })),
      controller_(HoverCollaborators{
          .pointer = parts.pointer,
          .ownWindows = parts.ownWindows,
          .screens = parts.screens,
          .frontmost = parts.frontmost,
          .bubble = parts.bubble,
          .reader = startTimes_,
          .notices = parts.notices,
          .dictionaries = parts.dictionaries,
          .clock = clock_,
          .settings = parts.settings,
          .skipped = parts.skipped,
          .log = parts.log,
      }) {
  startTimes_.bind(*reader_);
  timer_.setInterval(static_cast<int>(std::lround(HoverController::kTickInterval * 1000)));
  connect(&timer_, &QTimer::timeout, this, [this] { tick(); });
  restTimer_.setSingleShot(true);
  restTimer_.setTimerType(Qt::PreciseTimer);
  connect(&restTimer_, &QTimer::timeout, this, [this] { tick(); });
}

HoverLoop::~HoverLoop() {
  timer_.stop();
  // The worker's last delivery is posted to this object and dropped with it.
  reader_.reset();
}

void HoverLoop::start() {
  timer_.start();
}

void HoverLoop::tick() {
  controller_.tick();
  // A rest that ends between two beats is read when it ends: the beat alone would start the read
  // up to a tick late, and the learner waits for it.
  const auto ends = controller_.restEnds();
  if (!ends) return;
  const double wait = *ends - clock_.seconds();
  if (wait <= 0 || wait >= HoverController::kTickInterval) return;
  restTimer_.start(static_cast<int>(std::ceil(wait * 1000)));
}

void HoverLoop::answer(std::uint64_t generation, const ReadReport& report) {
  const bool current = controller_.readInFlight() && generation == controller_.generation();
  controller_.answer(generation, report.result);
  if (!current || !report.result || !with_.bubble.visible() || !with_.trace.on()) return;
  auto [word, language] = wordAndLanguage(*report.result);
  nlohmann::json fields{{"word", std::move(word)}, {"lang", std::move(language)}};
  fields["source"] = report.method ? std::string(methodName(*report.method)) : std::string("?");
  if (auto started = startTimes_.startOf(generation))
    fields["ms"] = std::lround((clock_.seconds() - *started) * 1000);
  with_.trace.event("bubble", std::move(fields));
}

}  // namespace vesko::desktop
