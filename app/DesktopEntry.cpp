#include "app/DesktopEntry.h"

#include <QGuiApplication>
#include <QIcon>
#include <QString>

namespace quillmark {

void TellDesktop() {
  QGuiApplication::setDesktopFileName(QStringLiteral("io.github.quillmark.Quillmark"));
  // From the program itself, for it is also started where nothing is installed.
  QIcon icon;
  for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
    icon.addFile(QStringLiteral(":/icons/%1.png").arg(size));
  }
  QGuiApplication::setWindowIcon(icon);
}

}  // namespace quillmark
