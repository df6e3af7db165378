#include "render/Exporter.h"

#include <cstdint>
#include <span>
#include <utility>

#include "base/Words.h"
#include "files/ReplaceFile.h"
#include "render/SubtitleExport.h"

namespace quillmark {

void Exporter::Add(const SubtitleDescription& description, cBitmap picture) {
  const SubtitleExport names = DescribeExport(description, paths_);
  AddLine(names.ListLine);
  // Where the folder is missing all the same, the picture has a reason not to be written.
  static_cast<void>(MakeFolder(paths_.Folder));
  if (picture.Width() < 1) {
    pictures_.Refuse(names.PicturePath, Words::Tr(NoPixelsText));
    return;
  }
  pictures_.Add(names.PicturePath, std::move(picture));
}

void Exporter::AddLine(const QString& line) {
  if (list_ == List::Replaced) {
    lines_ += line.toStdString();
  } else if (const auto appended = AppendSpuLine(paths_.List, line); !appended) {
    listFailures_.Add(paths_.List, appended.Reason());
  }
}

Result<void> Exporter::WriteList() const {
  return ReplaceFile(paths_.List,
                     std::span(reinterpret_cast<const std::uint8_t*>(lines_.data()), lines_.size()));
}

}  // namespace quillmark
