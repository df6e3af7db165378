#include "translations/UsersLanguage.h"

#include <memory>
#include <optional>
#include <string>

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include "base/Words.h"

// Qt's tools make it of the catalogues; a static library's resources are there once they are asked for.
static void RegisterCatalogues() {
#ifdef QUILLMARK_HAS_CATALOGUES
  Q_INIT_RESOURCE(catalogues);
#endif
}

namespace quillmark {
namespace {

constexpr const char* Folder = ":/translations";
const QString Prefix = QStringLiteral("quillmark_");

struct Spoken {
  QString Language;
  std::unique_ptr<QTranslator> Catalogue;
};

Spoken& Now() {
  static Spoken spoken;
  return spoken;
}

/// In the catalogue the English of many is what tells a text from others.
std::optional<std::string> FromCatalogue(const char* context, const char* text, const char* many, int count) {
  const QString found = Now().Catalogue->translate(context, text, many, count);
  return found.isEmpty() ? std::nullopt : std::optional(found.toStdString());
}

}  // namespace

QStringList Languages() {
  RegisterCatalogues();
  QStringList languages;
  for (const QString& name : QDir(QString::fromLatin1(Folder)).entryList({Prefix + QStringLiteral("*.qm")})) {
    languages.append(name.sliced(Prefix.size()).chopped(3));
  }
  return languages;
}

QString LanguageFor(const QStringList& wanted) {
  const QStringList spoken = Languages();
  for (const QString& tag : wanted) {
    QString language = QString(tag).replace(u'_', u'-').section(u'-', 0, 0).toLower();
    if (language == u"en" || language == u"c") {
      return {};
    }
    if (spoken.contains(language)) {
      return language;
    }
  }
  return {};
}

void Speak(const QString& language) {
  RegisterCatalogues();
  InstallTranslator(nullptr);
  auto catalogue = std::make_unique<QTranslator>();
  const bool isThere = !language.isEmpty() && catalogue->load(Prefix + language, QString::fromLatin1(Folder));
  Now() = isThere ? Spoken{.Language = language, .Catalogue = std::move(catalogue)} : Spoken();
  if (isThere) {
    InstallTranslator(FromCatalogue);
  }
}

void SpeakUsersLanguage() {
  Speak(LanguageFor(QLocale::system().uiLanguages()));
}

void TranslateToolkit() {
  static QTranslator toolkit;
  QCoreApplication::removeTranslator(&toolkit);
  if (!Now().Language.isEmpty() && toolkit.load(QStringLiteral("qtbase_") + Now().Language,
                                                QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QCoreApplication::installTranslator(&toolkit);
  }
}

}  // namespace quillmark
