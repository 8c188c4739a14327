// A Qt window with known lines in a rich-text view, for the end-to-end tests. Each argument is a
// piece of its text; once the window is on screen it prints, for each, the screen box of that
// piece's first character as "AT <n> <x> <y> <width> <height>", then "READY", and stays open
// until it is killed. Not a QLabel, which exposes no text to accessibility, nor a QPlainTextEdit,
// whose accessibility cannot find the character at a point and puts every line's characters at
// the first line's height.

#include <QApplication>
#include <QFont>
#include <QTextCursor>
#include <QTextEdit>
#include <QTimer>
#include <cstdio>

#include "e2e_lines.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QTextEdit edit;
  edit.setWindowTitle("vesko-e2e-qt");
  edit.setReadOnly(true);
  edit.setFont(QFont("Noto Sans CJK SC", 20));
  const QString lines = QString::fromUtf8(kE2ELines);
  edit.setPlainText(lines);
  edit.resize(900, 420);
  edit.move(60, 60);
  edit.show();
  QStringList targets;
  for (int i = 1; i < argc; ++i) targets << QString::fromUtf8(argv[i]);
  QTimer::singleShot(800, [&] {
    for (int i = 0; i < targets.size(); ++i) {
      const int at = lines.indexOf(targets[i]);
      if (at < 0) {
        std::printf("MISSING %d\n", i);
        continue;
      }
      QTextCursor cursor(edit.document());
      cursor.setPosition(at);
      const QRect start = edit.cursorRect(cursor);
      cursor.setPosition(at + 1);
      const QRect next = edit.cursorRect(cursor);
      const QPoint topLeft = edit.viewport()->mapToGlobal(start.topLeft());
      const int width = next.top() == start.top() ? next.left() - start.left() : 10;
      std::printf("AT %d %d %d %d %d\n", i, topLeft.x(), topLeft.y(), width, start.height());
    }
    std::printf("READY\n");
    std::fflush(stdout);
  });
  return app.exec();
}
