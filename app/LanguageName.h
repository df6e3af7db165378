#pragma once

#include <QLocale>
#include <QString>

namespace quillmark {

/// What a language is called in the language of the program's texts; as Qt calls it where the catalogue does
/// not have it.
[[nodiscard]] QString LanguageName(QLocale::Language language);

}  // namespace quillmark
