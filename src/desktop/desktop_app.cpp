#include "desktop/desktop_app.h"

#include <QApplication>
#include <QTimer>
#include <chrono>
#include <iostream>

#include "ai/ai_services.h"
#include "app/installed_language_data.h"
#include "app/status_line.h"
#include "desktop/alt_x_shortcut.h"
#include "desktop/bubble_window.h"
#include "desktop/desktop_context.h"
#include "desktop/dictionary_loader.h"
#include "desktop/freshness.h"
#include "desktop/hover_loop.h"
#include "desktop/hover_reads.h"
#include "desktop/qt_desktop.h"
#include "desktop/review_window.h"
#include "desktop/settings_window.h"
#include "desktop/status_item.h"
#include "desktop/toast_notices.h"
#include "desktop/toasts.h"
#include "desktop/trace.h"
#include "dict/cedict.h"
#include "learn/review_counts.h"
#include "learn/word_store.h"
#include "platform/linux/atspi/session_bus.h"
#include "platform/linux/secret/secret_service_store.h"
#include "platform/linux/x11/x11_frontmost.h"
#include "platform/linux/x11/x11_pointer.h"
#include "settings/clock.h"
#include "settings/environment.h"
#include "settings/folders.h"
#include "settings/loc.h"
#include "settings/log.h"
#include "settings/resources.h"
#include "settings/settings.h"

namespace vesko::desktop {
namespace {

using namespace std::chrono_literals;
// A notice about an unreadable file waits for the desktop to settle, then stays long enough to
// read a file name.
constexpr auto kFileNoticeDelay = 3000ms;
constexpr auto kFileNoticeShown = 8000ms;

// Without a window manager that names the active window, every read says "?".
struct NoFrontmost final : FrontmostApplication {
  std::optional<std::string> identifier() const override { return std::nullopt; }
};

std::optional<std::filesystem::path> traceFile(const Environment& environment) {
  auto file = environment("VESKO_TRACE");
  if (!file) return std::nullopt;
  return std::filesystem::path(*file);
}

}  // namespace

struct DesktopApp::Parts {
  Parts()
      : folders(Folders::fromEnvironment(environment)),
        settings(folders.settingsFile(), clock),
        hant(cedict),
        loc(settings, tables, hant, preferredLanguages(environment)),
        log(folders.logFile(), settings, clock),
        loader(cedict, log, Resources::find("cedict", "txt"), Resources::find("unihan", "tsv")),
        store(folders.wordsFile(), clock, log, loc),
        counts(settings, clock),
        ai(settings, loc, log, clock, secrets, environment, folders.data / AnswerCache::kFileName),
        trace(traceFile(environment)),
        context{settings, loc, log, clock, folders, store, counts, ai, cedict, trace, toasts,
                events},
        languageData(Resources::folder()),
        bubble(context),
        settingsWindow(context),
        reviewWindow(context),
        status(context),
        notices(toasts, loc, steady),
        freshness(context) {}

  const Environment environment = processEnvironment();
  const SystemClock clock;
  const MonotonicClock steady;
  const Folders folders;
  Settings settings;
  CEDict cedict;
  LocTables tables;
  HantCache hant;
  const Loc loc;
  Log log;
  DictionaryLoader loader;  // starts at once: the rest is built meanwhile
  WordStore store;
  ReviewCounts counts;
  SecretServiceStore secrets;
  AIServices ai;
  Trace trace;
  Toasts toasts;
  DesktopEvents events;
  DesktopContext context;
  InstalledLanguageData languageData;
  BubbleWindow bubble;
  SettingsWindow settingsWindow;
  ReviewWindow reviewWindow;
  StatusItem status;
  AltXShortcut altX;
  QtScreens screens;
  QtOwnWindows ownWindows;
  NoFrontmost noFrontmost;
  ToastNotices notices;
  std::unique_ptr<X11Pointer> pointer;
  std::unique_ptr<X11Frontmost> frontmost;
  std::unique_ptr<HoverReads> reads;
  std::unique_ptr<HoverLoop> hover;  // after the reads: its reader thread runs them
  Freshness freshness;
};

DesktopApp::DesktopApp(QElapsedTimer started, LaunchRequest request)
    : started_(started), parts_(std::make_unique<Parts>()) {
  Parts& p = *parts_;
  auto sinceStart = [this] { return static_cast<long long>(started_.elapsed()); };

  // Files set aside at start, told once the desktop has settled.
  if (auto notice = p.store.pendingNotice())
    p.toasts.show(*notice, kFileNoticeShown, kFileNoticeDelay);
  if (auto kept = p.settings.setAsideFile())
    p.toasts.show("⚠️ " + p.loc.t("Un fichier de données était illisible ; une copie a été gardée :") +
                      " " + kept->filename().string(),
                  kFileNoticeShown, kFileNoticeDelay);

  connect(&p.events, &DesktopEvents::settingsRequested, this, [&p] { p.settingsWindow.present(); });
  connect(&p.events, &DesktopEvents::reviewRequested, this, [&p] { p.reviewWindow.present(); });
  connect(&p.status, &StatusItem::quitRequested, this, &DesktopApp::quit);
  connect(qApp, &QCoreApplication::aboutToQuit, this, &DesktopApp::flush);

  p.status.setLoading(!p.loader.loaded());
  connect(&p.loader, &DictionaryLoader::finished, this,
          [this, &p, sinceStart](std::chrono::milliseconds took) {
            p.status.setLoading(false);
            p.log.log("dictionnaire : chargé en " + std::to_string(took.count()) + " ms");
            p.trace.event("loaded", {{"ms", sinceStart()}});
          });

  const bool tray = p.status.show();
  if (!tray) std::cerr << "vesko-desktop: no system tray yet; the icon shows once one starts\n";
  p.trace.event("ready", {{"ms", sinceStart()}, {"tray", tray}});

  if (p.altX.problem()) {
    p.log.log("raccourci : Alt+X indisponible (" + *p.altX.problem() + ")");
    if (p.altX.taken()) p.status.addProblem(DesktopProblem::shortcutTaken);
  }
  connect(&p.altX, &AltXShortcut::pressed, this, &DesktopApp::toggleHover);

  if (auto opened = atspi::openApplicationsToAccessibility(); !opened) {
    p.log.log("accessibilité : " + opened.error());
    p.status.addProblem(DesktopProblem::noAccessibilityBus);
  }
  if (waylandSession(p.environment)) p.status.addProblem(DesktopProblem::waylandSession);

  auto pointer = X11Pointer::open();
  if (pointer) {
    p.pointer = std::move(*pointer);
    if (auto frontmost = X11Frontmost::open()) p.frontmost = std::move(*frontmost);
    p.ownWindows.add(p.bubble);
    p.ownWindows.add(p.settingsWindow);
    p.ownWindows.add(p.reviewWindow);
    p.reads = std::make_unique<HoverReads>(p.cedict, p.languageData, p.loc, p.log);
    p.hover = std::make_unique<HoverLoop>(HoverLoopParts{
        .pointer = *p.pointer,
        .ownWindows = p.ownWindows,
        .screens = p.screens,
        .frontmost = p.frontmost ? static_cast<FrontmostApplication&>(*p.frontmost) : p.noFrontmost,
        .bubble = p.bubble,
        .read = p.reads->read(),
        .notices = p.notices,
        .dictionaries = p.loader,
        .settings = p.settings,
        .skipped = p.reads->skipped(),
        .log = p.log,
        .trace = p.trace,
    });
    p.hover->start();
  } else {
    p.log.log("survol : " + pointer.error());
    std::cerr << "vesko-desktop: " << pointer.error() << "; the hover is off\n";
    p.status.setOn(false);
    if (!waylandSession(p.environment)) p.status.addProblem(DesktopProblem::waylandSession);
  }
  p.freshness.start();

  if (request == LaunchRequest::settings || request == LaunchRequest::review)
    QTimer::singleShot(0, this, [this, request] { handle(request); });
}

DesktopApp::~DesktopApp() {
  flush();
}

void DesktopApp::handle(LaunchRequest request) {
  switch (request) {
    case LaunchRequest::start:
    case LaunchRequest::settings:
      emit parts_->events.settingsRequested();
      break;
    case LaunchRequest::review:
      emit parts_->events.reviewRequested();
      break;
    case LaunchRequest::quit:
      quit();
      break;
    case LaunchRequest::help:
      break;
  }
}

void DesktopApp::flush() {
  parts_->store.flush();
}

void DesktopApp::toggleHover() {
  Parts& p = *parts_;
  if (!p.hover) return;
  HoverController& controller = p.hover->controller();
  controller.switchOnOff();
  const bool on = controller.on();
  p.status.setOn(on);
  p.log.log(on ? "survol : activé (Alt+X)" : "survol : désactivé (Alt+X)");
  p.trace.event("toggle", {{"on", on}});
  emit p.events.hoverSwitched(on);
}

void DesktopApp::quit() {
  flush();
  QCoreApplication::quit();
}

}  // namespace vesko::desktop
