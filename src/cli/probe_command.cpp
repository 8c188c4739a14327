#include "cli/probe_command.h"

#include <fmt/format.h>

#include <charconv>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>

#include "app/hover_read.h"
#include "app/installed_language_data.h"
#include "app/last_character_rect.h"
#include "app/line_at.h"
#include "app/recognition_modes.h"
#include "app/strip_reader.h"
#include "app/word_chooser.h"
#include "cli/input.h"
#include "cli/word_output.h"
#include "cli/zh_output.h"
#include "platform/linux/atspi/atspi_reader.h"
#include "platform/linux/atspi/session_bus.h"
#include "platform/linux/atspi/x_desktop.h"
#include "platform/linux/ocr/tesseract_recognizer.h"
#include "platform/linux/x11/x11_screens.h"
#include "platform/linux/x11/xshm_capture.h"
#include "settings/clock.h"
#include "settings/resources.h"
#include "text/unicode.h"

namespace vesko::cli {
namespace {

struct ProbeOptions {
  bool json = false;
  bool verbose = false;
  std::string at;
  std::string langs;
  DictionaryFiles files;
};

// "640,380" (spaces allowed after the comma); whole or fractional screen points.
std::expected<ScreenPoint, Failure> parsePoint(std::string_view text) {
  const auto comma = text.find(',');
  auto number = [](std::string_view part) -> std::optional<double> {
    while (!part.empty() && part.front() == ' ') part.remove_prefix(1);
    double value = 0;
    auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), value);
    if (error != std::errc() || end != part.data() + part.size() || value < 0) return std::nullopt;
    return value;
  };
  if (comma != std::string_view::npos) {
    auto x = number(text.substr(0, comma));
    auto y = number(text.substr(comma + 1));
    if (x && y) return ScreenPoint{*x, *y};
  }
  return std::unexpected(Failure{fmt::format("--at wants X,Y in screen points, not \"{}\"", text)});
}

nlohmann::json reportJson(ScreenPoint point, const ReadReport& report,
                          const SkippedLanguage& skipped) {
  nlohmann::json stages = nlohmann::json::array();
  for (const auto& stage : report.stages)
    stages.push_back({{"stage", stage.stage}, {"ms", stage.milliseconds}});
  return {{"point", {{"x", point.x}, {"y", point.y}}},
          {"method", report.method ? nlohmann::json(std::string(methodName(*report.method)))
                                   : nlohmann::json(nullptr)},
          {"text",
           report.text ? nlohmann::json(text::toUtf8(report.text->text)) : nlohmann::json(nullptr)},
          {"index", report.text ? nlohmann::json(report.text->index) : nlohmann::json(nullptr)},
          {"stages", std::move(stages)},
          {"result", resultJson(report.result, skipped)}};
}

std::string reportText(ScreenPoint point, const ReadReport& report,
                       const SkippedLanguage& skipped) {
  std::string out = fmt::format("at {},{}: ", point.x, point.y);
  out += report.method ? fmt::format("read by {}", methodName(*report.method))
                       : std::string("no text found");
  for (const auto& stage : report.stages)
    out += fmt::format("  · {} {:.2f} ms", stage.stage, stage.milliseconds);
  out += '\n';
  if (!report.text) return out;
  out += fmt::format("text: {}\nindex: {}\n", text::toUtf8(report.text->text), report.text->index);
  return out + resultCard(report.result, skipped);
}

int probe(const ProbeOptions& options, const Settings& settings) {
  auto snapshot = snapshotFor(options.langs, settings);
  if (!snapshot) return fail(snapshot.error());
  ScreenPoint point;
  if (!options.at.empty()) {
    auto parsed = parsePoint(options.at);
    if (!parsed) return fail(parsed.error());
    point = *parsed;
  } else {
    auto desktop = atspi::XDesktop::open();
    auto pointer = desktop ? desktop->pointer() : std::nullopt;
    if (!pointer) return fail({"no X display to find the pointer on (is DISPLAY set?)"});
    point = *pointer;
  }
  // Applications started before this only build their trees once the switch is on; switching it
  // here helps those started next, and costs nothing when it is already on.
  auto opened = atspi::openApplicationsToAccessibility();
  if (!opened && options.verbose)
    std::cerr << "vesko: accessibility switch: " << opened.error() << '\n';

  auto dictionary = loadDictionary(options.files);
  if (!dictionary) return fail(dictionary.error());
  InstalledLanguageData data(Resources::folder());
  SkippedLanguage skipped;
  WordChooser chooser(**dictionary, data, skipped);
  LastCharacterRect lastRect;
  atspi::AtspiReader reader(lastRect, [&](std::string message) {
    if (options.verbose) std::cerr << message << '\n';
  });
  // Screen recognition when the display can be captured; accessibility alone otherwise.
  auto note = [&](std::string message) {
    if (options.verbose) std::cerr << message << '\n';
  };
  auto capture = XShmCapture::open();
  auto screens = X11Screens::open();
  TesseractRecognizer recognizer;
  const SystemClock clock;
  std::optional<StripReader> strip;
  std::optional<ScreenRecognition> recognition;
  if (capture && screens) {
    strip.emplace(**capture, recognizer, **screens, clock, note);
    recognition.emplace(ScreenRecognition{*strip, &recognitionModes, &lineAt});
  } else if (options.verbose) {
    std::cerr << "vesko: no screen capture: " << (capture ? screens.error() : capture.error())
              << '\n';
  }
  HoverRead hoverRead(reader, std::move(recognition), chooser);
  const ReadReport report = hoverRead.read(point, *snapshot);
  if (options.json)
    std::cout << dump(reportJson(point, report, skipped)) << '\n';
  else
    std::cout << reportText(point, report, skipped);
  return 0;
}

}  // namespace

void addProbeCommand(CLI::App& app, const Settings& settings, int& exitCode) {
  auto options = std::make_shared<ProbeOptions>();
  CLI::App* command =
      app.add_subcommand("probe", "What Vesko reads under the pointer, and how long it takes");
  command->add_option("--at", options->at, "Read at X,Y (screen points) instead of the pointer");
  command->add_option("--langs", options->langs,
                      "Studied languages, e.g. zh,fr (default: those of the settings)");
  command->add_flag("--json", options->json, "Write JSON");
  command->add_flag("--verbose", options->verbose, "Say on stderr why a reader found nothing");
  command->add_option("--cedict", options->files.cedict, "Dictionary file in the CC-CEDICT layout");
  command->add_option("--unihan", options->files.unihan, "Single-character supplement (TSV)");
  command->callback([options, &settings, &exitCode] { exitCode = probe(*options, settings); });
}

}  // namespace vesko::cli
