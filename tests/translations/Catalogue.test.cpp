#include <map>
#include <set>
#include <tuple>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <gtest/gtest.h>

namespace quillmark {
namespace {

/// A text of a catalogue: its context, its English, and what tells it from others.
using TextKey = std::tuple<QString, QString, QString>;

struct Entry {
  bool HasCount = false;
  bool IsFinished = true;
  QStringList Translations;  ///< one, or one for each plural form
};

using Entries = std::map<TextKey, Entry>;

/// An element's text, in which a control character is an element of its own.
QString ReadText(QXmlStreamReader& xml) {
  QString text;
  while (!xml.atEnd() && xml.readNext() != QXmlStreamReader::EndElement) {
    if (xml.isStartElement() && xml.name() == u"byte") {
      text += QChar(xml.attributes().value("value").mid(1).toUShort(nullptr, 16));
      xml.skipCurrentElement();
    } else if (xml.isCharacters()) {
      text += xml.text();
    }
  }
  return text;
}

Entry ReadTranslation(QXmlStreamReader& xml, bool hasCount) {
  Entry entry{.HasCount = hasCount, .IsFinished = !xml.attributes().hasAttribute("type"), .Translations = {}};
  if (!hasCount) {
    entry.Translations.append(ReadText(xml));
    return entry;
  }
  while (xml.readNextStartElement()) {
    entry.Translations.append(ReadText(xml));
  }
  return entry;
}

Entries ReadCatalogue(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  QXmlStreamReader xml(&file);
  Entries entries;
  QString context;
  QString source;
  QString comment;
  bool hasCount = false;
  while (!xml.atEnd()) {
    if (xml.readNext() != QXmlStreamReader::StartElement) {
      continue;
    }
    if (xml.name() == u"name") {
      context = ReadText(xml);
    } else if (xml.name() == u"message") {
      hasCount = xml.attributes().value("numerus") == u"yes";
      comment.clear();
    } else if (xml.name() == u"source") {
      source = ReadText(xml);
    } else if (xml.name() == u"comment") {
      comment = ReadText(xml);
    } else if (xml.name() == u"translation") {
      entries[{context, source, comment}] = ReadTranslation(xml, hasCount);
    }
  }
  EXPECT_FALSE(xml.hasError()) << path.toStdString() << ": " << xml.errorString().toStdString();
  return entries;
}

QStringList Catalogues() {
  return QString(QUILLMARK_CATALOGUES).split(u'\n');
}

/// What the pattern finds in the text, sorted.
QStringList Found(const QString& text, const QRegularExpression& pattern) {
  QStringList found;
  for (auto matches = pattern.globalMatch(text); matches.hasNext();) {
    found.append(matches.next().captured());
  }
  found.sort();
  return found;
}

QString First(const QString& text, const QRegularExpression& pattern) {
  return pattern.match(text).captured();
}

/// For each translation of each catalogue.
template <typename Look>
void ForEachTranslation(const Look& look) {
  for (const QString& path : Catalogues()) {
    const Entries entries = ReadCatalogue(path);
    ASSERT_GT(entries.size(), 500U);
    for (const auto& [key, entry] : entries) {
      for (const QString& translation : entry.Translations) {
        look(key, entry, translation);
        if (testing::Test::HasFailure()) {
          FAIL() << std::get<1>(key).toStdString() << " => " << translation.toStdString();
        }
      }
    }
  }
}

TEST(Catalogue, HasEveryTextOfTheSourcesAndNoOther) {
  if (QByteArray(QUILLMARK_LUPDATE).isEmpty()) {
    GTEST_SKIP() << "lupdate is not installed";
  }
  QTemporaryDir folder;
  for (const QString& path : Catalogues()) {
    const QString fresh = folder.filePath(QFileInfo(path).fileName());
    ASSERT_TRUE(QFile::copy(path, fresh));
    QStringList arguments = QString(QUILLMARK_TEXT_OPTIONS).split(u'\n');
    arguments += QString(QUILLMARK_TEXT_FOLDERS).split(u'\n');
    QProcess lupdate;
    lupdate.setWorkingDirectory(QUILLMARK_SOURCE);
    lupdate.start(QUILLMARK_LUPDATE, arguments << "-ts" << fresh);
    ASSERT_TRUE(lupdate.waitForFinished(-1));
    ASSERT_EQ(lupdate.exitCode(), 0) << lupdate.readAllStandardError().toStdString();
    const Entries sources = ReadCatalogue(fresh);
    const Entries catalogue = ReadCatalogue(path);
    for (const auto& [key, entry] : sources) {
      const auto& [context, source, comment] = key;
      EXPECT_TRUE(catalogue.contains(key)) << "not in " << path.toStdString() << ": " << source.toStdString();
      EXPECT_TRUE(context == u"Ui" || context == u"Words") << context.toStdString();
    }
    for (const auto& [key, entry] : catalogue) {
      EXPECT_TRUE(sources.contains(key)) << "in no source: " << std::get<1>(key).toStdString();
    }
  }
}

TEST(Catalogue, HasATranslationOfEveryText) {
  ForEachTranslation([](const TextKey& /*key*/, const Entry& entry, const QString& translation) {
    EXPECT_TRUE(entry.IsFinished);
    EXPECT_FALSE(translation.trimmed().isEmpty() && !translation.contains(u' '));
    EXPECT_EQ(entry.Translations.size(), entry.HasCount ? 2 : 1);
  });
}

TEST(Catalogue, EveryValueHasItsPlace) {
  const QRegularExpression value("%[1-9]");
  for (const QString& path : Catalogues()) {
    for (const auto& [key, entry] : ReadCatalogue(path)) {
      const auto& [context, one, many] = key;
      EXPECT_EQ(Found(entry.Translations.first(), value), Found(one, value)) << one.toStdString();
      EXPECT_EQ(Found(entry.Translations.last(), value), Found(entry.HasCount ? many : one, value))
          << one.toStdString();
    }
  }
}

/// A count of 1 may be written out.
TEST(Catalogue, EveryCountHasItsPlace) {
  for (const QString& path : Catalogues()) {
    for (const auto& [key, entry] : ReadCatalogue(path)) {
      EXPECT_EQ(entry.Translations.last().contains("%n"), entry.HasCount && std::get<2>(key).contains("%n"))
          << std::get<1>(key).toStdString();
    }
  }
}

TEST(Catalogue, AKeyToPressIsMarkedWhereEnglishMarksOne) {
  const QRegularExpression mark("&[^&]");
  ForEachTranslation([&](const TextKey& key, const Entry& /*entry*/, const QString& translation) {
    EXPECT_EQ(Found(translation, mark).size(), Found(std::get<1>(key), mark).size());
  });
}

TEST(Catalogue, EdgesLinesAndFileTypesStay) {
  const QRegularExpression start("^\\s*");
  const QRegularExpression end("(\\.\\.\\.|:|,)?\\s*$");
  const QRegularExpression types("\\(\\*.*\\)");
  ForEachTranslation([&](const TextKey& key, const Entry& /*entry*/, const QString& translation) {
    const QString& source = std::get<1>(key);
    for (const QRegularExpression& kept : {start, end, types}) {
      EXPECT_EQ(First(translation, kept), First(source, kept));
    }
    EXPECT_EQ(translation.count(u'\n'), source.count(u'\n'));
    EXPECT_EQ(translation.count(u'\r'), source.count(u'\r'));
  });
}

}  // namespace
}  // namespace quillmark
