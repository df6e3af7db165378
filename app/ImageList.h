#pragma once

#include <array>

#include <QPixmap>
#include <QStandardItemModel>

#include "palette/Colour.h"

namespace quillmark {

/// The 16 palette entries as list items: text "0" to "F", key "test0" to "test15" under KeyRole, and a
/// picture of the entry's colour. The four colour lists show this one model, so a new picture reaches all of
/// them.
class ImageList : public QStandardItemModel {
 public:
  static constexpr int KeyRole = Qt::UserRole;

  explicit ImageList(QObject* parent);

  /// Gives every item the picture of its entry; texts and keys stay.
  void SetPictures(const std::array<QPixmap, 16>& pictures);
  /// Gives every item its text and the colour's name as what assistive tools hear: "4, yellow".
  void SetColours(const DvdPalette& colours);
};

/// A one-pixel black frame around 12x12 pixels of `colour`, in a 16x16 picture whose outermost pixels are
/// transparent.
[[nodiscard]] QPixmap DrawEntryPicture(Rgb colour);

/// The palette entry that an item key names: the number after its first four characters.
[[nodiscard]] int EntryOfKey(const QString& key);

}  // namespace quillmark
