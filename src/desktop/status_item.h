#pragma once
// The status item in the system tray: an icon drawn in colour while the hover is on and in grey
// while off, a tooltip with the status line, a left click for the settings, and a menu with the
// status line, Réglages, Révision with today's due cards, the problems that stop the hover (each
// with what to do) and Quitter. Runs without a tray too (the problem is logged). Created by the
// shell; main thread only.

#include <QAction>
#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>
#include <QTimer>
#include <vector>

#include "app/status_line.h"
#include "desktop/desktop_context.h"

namespace vesko::desktop {

class StatusItem final : public QObject {
  Q_OBJECT
 public:
  explicit StatusItem(DesktopContext& context);

  // Shows the icon; false when the desktop has no system tray (yet).
  bool show();
  void setOn(bool on);
  // While the dictionary loads, the status line says so.
  void setLoading(bool loading);
  void addProblem(DesktopProblem problem);

 signals:
  void quitRequested();

 private:
  void retranslate();
  void refreshReviewCount();

  DesktopContext& context_;
  bool on_ = true;
  bool loading_ = false;
  std::vector<DesktopProblem> problems_;
  QMenu menu_;
  QSystemTrayIcon icon_;
  QAction* status_ = nullptr;
  QAction* settings_ = nullptr;
  QAction* review_ = nullptr;
  QAction* problemsEnd_ = nullptr;  // the separator before Quitter
  std::vector<QAction*> problemLines_;
  QAction* quit_ = nullptr;
  QTimer minute_;
};

}  // namespace vesko::desktop
