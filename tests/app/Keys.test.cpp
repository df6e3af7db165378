#include <map>

#include <QAction>
#include <QFile>
#include <QKeySequence>
#include <QShortcut>
#include <QStringList>

#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

/// A key, as Qt writes it, and the command that it calls.
using Keys = std::map<QString, QString>;

/// The table under the README's heading "Keys".
Keys KeysOfTheReadme() {
  QFile file(QStringLiteral(QUILLMARK_SOURCE "/README.md"));
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  const QString section = QString::fromUtf8(file.readAll()).section(QStringLiteral("\n## Keys\n"), 1, 1);
  Keys keys;
  for (const QString& line : section.section(QStringLiteral("\n## "), 0, 0).split(u'\n')) {
    const QStringList cells = line.split(u'|');
    if (cells.size() != 4 || cells[1].trimmed() == u"key" || cells[1].startsWith(u'-')) {
      continue;
    }
    for (QString key : cells[1].split(u',')) {
      key.replace(QStringLiteral("PageUp"), QStringLiteral("PgUp"))
          .replace(QStringLiteral("PageDown"), QStringLiteral("PgDown"));
      keys[key.trimmed()] = cells[2].trimmed();
    }
  }
  return keys;
}

/// The words of an action's menu entry, without what marks its mnemonic and its dialog.
QString Words(const QAction& action) {
  return action.text().remove(u'&').remove(QStringLiteral("..."));
}

TEST_F(WindowTest, KeysAreThoseOfTheReadme) {
  Keys keys;
  for (const QAction* action : Window.findChildren<QAction*>()) {
    for (const QKeySequence& key : action->shortcuts()) {
      keys[key.toString(QKeySequence::PortableText)] = Words(*action);
    }
  }
  EXPECT_EQ(keys, KeysOfTheReadme());
  EXPECT_TRUE(Window.findChildren<QShortcut*>().isEmpty())
      << "a key without an action has no name to compare";
}

}  // namespace
}  // namespace quillmark::test
