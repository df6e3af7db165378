#include <gmock/gmock.h>

#include <QApplication>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace {

QtMessageHandler previousHandler = nullptr;

/// Off screen there is no window manager, and Qt says so at every dialog.
void DropRemarksOnThePlatform(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  if (!text.startsWith("This plugin does not support")) {
    previousHandler(type, context, text);
  }
}

}  // namespace

/// The window tests need no screen, and neither read nor write a user's settings: file and colour dialogs
/// keep theirs below XDG_CONFIG_HOME.
int main(int argc, char** argv) {
  const QTemporaryDir settings;
  qputenv("XDG_CONFIG_HOME", settings.path().toUtf8());
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QStandardPaths::setTestModeEnabled(true);
  QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  previousHandler = qInstallMessageHandler(DropRemarksOnThePlatform);
  const QApplication application(argc, argv);
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
