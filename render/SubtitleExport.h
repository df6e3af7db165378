#pragma once

#include <QString>

#include "render/PictureExport.h"
#include "render/SubtitleDescription.h"

namespace quillmark {

/// What the export of one subtitle writes where.
struct SubtitleExport {
  QString PicturePath;  ///< of its PNG file
  QString ListLine;     ///< for the list, with its line end
};

[[nodiscard]] inline SubtitleExport DescribeExport(const SubtitleDescription& description,
                                                   const ExportPaths& paths) {
  const QString picture = PicturePath(paths.Folder, PictureName(description.StartTicks));
  return {.PicturePath = picture,
          .ListLine = SpuLine(description.StartTicks, description.EndTicks, picture, description.Control.X1,
                              description.Control.Y1)};
}

}  // namespace quillmark
