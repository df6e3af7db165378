#include "app/DesktopEntry.h"

#include <QColor>
#include <QFile>
#include <QGuiApplication>
#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <gtest/gtest.h>

namespace quillmark {
namespace {

TEST(DesktopEntry, IsTheOneThatIsInstalled) {
  TellDesktop();
  const QString entry = QStringLiteral(QUILLMARK_SOURCE "/packaging/") + QGuiApplication::desktopFileName() +
                        QStringLiteral(".desktop");
  EXPECT_TRUE(QFile::exists(entry)) << qPrintable(entry);
}

TEST(DesktopEntry, WindowsHaveTheIconInEachSize) {
  TellDesktop();
  const QIcon icon = QGuiApplication::windowIcon();
  for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
    EXPECT_EQ(icon.pixmap(QSize(size, size), 1.0).size(), QSize(size, size));
  }
  EXPECT_EQ(icon.availableSizes().size(), 8);
}

// The line of the subtitle is yellow at every size.
TEST(DesktopEntry, IconIsOurs) {
  TellDesktop();
  const QImage icon = QGuiApplication::windowIcon().pixmap(QSize(16, 16), 1.0).toImage();
  EXPECT_EQ(icon.pixelColor(4, 12), QColor(0xff, 0xd8, 0x3d));
}

}  // namespace
}  // namespace quillmark
