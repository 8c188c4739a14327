// `vesko doctor`: one check per thing the hover read needs from the desktop, each with what to
// install or switch on when it is missing.

#include <fmt/format.h>
#include <stdio.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "cli/probe_command.h"
#include "cli/word_output.h"
#include "cli/zh_output.h"
#include "platform/linux/atspi/session_bus.h"
#include "platform/linux/atspi/x_desktop.h"

namespace vesko::cli {
namespace {

struct Check {
  std::string name;
  bool ok = false;
  std::string detail;  // what was found
  std::string advice;  // what to do, empty when ok
};

// Which recognition models and fonts each studied language needs.
struct LanguageNeeds {
  std::string_view code;
  std::string_view traineddata;  // Tesseract's language name
  std::string_view package;      // the Debian package that installs it
  std::string_view fontLang;     // fontconfig language tag, empty when any font does
  std::string_view fontPackage;
};
// clang-format off
constexpr LanguageNeeds kLanguageNeeds[] = {
  {"zh", "chi_sim", "tesseract-ocr-chi-sim", "zh-cn", "fonts-noto-cjk"},
  {"zh", "chi_tra", "tesseract-ocr-chi-tra", "zh-tw", "fonts-noto-cjk"},
  {"ja", "jpn",     "tesseract-ocr-jpn",     "ja",    "fonts-noto-cjk"},
  {"th", "tha",     "tesseract-ocr-tha",     "th",    "fonts-thai-tlwg"},
  {"th", "eng",     "tesseract-ocr-eng",     "",      ""},
  {"fr", "fra",     "tesseract-ocr-fra",     "",      ""},
  {"en", "eng",     "tesseract-ocr-eng",     "",      ""},
  {"pl", "pol",     "tesseract-ocr-pol",     "",      ""},
  {"ru", "rus",     "tesseract-ocr-rus",     "",      ""},
  {"ru", "eng",     "tesseract-ocr-eng",     "",      ""},
};
// clang-format on

// Standard output of a fixed command line; nothing when it cannot run or fails.
std::optional<std::string> output(const std::string& command) {
  FILE* pipe = popen((command + " 2>/dev/null").c_str(), "r");
  if (!pipe) return std::nullopt;
  std::string out;
  char buffer[4096];
  while (std::size_t n = fread(buffer, 1, sizeof buffer, pipe)) out.append(buffer, n);
  return pclose(pipe) == 0 ? std::optional(out) : std::nullopt;
}

std::set<std::string> installedTraineddata() {
  std::set<std::string> names;
  if (auto listed = output("tesseract --list-langs")) {
    std::istringstream lines(*listed);
    std::string line;
    std::getline(lines, line);  // "List of available languages in "…" (N):"
    while (std::getline(lines, line))
      if (!line.empty()) names.insert(line);
    return names;
  }
  // Without the program, look where Debian puts the models.
  std::vector<std::filesystem::path> folders;
  if (const char* prefix = std::getenv("TESSDATA_PREFIX")) folders.emplace_back(prefix);
  folders.emplace_back("/usr/share/tesseract-ocr/5/tessdata");
  for (const auto& folder : folders) {
    std::error_code error;
    for (const auto& file : std::filesystem::directory_iterator(folder, error))
      if (file.path().extension() == ".traineddata") names.insert(file.path().stem().string());
  }
  return names;
}

template <typename Value>
std::string joined(const Value& items) {
  std::string out;
  for (const auto& item : items) out += (out.empty() ? "" : " ") + std::string(item);
  return out;
}

Check displayCheck() {
  const char* display = std::getenv("DISPLAY");
  if (atspi::XDesktop::open())
    return {"display", true, fmt::format("X display {}", display ? display : "(default)"), ""};
  return {"display", false,
          display ? fmt::format("cannot open X display {}", display)
                  : std::string("DISPLAY is not set"),
          "Run Vesko inside an X11 session (under Wayland, in XWayland with DISPLAY set)."};
}

Check busCheck() {
  auto owned = atspi::sessionNameHasOwner("org.a11y.Bus");
  if (!owned)
    return {"accessibility bus", false, owned.error(),
            "Start Vesko from a desktop session that has a D-Bus session bus "
            "(DBUS_SESSION_BUS_ADDRESS)."};
  if (*owned) return {"accessibility bus", true, "org.a11y.Bus is running", ""};
  return {"accessibility bus", false, "org.a11y.Bus is not running",
          "Install at-spi2-core (sudo apt install at-spi2-core), then log out and in again."};
}

Check switchCheck() {
  auto enabled = atspi::applicationsOpenToAccessibility();
  if (!enabled)
    return {"accessibility switch", false, enabled.error(),
            "The accessibility bus must run first (see above)."};
  if (*enabled) return {"accessibility switch", true, "applications expose their text", ""};
  return {"accessibility switch", false, "org.a11y.Status.IsEnabled is false",
          "Switch it on: gdbus call --session -d org.a11y.Bus -o /org/a11y/bus -m "
          "org.freedesktop.DBus.Properties.Set org.a11y.Status IsEnabled '<true>' (Vesko does "
          "it when it starts), then restart Qt and Chromium applications."};
}

Check recognitionCheck(const std::vector<std::string>& studied) {
  const auto installed = installedTraineddata();
  std::set<std::string> wanted, missing, packages;
  for (const auto& row : kLanguageNeeds) {
    if (std::find(studied.begin(), studied.end(), row.code) == studied.end()) continue;
    wanted.insert(std::string(row.traineddata));
    if (!installed.contains(std::string(row.traineddata))) {
      missing.insert(std::string(row.traineddata));
      packages.insert(std::string(row.package));
    }
  }
  if (wanted.empty()) return {"recognition languages", true, "no language studied", ""};
  if (missing.empty()) return {"recognition languages", true, "installed: " + joined(wanted), ""};
  return {"recognition languages", false, "missing: " + joined(missing),
          "Install them for reading text in images: sudo apt install " + joined(packages)};
}

Check fontCheck(const std::vector<std::string>& studied) {
  std::set<std::string> missing, packages, found;
  bool askedFc = false;
  for (const auto& row : kLanguageNeeds) {
    if (row.fontLang.empty()) continue;
    if (std::find(studied.begin(), studied.end(), row.code) == studied.end()) continue;
    askedFc = true;
    auto families = output(fmt::format("fc-list :lang={} family", row.fontLang));
    if (families && !families->empty())
      found.insert(std::string(row.fontLang));
    else {
      missing.insert(std::string(row.fontLang));
      packages.insert(std::string(row.fontPackage));
    }
  }
  if (!askedFc) return {"fonts", true, "the studied languages need no special font", ""};
  if (missing.empty()) return {"fonts", true, "fonts for: " + joined(found), ""};
  return {"fonts", false, "no font for: " + joined(missing),
          "Install them so the bubble shows every character: sudo apt install " + joined(packages)};
}

Check secretsCheck() {
  auto owned = atspi::sessionNameHasOwner("org.freedesktop.secrets");
  if (owned && *owned) return {"credential store", true, "a Secret Service is running", ""};
  return {"credential store", false, owned ? "no Secret Service on the session bus" : owned.error(),
          "Install gnome-keyring (sudo apt install gnome-keyring) and unlock it to keep AI keys; "
          "meanwhile Vesko reads ANTHROPIC_API_KEY, OPENAI_API_KEY and DEEPSEEK_API_KEY."};
}

int doctor(bool json, const std::string& langs, const Settings& settings) {
  std::vector<std::string> studied = langs.empty() ? studiedCodes(settings) : splitCodes(langs);
  if (!langs.empty()) {
    auto snapshot = snapshotOf(studied, "fr", "zh", true);
    if (!snapshot) return fail(snapshot.error());
  }
  const std::vector<Check> checks = {displayCheck(),     busCheck(),
                                     switchCheck(),      recognitionCheck(studied),
                                     fontCheck(studied), secretsCheck()};
  bool allOk = true;
  for (const auto& check : checks) allOk = allOk && check.ok;
  if (json) {
    nlohmann::json list = nlohmann::json::array();
    for (const auto& check : checks)
      list.push_back(
          {{"check", check.name},
           {"ok", check.ok},
           {"detail", check.detail},
           {"advice", check.ok ? nlohmann::json(nullptr) : nlohmann::json(check.advice)}});
    std::cout << dump({{"ok", allOk}, {"langs", studied}, {"checks", std::move(list)}}) << '\n';
    return 0;
  }
  for (const auto& check : checks) {
    std::cout << (check.ok ? "ok      " : "MISSING ") << check.name << ": " << check.detail << '\n';
    if (!check.ok) std::cout << "        " << check.advice << '\n';
  }
  std::cout << (allOk ? "Everything Vesko needs is in place.\n"
                      : "Vesko works without these, but reads less: see above.\n");
  return 0;
}

}  // namespace

void addDoctorCommand(CLI::App& app, const Settings& settings, int& exitCode) {
  auto json = std::make_shared<bool>(false);
  auto langs = std::make_shared<std::string>();
  CLI::App* command = app.add_subcommand(
      "doctor", "Checks what reading the screen needs, and says what is missing");
  command->add_flag("--json", *json, "Write JSON");
  command->add_option("--langs", *langs,
                      "Studied languages, e.g. zh,th (default: those of the settings)");
  command->callback(
      [json, langs, &settings, &exitCode] { exitCode = doctor(*json, *langs, settings); });
}

}  // namespace vesko::cli
