#include "render/AuthoringProject.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <optional>
#include <span>
#include <utility>

#include <QDir>
#include <QFileInfo>

#include "base/Words.h"
#include "files/ReplaceFile.h"
#include "palette/PaletteFile.h"
#include "render/AuthoringPicture.h"
#include "render/Composition.h"
#include "render/PictureBatch.h"
#include "render/PictureExport.h"
#include "render/SubtitleDescription.h"
#include "sup/ForceDisplay.h"
#include "sup/LineSurvey.h"
#include "sup/PlayerCheck.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

/// Times from here on wrap in spumux, whose ticks have 32 bits: 13 hours, 15 minutes.
constexpr std::int64_t EndOfToolTime = std::int64_t{1} << 32U;
/// What spumux leaves between a subtitle and the next one; of two that start closer together it leaves the
/// first one out.
constexpr std::int64_t ToolGap = 90;
/// A line that spumux cannot take ends its run.
constexpr std::int64_t MaxToolLineBits = MaxPlayerLineBits - 1;

constexpr const char* XmlStart = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n";

QString FormatName(int frameHeight) {
  return frameHeight == FrameHeight480 ? QStringLiteral("NTSC") : QStringLiteral("PAL");
}

bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// The control file that makes a disc of the film with its subtitles.
QString DiscText(const AuthoringNames& names, const AuthoringOptions& options) {
  const QString format = XmlAttribute(QStringLiteral("format"), FormatName(options.FrameHeight).toLower());
  const bool hasLanguage = options.Language.size() == 2 && std::ranges::all_of(options.Language, IsLetter);
  const QString language =
      hasLanguage ? XmlAttribute(QStringLiteral("lang"), QString::fromStdString(options.Language).toLower())
                  : QString();
  const QString film = names.Base + QStringLiteral(".mpg");
  // Names may hold what ends a comment, so it names none.
  return QLatin1String(XmlStart) +
         QStringLiteral("<!-- In this folder: spumux lays the subtitles of the list into your film,\r\n") +
         QStringLiteral("     spumux LIST < YOUR_FILM > the vob file below,\r\n") +
         QStringLiteral("     and dvdauthor makes the disc: dvdauthor -x THIS_FILE -->\r\n") +
         QStringLiteral("<dvdauthor ") +
         XmlAttribute(QStringLiteral("dest"), names.Base + QStringLiteral("_dvd")) + format +
         QStringLiteral(">\r\n  <vmgm />\r\n  <titleset>\r\n    <titles>\r\n      <video ") + format +
         QStringLiteral("/>\r\n      <subpicture ") + language + QStringLiteral("/>\r\n      <pgc ") +
         XmlAttribute(QStringLiteral("palette"), names.Palette) + QStringLiteral(">\r\n        <vob ") +
         XmlAttribute(QStringLiteral("file"), film) +
         QStringLiteral("/>\r\n      </pgc>\r\n    </titles>\r\n  </titleset>\r\n</dvdauthor>\r\n");
}

Failure NamedFailure(const QString& name, const std::string& reason) {
  return Failure{name.toStdString() + ": " + reason};
}

/// The subtitles that were chosen, by their starts: spumux drops whatever starts before the one ahead of it.
std::vector<std::size_t> ByStart(const SupStream& stream, const SubtitleSet& only) {
  std::vector<std::size_t> indexes;
  only.ForEachIndex(stream.PacketOffset.size(), [&](std::size_t index) { indexes.push_back(index); });
  std::ranges::stable_sort(indexes, {}, [&](std::size_t index) { return stream.StartTime[index]; });
  return indexes;
}

/// Makes one project's pictures and list.
class ProjectWriter {
 public:
  ProjectWriter(const SupStream& stream, AuthoringNames names, const AuthoringOptions& options,
                StagedFiles& staged)
      : stream_(stream), names_(std::move(names)), options_(options), staged_(staged) {}

  /// One subtitle more; those that cannot be taken are noted.
  void Add(std::size_t index) {
    number_ = index + 1;
    const SubtitleUnit unit = UnitOf(stream_, index, buffer_);
    const auto description = DescribeSubtitle(unit);
    if (!description) {
      return Note(Words::Tr("subtitle %1 cannot be converted and is left out", {std::to_string(number_)}));
    }
    AuthoringPicture picture =
        maker_.Make(unit.Bytes, description->Control, MakeCodeColours(options_.Palette, description->Control),
                    options_.FrameHeight);
    if (const auto reason = WhyLeftOut(unit.StartTime, picture)) {
      return Note(*reason);
    }
    NoteDoubts(unit, description->Control, picture);
    const QString name = names_.Pictures + QLatin1Char('/') +
                         QString::number(number_).rightJustified(5, QLatin1Char('0')) +
                         QStringLiteral(".png");
    AddLine(unit.StartTime, description->Control.Delay, name, picture, IsForced(stream_, index));
    pictures_.Add(staged_.PathOf(name), cBitmap(std::move(picture.Image)));
  }

  /// The rest of the project; a Failure where every subtitle was left out.
  Result<void> Finish() {
    pictures_.Flush();
    if (const ExportFailures& failures = pictures_.Failures(); failures.Count > 0) {
      return NamedFailure(staged_.NameOf(failures.FirstPath), failures.FirstReason);
    }
    if (pictures_.Count() == 0 && !notes_.empty()) {
      return Failure{Words::Tr("no subtitle would be in it: %1", {notes_.front()})};
    }
    const QString list = QLatin1String(XmlStart) + QStringLiteral("<subpictures ") +
                         XmlAttribute(QStringLiteral("format"), FormatName(options_.FrameHeight)).trimmed() +
                         QStringLiteral(">\r\n  <stream>\r\n") + lines_ +
                         QStringLiteral("  </stream>\r\n</subpictures>\r\n");
    if (auto written = WriteText(names_.List, list.toStdString()); !written) {
      return written;
    }
    if (auto written = WriteText(names_.Palette, PalText(options_.Palette)); !written) {
      return written;
    }
    return WriteText(names_.Disc, DiscText(names_, options_).toStdString());
  }

  [[nodiscard]] AuthoringResult Take() && {
    return {.Subtitles = pictures_.Count(), .Notes = std::move(notes_)};
  }

 private:
  void Note(std::string note) { notes_.push_back(std::move(note)); }

  [[nodiscard]] std::optional<std::string> WhyLeftOut(std::int64_t start,
                                                      const AuthoringPicture& picture) const {
    const std::string number = std::to_string(number_);
    if (picture.Image.isNull()) {
      return Words::Tr("subtitle %1 has an area without pixels and is left out", {number});
    }
    if (picture.Image.width() > FrameWidth || picture.Image.height() > FrameHeight576) {
      return Words::Tr("subtitle %1 is larger than 720x576, which spumux does not take, and is left out",
                       {number});
    }
    if (start < 0 || start >= EndOfToolTime) {
      return Words::Tr("subtitle %1 starts outside of the 13 hours that spumux can tell and is left out",
                       {number});
    }
    return std::nullopt;
  }

  /// What is in the list, and yet may not come out as it went in.
  void NoteDoubts(const SubtitleUnit& unit, const SpuControl& control, const AuthoringPicture& picture) {
    const std::string number = std::to_string(number_);
    if (picture.Fits == AuthoringPicture::Fit::DoubledEdge) {
      Note(Words::Tr(
          "subtitle %1 has four visible colours and an odd size: a line or column at its edge stands "
          "twice, since spumux has no fifth colour for a transparent one",
          {number}));
    }
    const LineSurvey lines = SurveyLines(UnitView(unit.Bytes), control, unit.ControlOffset, MaxToolLineBits);
    if (lines.FirstLong) {
      Note(Words::Tr("subtitle %1 has a line of %2 bits, at which spumux may end its run",
                     {number, std::to_string(lines.FirstLong->Bits)}));
    }
    if (lastStart_ && unit.StartTime - *lastStart_ <= ToolGap) {
      Note(Words::Tr("subtitle %1 starts where subtitle %2 does, which spumux will leave out",
                     {number, std::to_string(lastNumber_)}));
    }
    lastStart_ = unit.StartTime;
    lastNumber_ = number_;
  }

  void AddLine(std::int64_t start, std::int16_t delay, const QString& name, const AuthoringPicture& picture,
               bool isForced) {
    const std::int64_t duration = std::int64_t{static_cast<std::uint16_t>(delay)} * TicksPerPlayerDelayUnit;
    lines_ += SpuLine({.Start = AuthoringTimeText(start),
                       .End = delay != 0 ? AuthoringTimeText(start + duration) : QString(),
                       .Image = name,
                       .X = picture.X,
                       .Y = picture.Y,
                       .IsForced = isForced});
  }

  Result<void> WriteText(const QString& name, const std::string& text) {
    const auto written =
        ReplaceFile(staged_.PathOf(name), {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()},
                    {.Wait = Durability::Unsynced});
    return written ? written : NamedFailure(name, written.Reason());
  }

  const SupStream& stream_;
  AuthoringNames names_;
  const AuthoringOptions& options_;
  StagedFiles& staged_;
  AuthoringPictureMaker maker_;
  PictureBatch pictures_;
  QString lines_;
  std::vector<std::uint8_t> buffer_;
  std::vector<std::string> notes_;
  std::size_t number_ = 0;  // of the subtitle at hand
  std::size_t lastNumber_ = 0;
  std::optional<std::int64_t> lastStart_;
};

}  // namespace

std::vector<QString> AuthoringNames::Paths() const {
  std::vector<QString> paths;
  for (const QString& name : {List, Pictures, Palette, Disc}) {
    paths.push_back(QDir(Folder).filePath(name));
  }
  return paths;
}

AuthoringNames AuthoringNamesFor(const QString& listPath) {
  const QString ending = QStringLiteral(".xml");
  const QFileInfo info(listPath);
  const QString list = info.fileName();
  const QString base = list.size() > ending.size() && list.endsWith(ending, Qt::CaseInsensitive)
                           ? list.chopped(ending.size())
                           : list;
  return {.Folder = info.path(),
          .List = list,
          .Pictures = base + QStringLiteral("_pictures"),
          .Palette = base + QStringLiteral(".pal"),
          .Disc = base + QStringLiteral("_dvdauthor.xml"),
          .Base = base};
}

Result<AuthoringResult> WriteAuthoringProject(const SupStream& stream, const QString& listPath,
                                              const AuthoringOptions& options, const Progress& progress) {
  const AuthoringNames names = AuthoringNamesFor(listPath);
  if (options.Existing == Overwriting::Refused) {
    if (const auto free = RefuseExisting(names.Paths()); !free) {
      return free.Why();
    }
  }
  auto staged = StagedFiles::In(names.Folder);
  if (!staged) {
    return staged.Why();
  }
  if (const auto made = staged->AddFolder(names.Pictures); !made) {
    return made.Why();
  }
  ProjectWriter writer(stream, names, options, *staged);
  const std::vector<std::size_t> indexes = ByStart(stream, options.Only);
  for (std::size_t i = 0; i < indexes.size(); ++i) {
    if (progress && !progress(i, indexes.size())) {
      return AuthoringResult{.How = Completion::Cancelled, .Notes = {}};
    }
    writer.Add(indexes[i]);
  }
  if (const auto finished = writer.Finish(); !finished) {
    return finished.Why();
  }
  if (progress && !progress(indexes.size(), indexes.size())) {
    return AuthoringResult{.How = Completion::Cancelled, .Notes = {}};
  }
  if (const auto placed = staged->TakePlaces(options.Existing); !placed) {
    return placed.Why();
  }
  return std::move(writer).Take();
}

}  // namespace quillmark
