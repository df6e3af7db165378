#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <QString>

#include "base/Progress.h"
#include "base/Result.h"
#include "files/StagedFiles.h"
#include "palette/Colour.h"
#include "sup/SubtitleSet.h"
#include "sup/SupStream.h"

namespace quillmark {

/// What a DVD authoring project consists of, as names in one folder.
struct AuthoringNames {
  QString Folder;    ///< where the others stand
  QString List;      ///< "film.xml": what spumux lays into the film
  QString Pictures;  ///< "film_pictures", the folder of the list's pictures: 00001.png is subtitle 1
  QString Palette;   ///< "film.pal", 16 lines of Y, Cr, Cb
  QString Disc;      ///< "film_dvdauthor.xml", which makes a disc in the folder "film_dvd" of "film.mpg"
  QString Base;      ///< "film"

  /// The four with the folder before them.
  [[nodiscard]] std::vector<QString> Paths() const;
};
/// The other names are that of the list, without ".xml" where it ends so.
[[nodiscard]] AuthoringNames AuthoringNamesFor(const QString& listPath);

struct AuthoringOptions {
  SubtitleSet Only = SubtitleSet::All();
  DvdPalette Palette = StartUpPalette;
  int FrameHeight = 576;      ///< 480 is NTSC, all others PAL
  std::string Language = {};  ///< of two letters; any other is left out
  Overwriting Existing = Overwriting::Refused;
};

struct AuthoringResult {
  Completion How = Completion::Done;
  std::int64_t Subtitles = 0;      ///< in the list
  std::vector<std::string> Notes;  ///< what was left out or changed, in words for the user
};

/// Writes a project that spumux and dvdauthor run as it stands, in its own folder: the list, whose pictures
/// are named relative to it, in the order of the times; the pictures, see AuthoringPicture; the palette; and
/// a control file for dvdauthor, which takes the film that spumux wrote. Delays count as players count them,
/// 1024 ticks a unit.
/// All of it is written, or nothing, also where none of the subtitles can be in it; the reason names the
/// file. Progress counts subtitles.
[[nodiscard]] Result<AuthoringResult> WriteAuthoringProject(const SupStream& stream, const QString& listPath,
                                                            const AuthoringOptions& options = {},
                                                            const Progress& progress = {});

}  // namespace quillmark
