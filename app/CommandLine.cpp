#include "app/CommandLine.h"

#include <QFileInfo>

#include "app/Dialogs.h"
#include "app/Ui.h"

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
      return Ui::Tr("unknown option %1; see quillmark --help", {argument});
    }
  }
  if (files.size() > 1) {
    return Ui::Tr("only one file can be opened, not %1", {files.join(Ui::Tr(" and "))});
  }
  const QFileInfo found(path);
  if (found.isDir()) {
    return Ui::Tr("%1 is a folder, not a SUP file", {path});
  }
  return found.exists() ? Ui::Tr("%1 is no file that can be opened", {path})
                        : Ui::Tr("there is no file %1", {path});
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
