#include <cstdio>
#include <cstdlib>
#include <string_view>

#include <QApplication>

#include "app/CommandLine.h"
#include "app/DesktopEntry.h"
#include "app/Ui.h"
#include "app/frmTest.h"
#include "translations/UsersLanguage.h"

namespace {

using quillmark::Ui;

constexpr int NoDisplay = 2;

/// Qt ends the program with a crash report when it finds no display to open a window on. That is an ordinary
/// situation (a server, a remote shell), so it gets one line and an exit status of its own.
void EndWithoutDisplay(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  if (type == QtFatalMsg) {
    std::fputs(
        qPrintable(QStringLiteral("quillmark: ") +
                   Ui::Tr("no display to open a window on; start it in a desktop session, or set DISPLAY") +
                   u'\n'),
        stderr);
    std::_Exit(NoDisplay);
  }
  Q_UNUSED(context)
  Q_UNUSED(text)
}

/// Answers -h, --help and --version, which need no display; false without one of them.
bool AnswerAboutProgram(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    const std::string_view argument = argv[i];
    if (argument == "--version") {
      std::puts("quillmark " QUILLMARK_VERSION);
      return true;
    }
    if (argument == "-h" || argument == "--help") {
      std::puts(qPrintable(
          Ui::Tr("Usage: quillmark [FILE]\n"
                 "Opens a window to view and edit the DVD subtitles of FILE: a SUP stream, a VobSub pair, a "
                 "Matroska file,\na program stream or an authoring list. See also quillmark-cli --help.")));
      return true;
    }
  }
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  quillmark::SpeakUsersLanguage();
  if (AnswerAboutProgram(argc, argv)) {
    return EXIT_SUCCESS;
  }
  const QtMessageHandler usual = qInstallMessageHandler(EndWithoutDisplay);
  QApplication application(argc, argv);
  qInstallMessageHandler(usual);
  quillmark::TranslateToolkit();
  QApplication::setApplicationVersion(QStringLiteral(QUILLMARK_VERSION));
  quillmark::TellDesktop();
  const quillmark::CommandLine line = quillmark::ReadCommandLine(QApplication::arguments().mid(1));
  if (!line.Complaint.isEmpty()) {
    std::fputs(qPrintable(QStringLiteral("quillmark: ") + line.Complaint + u'\n'), stderr);
  }
  quillmark::frmTest window;
  window.RememberUser();
  window.show();
  window.Tell(line.Complaint);
  window.OpenCommandLine(line.File);
  return QApplication::exec();
}
