#include <gmock/gmock.h>

#include <QApplication>
#include <QFile>
#include <QHash>
#include <QProxyStyle>
#include <QStandardPaths>
#include <QTemporaryDir>

#include "tests/app/Screens.h"
#include "tests/app/ShapedTexts.h"

namespace {

QtMessageHandler previousHandler = nullptr;

/// What Qt warns of while a test runs is a fault: a painter that is not restored, a connection that is none.
/// Off screen there is no window manager, and Qt says so at every dialog.
void TakeWarnings(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  if (text.startsWith("This plugin does not support")) {
    return;
  }
  previousHandler(type, context, text);
  if (type != QtDebugMsg && type != QtInfoMsg &&
      testing::UnitTest::GetInstance()->current_test_info() != nullptr) {
    ADD_FAILURE() << text.toStdString();
  }
}

/// What the style under it does anew for each dialog, and no test is about: the icons of file dialogs and
/// messages are kept, where that one reads them from their pictures; the text of messages cannot be selected,
/// for which their labels would lay it out once more each time that a layout asks for a size.
class QuickStyle : public QProxyStyle {
 public:
  [[nodiscard]] QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                                   const QWidget* widget) const override {
    const auto number = static_cast<int>(icon);
    const auto kept = icons_.constFind(number);
    if (kept != icons_.constEnd()) {
      return *kept;
    }
    return *icons_.insert(number, QProxyStyle::standardIcon(icon, option, widget));
  }

  [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                              QStyleHintReturn* more) const override {
    return hint == SH_MessageBox_TextInteractionFlags ? Qt::NoTextInteraction
                                                      : QProxyStyle::styleHint(hint, option, widget, more);
  }

 private:
  mutable QHash<int, QIcon> icons_;
};

/// Side by side one screen for each scale, all of the same number of logical pixels; the first one is
/// primary.
QByteArray DescribeScreens() {
  QByteArray screens;
  int x = 0;
  for (const double scale : quillmark::test::ScreenScales) {
    const int width = qRound(1920 * scale);
    screens += screens.isEmpty() ? "" : ",";
    screens += QStringLiteral(R"({"name": "%1", "x": %2, "y": 0, "width": %3, "height": %4,
                                  "logicalDpi": %5, "logicalBaseDpi": 96, "dpr": 1})")
                   .arg(scale)
                   .arg(x)
                   .arg(width)
                   .arg(qRound(1080 * scale))
                   .arg(qRound(96 * scale))
                   .toUtf8();
    x += width;
  }
  return R"({"synchronousWindowSystemEvents": false, "windowFrameMargins": false, "screens": [)" + screens +
         "]}";
}

}  // namespace

/// The window tests need no screen, and neither read nor write a user's settings: file and colour dialogs
/// keep theirs below XDG_CONFIG_HOME.
int main(int argc, char** argv) {
  const QTemporaryDir settings;
  qputenv("XDG_CONFIG_HOME", settings.path().toUtf8());
  qputenv("XDG_STATE_HOME", settings.path().toUtf8());
  // Threads that a test which forks cannot end; later Qt than 6.4 has such.
  qputenv("QT_NO_GUI_THREADPOOL", "1");
  QFile screens(settings.filePath("screens.json"));
  if (!screens.open(QIODevice::WriteOnly) || screens.write(DescribeScreens()) < 0 || !screens.flush()) {
    return EXIT_FAILURE;
  }
  qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screens.fileName().toUtf8());
  QStandardPaths::setTestModeEnabled(true);
  QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  previousHandler = qInstallMessageHandler(TakeWarnings);
  const QApplication application(argc, argv);
  QApplication::setStyle(new QuickStyle);
  quillmark::test::ShapedTexts::SetStrategy(QFont::PreferNoShaping);
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
