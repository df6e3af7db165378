#include "app/PathText.h"

#include <algorithm>

#include <QCoreApplication>
#include <QDir>

namespace quillmark {
namespace {

/// Both separators count where the system takes both.
qsizetype LastSeparator(const QString& path) {
  const qsizetype slash = path.lastIndexOf(u'/');
  return QDir::separator() == u'/' ? slash : std::max(slash, path.lastIndexOf(QDir::separator()));
}

}  // namespace

QString FolderOf(const QString& path) {
  const qsizetype separator = LastSeparator(path);
  return separator < 0 ? QString() : separator == 0 ? path.left(1) : path.left(separator);
}

QString InProgramFolder(const QString& name) {
  return QDir::toNativeSeparators(QCoreApplication::applicationDirPath() + u'/' + name);
}

QString SupPathOrDefault(const QString& path) {
  return path.size() < 4 ? InProgramFolder(QStringLiteral("test.sup")) : path;
}

QString ReplaceExtension(const QString& path, const QString& suffix) {
  const qsizetype dot = path.lastIndexOf(u'.');
  return (dot > LastSeparator(path) ? path.left(dot) : path) + suffix;
}

QString CutInTheMiddle(const QString& path, qsizetype most) {
  return path.size() <= most ? path : path.left(most / 3) + QChar(0x2026) + path.right(most - most / 3);
}

QString ProposedIfoName(const QString& supPath) {
  const QString name = supPath.chopped(std::min<qsizetype>(4, supPath.size())) + QStringLiteral(".ifo");
  const QString lowered = name.toLower();
  const QString folder = FolderOf(name);
  return folder.isEmpty() || QDir(FolderOf(lowered)).exists() ? lowered : folder + lowered.mid(folder.size());
}

}  // namespace quillmark
