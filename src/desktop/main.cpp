// vesko-desktop: the reading assistant in the system tray. Rest the pointer on a word in any
// application and its bubble appears; Alt+X switches the hover off and on. A second start hands
// its request (--settings, --review, --quit) to the running instance and ends.

#include <QApplication>
#include <QElapsedTimer>
#include <QSocketNotifier>
#include <iostream>
#include <string_view>
#include <vector>

#include "ai/curl_http_client.h"
#include "desktop/desktop_app.h"
#include "desktop/launch_request.h"
#include "desktop/single_instance.h"
#include "learn/exit_signals.h"
#include "platform/linux/ocr/single_thread_ocr.h"
#include "settings/environment.h"

int main(int argc, char** argv) {
  QElapsedTimer started;
  started.start();
  vesko::ensureSingleThreadedOcr(argv);
  using vesko::desktop::LaunchRequest;
  for (int i = 1; i < argc; ++i) {
    const std::string_view arg = argv[i];
    if (arg == "--help" || arg == "-h") {
      std::cout << vesko::desktop::kUsage;
      return 0;
    }
  }
  // Qt would abort without a display to connect to; say what is missing instead.
  const vesko::Environment environment = vesko::processEnvironment();
  if (!environment("DISPLAY") && !environment("WAYLAND_DISPLAY") &&
      !environment("QT_QPA_PLATFORM")) {
    std::cerr << "vesko-desktop: no display (DISPLAY is not set): start it from a desktop session\n";
    return 2;
  }
  // Before anything that may hold unsaved kept words: a logout's SIGTERM lets the app write
  // them, then ends it as the signal would have.
  vesko::ExitSignals exitSignals;
  const vesko::CurlLibrary curl;  // before any request, on this one thread

  QApplication application(argc, argv);  // takes Qt's own options (-platform…) out of argv
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setApplicationName(QStringLiteral("Vesko"));
  QApplication::setDesktopFileName(QStringLiteral("vesko"));

  const std::vector<std::string_view> args(argv + 1, argv + argc);
  const auto request = vesko::desktop::parseLaunch(args);
  if (!request) {
    std::cerr << "vesko-desktop: " << request.error() << '\n' << vesko::desktop::kUsage;
    return 2;
  }
  const QString name = vesko::desktop::SingleInstance::serverName(environment);
  if (vesko::desktop::SingleInstance::handOver(name, *request)) return 0;
  if (*request == LaunchRequest::quit) {
    std::cerr << "vesko-desktop: Vesko is not running\n";
    return 0;
  }
  vesko::desktop::SingleInstance instance;
  if (auto problem = instance.listen(name))
    std::cerr << "vesko-desktop: later starts will not find this one: "
              << problem->toStdString() << '\n';

  vesko::desktop::DesktopApp desktop(started, *request);
  QObject::connect(&instance, &vesko::desktop::SingleInstance::requested, &desktop,
                   &vesko::desktop::DesktopApp::handle);
  std::unique_ptr<QSocketNotifier> signalled;
  if (exitSignals.installed()) {
    signalled = std::make_unique<QSocketNotifier>(exitSignals.wakeFd(), QSocketNotifier::Read);
    QObject::connect(signalled.get(), &QSocketNotifier::activated, &desktop, [&] {
      desktop.flush();
      exitSignals.exitAsCaught();
    });
  }
  const int code = QApplication::exec();
  desktop.flush();
  exitSignals.exitAsCaught();
  return code;
}
