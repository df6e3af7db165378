#include "app/NotesText.h"

#include <cstdint>

#include "app/CountText.h"
#include "app/Ui.h"

namespace quillmark {
namespace {

constexpr qsizetype MaxNotes = 12;

}  // namespace

QString NotesText(std::initializer_list<const std::vector<std::string>*> lists) {
  QStringList lines;
  std::int64_t more = 0;
  for (const auto* notes : lists) {
    for (const std::string& note : *notes) {
      if (lines.size() == MaxNotes) {
        ++more;
        continue;
      }
      QString line = QString::fromStdString(note);
      line.replace(0, 1, line.left(1).toUpper());
      lines.append(line);
    }
  }
  if (more > 0) {
    lines.append(Ui::Tr("And %1 more", {CountText(more)}));
  }
  return lines.join(u'\n');
}

}  // namespace quillmark
