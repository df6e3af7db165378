#pragma once

#include <QString>
#include <QStringList>

namespace quillmark {

/// The languages that the programs speak besides English, by their codes: "de". Those that are built in.
[[nodiscard]] QStringList Languages();

/// The first of the languages that the user wants, best first, which the programs speak; empty for English.
/// A language of a country counts as the language: "de-AT" as "de". Whoever reads English before another one
/// gets English.
[[nodiscard]] QString LanguageFor(const QStringList& wanted);

/// From then on all texts of the programs are in the language, or in English: of an empty text, or where
/// there is no such language. Not while other threads make texts.
void Speak(const QString& language);

/// Speaks the first of the languages that the system or its environment names for the user.
void SpeakUsersLanguage();

/// The same for the texts of Qt's own dialogs and buttons, where the system has them in the language that is
/// spoken. Needs the QCoreApplication.
void TranslateToolkit();

}  // namespace quillmark
