#include <cstdio>
#include <cstdlib>

#include <QApplication>

#include "app/frmTest.h"

namespace {

constexpr int NoDisplay = 2;

/// Qt ends the program with a crash report when it finds no display to open a window on. That is an ordinary
/// situation (a server, a remote shell), so it gets one line and an exit status of its own.
void EndWithoutDisplay(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  if (type == QtFatalMsg) {
    std::fputs("quillmark: no display to open a window on; start it in a desktop session, or set DISPLAY\n",
               stderr);
    std::_Exit(NoDisplay);
  }
  Q_UNUSED(context)
  Q_UNUSED(text)
}

}  // namespace

int main(int argc, char** argv) {
  const QtMessageHandler usual = qInstallMessageHandler(EndWithoutDisplay);
  QApplication application(argc, argv);
  qInstallMessageHandler(usual);
  quillmark::frmTest window;
  window.show();
  window.OpenCommandLine(QApplication::arguments().mid(1).join(u' '));
  return QApplication::exec();
}
