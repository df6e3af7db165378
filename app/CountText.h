#pragma once

#include <cstdint>

#include <QLocale>
#include <QString>

namespace quillmark {

/// The language of the program's texts.
[[nodiscard]] inline const QLocale& TextLocale() {
  static const QLocale locale(QLocale::English, QLocale::UnitedStates);
  return locale;
}

/// "1,500"
[[nodiscard]] inline QString CountText(std::int64_t count) {
  return TextLocale().toString(static_cast<qlonglong>(count));
}

/// "1 subtitle", "1,500 subtitles"
[[nodiscard]] inline QString SubtitlesText(std::int64_t count) {
  return CountText(count) + (count == 1 ? QStringLiteral(" subtitle") : QStringLiteral(" subtitles"));
}

}  // namespace quillmark
