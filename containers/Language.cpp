#include "containers/Language.h"

#include <algorithm>

#include <QLocale>
#include <QString>

namespace quillmark {

std::string LanguageCode(std::string_view tag) {
  const std::string_view word = tag.substr(0, tag.find_first_of("-_"));
  const QString letters = QString::fromUtf8(word.data(), static_cast<qsizetype>(word.size())).toLower();
  const bool isWord =
      (letters.size() == 2 || letters.size() == 3) &&
      std::ranges::all_of(letters, [](QChar c) { return c >= QLatin1Char('a') && c <= QLatin1Char('z'); });
  if (!isWord || letters == QLatin1String("und")) {
    return {};
  }
  const QLocale::Language known = QLocale::codeToLanguage(letters);
  const QString code = known == QLocale::AnyLanguage ? QString() : QLocale::languageToCode(known);
  return (code.isEmpty() || letters.size() == 2 ? letters : code).toStdString();
}

}  // namespace quillmark
