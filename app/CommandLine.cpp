#include "app/CommandLine.h"

#include <QFileInfo>

#include "app/Dialogs.h"

namespace quillmark {
namespace {

QString WhyNotOpened(const QString& path, const QStringList& arguments) {
  QStringList files;
  for (const QString& argument : arguments) {
    if (FileExists(argument)) {
      files.append(argument);
    }
  }
  for (const QString& argument : arguments) {
    if (argument.startsWith(u'-') && argument.size() > 1) {
      return QStringLiteral("unknown option ") + argument + QStringLiteral("; see quillmark --help");
    }
  }
  if (files.size() > 1) {
    return QStringLiteral("only one file can be opened, not ") + files.join(QStringLiteral(" and "));
  }
  const QFileInfo found(path);
  if (found.isDir()) {
    return path + QStringLiteral(" is a folder, not a SUP file");
  }
  return found.exists() ? path + QStringLiteral(" is no file that can be opened")
                        : QStringLiteral("there is no file ") + path;
}

}  // namespace

CommandLine ReadCommandLine(const QStringList& arguments) {
  QStringList unquoted = arguments;
  const QString path = unquoted.replaceInStrings(QStringLiteral("\""), QString()).join(u' ');
  if (path.isEmpty()) {
    return {};
  }
  if (FileExists(path)) {
    return {.File = path, .Complaint = {}};
  }
  return {.File = {}, .Complaint = WhyNotOpened(path, unquoted)};
}

}  // namespace quillmark
