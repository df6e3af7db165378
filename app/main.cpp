#include <cstdio>
#include <cstdlib>
#include <string_view>

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

/// Answers --version and --help, which need no display; false for anything else.
bool AnswerAboutProgram(int argc, char** argv) {
  const std::string_view argument = argc == 2 ? argv[1] : "";
  if (argument == "--version") {
    std::puts("quillmark " QUILLMARK_VERSION);
  } else if (argument == "--help") {
    std::puts(
        "Usage: quillmark [FILE.sup]\n"
        "Opens a window to view and edit the DVD subtitles of FILE.sup. See also quillmark-cli --help.");
  } else {
    return false;
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (AnswerAboutProgram(argc, argv)) {
    return EXIT_SUCCESS;
  }
  const QtMessageHandler usual = qInstallMessageHandler(EndWithoutDisplay);
  QApplication application(argc, argv);
  qInstallMessageHandler(usual);
  quillmark::frmTest window;
  window.show();
  window.OpenCommandLine(QApplication::arguments().mid(1).join(u' '));
  return QApplication::exec();
}
