#pragma once

#include <cstdint>

#include <QLocale>
#include <QString>

#include "app/Ui.h"

namespace quillmark {

/// The language of the program's texts.
[[nodiscard]] inline QLocale TextLocale() {
  //: The language of the catalogue, and the country whose way of writing numbers it keeps.
  return QLocale(Ui::Tr("en_US"));
}

/// "1,500"
[[nodiscard]] inline QString CountText(std::int64_t count) {
  return TextLocale().toString(static_cast<qlonglong>(count));
}

/// "1 subtitle", "1,500 subtitles"
[[nodiscard]] inline QString SubtitlesText(std::int64_t count) {
  return Ui::Tr("%n subtitle", "%n subtitles", count);
}

}  // namespace quillmark
