#pragma once

#include <QString>
#include <QStringList>

namespace quillmark {

/// What the window's command line asks for.
struct CommandLine {
  QString File;       ///< to open; empty without one
  QString Complaint;  ///< why nothing is opened, in words for the user; empty when nothing is wrong
};

/// `arguments` without the program's name. Together, without double quotes, they are one path, so that one
/// with blanks needs no quotes.
[[nodiscard]] CommandLine ReadCommandLine(const QStringList& arguments);

}  // namespace quillmark
