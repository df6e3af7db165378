#include "app/ExportJob.h"

#include <algorithm>
#include <new>
#include <span>
#include <utility>

#include "app/Ui.h"
#include "base/FilePath.h"
#include "base/Words.h"
#include "files/ReplaceFile.h"
#include "render/AuthoringProject.h"
#include "render/ContactSheet.h"
#include "sup/ChoosePackets.h"
#include "sup/StreamEdit.h"
#ifdef QUILLMARK_HAS_VOBSUB
#include "containers/VobSubWriter.h"
#endif

namespace quillmark {
namespace {

/// The packets that are exported; where not all are, they are gathered in `chosen`.
Result<std::span<const std::uint8_t>> PacketsOf(const SupStream& stream, const SubtitleSet& only,
                                                std::vector<std::uint8_t>& chosen) {
  const auto all = std::span(stream.RawBytes).first(static_cast<std::size_t>(stream.FileLength));
  if (only == SubtitleSet::All()) {
    return all;
  }
  chosen.assign(all.begin(), all.end());
  StreamEdit edit = KeepPackets(stream, only).Edit;
  if (const auto applied = ApplyEdit(chosen, edit); !applied) {
    return applied.Why();
  }
  return std::span<const std::uint8_t>(chosen);
}

Result<ExportOutcome> ExportSup(const ExportSource& source, const ExportOrder& order,
                                const Progress& progress) {
  if (progress && !progress(0, static_cast<std::uint64_t>(source.Stream.FileLength))) {
    return ExportOutcome{.How = Completion::Cancelled};
  }
  std::vector<std::uint8_t> chosen;
  const auto packets = PacketsOf(source.Stream, order.Only, chosen);
  if (!packets) {
    return packets.Why();
  }
  if (const auto written = ReplaceFile(order.Path, *packets); !written) {
    return written.Why();
  }
  return ExportOutcome{.Subtitles = order.Only.SizeWithin(source.Stream.Count)};
}

#ifdef QUILLMARK_HAS_VOBSUB
Result<ExportOutcome> ExportVobSub(const ExportSource& source, const ExportOrder& order,
                                   const Progress& progress) {
  std::vector<std::uint8_t> chosen;
  const auto packets = PacketsOf(source.Stream, order.Only, chosen);
  if (!packets) {
    return packets.Why();
  }
  const VobSubTrack track = {.Packets = *packets, .Language = order.Language, .Name = {}};
  const auto written = WriteVobSub(
      PathFromUtf8(order.Path.toStdString()), {track},
      {.Palette = source.Palette, .FrameHeight = source.FrameLines, .Existing = order.Existing}, progress);
  // Subtitles are told by their numbers among those that are exported.
  const auto tell = [&](const std::string& text) {
    return order.Only == SubtitleSet::All() ? text : Words::Tr("of the chosen subtitles, %1", {text});
  };
  if (!written) {
    return Failure{tell(written.Reason())};
  }
  ExportOutcome outcome = {.How = *written, .Subtitles = order.Only.SizeWithin(source.Stream.Count)};
  for (const std::string& change : ChangesInVobSub(track)) {
    outcome.Notes.push_back(tell(change));
  }
  return outcome;
}

std::vector<QString> PairOf(const QString& path) {
  const VobSubPaths pair = VobSubPathsOf(PathFromUtf8(path.toStdString()));
  return {QString::fromStdString(Utf8FromPath(pair.Index)), QString::fromStdString(Utf8FromPath(pair.Packs))};
}
#endif

Result<ExportOutcome> ExportProject(const ExportSource& source, const ExportOrder& order,
                                    const Progress& progress) {
  auto written = WriteAuthoringProject(source.Stream, order.Path,
                                       {.Only = order.Only,
                                        .Palette = source.Palette,
                                        .FrameHeight = source.FrameLines,
                                        .Language = order.Language,
                                        .Existing = order.Existing},
                                       progress);
  if (!written) {
    return written.Why();
  }
  return ExportOutcome{
      .How = written->How, .Subtitles = written->Subtitles, .Notes = std::move(written->Notes)};
}

Result<ExportOutcome> ExportSheet(const ExportSource& source, const ExportOrder& order,
                                  const Progress& progress) {
  const auto written = WriteContactSheet(source.Stream, order.Path,
                                         {.Only = order.Only,
                                          .Palette = source.Palette,
                                          .FrameHeight = source.FrameLines,
                                          .Existing = order.Existing},
                                         progress);
  if (!written) {
    return written.Why();
  }
  return ExportOutcome{.How = written->How, .Subtitles = written->Subtitles};
}

Result<ExportOutcome> Write(const ExportSource& source, const ExportOrder& order, const Progress& progress) {
  switch (order.What) {
    case ExportKind::AuthoringProject:
      return ExportProject(source, order, progress);
    case ExportKind::ContactSheet:
      return ExportSheet(source, order, progress);
    case ExportKind::VobSub:
#ifdef QUILLMARK_HAS_VOBSUB
      return ExportVobSub(source, order, progress);
#endif
    case ExportKind::Sup:
      break;
  }
  return ExportSup(source, order, progress);
}

}  // namespace

std::vector<ExportFormat> ExportFormats() {
  return {
      {.Kind = ExportKind::Sup,
       .Name = Ui::Tr("SUP stream"),
       .FileTypes = Ui::Tr("SUP Files (*.SUP)"),
       .Ending = QStringLiteral(".sup")},
#ifdef QUILLMARK_HAS_VOBSUB
      {.Kind = ExportKind::VobSub,
       .Name = Ui::Tr("VobSub pair"),
       .FileTypes = Ui::Tr("VobSub Files (*.IDX)"),
       .Ending = QStringLiteral(".idx"),
       .TakesLanguage = true},
#endif
      {.Kind = ExportKind::AuthoringProject,
       .Name = Ui::Tr("Authoring project"),
       .FileTypes = Ui::Tr("Authoring lists (*.XML)"),
       .Ending = QStringLiteral(".xml"),
       .TakesLanguage = true},
      {.Kind = ExportKind::ContactSheet,
       .Name = Ui::Tr("Contact sheet"),
       .FileTypes = Ui::Tr("Pictures (*.PNG)"),
       .Ending = QStringLiteral(".png")},
  };
}

ExportFormat FormatOf(ExportKind kind) {
  const std::vector<ExportFormat> formats = ExportFormats();
  return *std::ranges::find(formats, kind, &ExportFormat::Kind);
}

std::vector<QString> PathsOf(const ExportOrder& order, const SupStream& stream) {
  switch (order.What) {
    case ExportKind::AuthoringProject:
      return AuthoringNamesFor(order.Path).Paths();
    case ExportKind::ContactSheet:
      return ContactSheetPaths(order.Path, stream, order.Only);
    case ExportKind::VobSub:
#ifdef QUILLMARK_HAS_VOBSUB
      return PairOf(order.Path);
#endif
    case ExportKind::Sup:
      break;
  }
  return {order.Path};
}

Result<ExportOutcome> Export(const ExportSource& source, const ExportOrder& order, const Progress& progress) {
  if (order.Existing == Overwriting::Refused) {
    if (const auto free = RefuseExisting(PathsOf(order, source.Stream)); !free) {
      return free.Why();
    }
  }
  try {
    return Write(source, order, progress);
  } catch (const std::bad_alloc&) {
    return Failure{Words::Tr("there is not enough memory for it")};
  }
}

}  // namespace quillmark
