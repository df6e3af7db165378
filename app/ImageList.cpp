#include "app/ImageList.h"

#include <QPainter>

#include "app/ColourName.h"
#include "app/QtColour.h"

namespace quillmark {

ImageList::ImageList(QObject* parent) : QStandardItemModel(parent) {
  for (int entry = 0; entry < 16; ++entry) {
    auto* item = new QStandardItem(QString::number(entry, 16).toUpper());
    item->setData(QStringLiteral("test%1").arg(entry), KeyRole);
    item->setEditable(false);
    appendRow(item);
  }
}

void ImageList::SetPictures(const std::array<QPixmap, 16>& pictures) {
  for (int entry = 0; entry < 16; ++entry) {
    item(entry)->setIcon(QIcon(pictures[static_cast<std::size_t>(entry)]));
  }
}

void ImageList::SetColours(const DvdPalette& colours) {
  for (int entry = 0; entry < 16; ++entry) {
    item(entry)->setData(QStringLiteral("%1, %2").arg(item(entry)->text(),
                                                      ColourName(colours[static_cast<std::size_t>(entry)])),
                         Qt::AccessibleTextRole);
  }
}

QPixmap DrawEntryPicture(Rgb colour) {
  QPixmap picture(16, 16);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.fillRect(1, 1, 14, 14, Qt::black);
  painter.fillRect(2, 2, 12, 12, ToQColor(colour));
  return picture;
}

int EntryOfKey(const QString& key) {
  return key.mid(4).toInt();
}

}  // namespace quillmark
