#include <utility>

#include <QFileInfo>

#include "app/CountText.h"
#include "app/Dialogs.h"
#include "app/Document.h"
#include "app/ImportJob.h"
#include "app/PathText.h"
#include "app/TrackDialog.h"
#include "app/Ui.h"
#include "app/frmTest.h"

namespace quillmark {
namespace {

/// "*.SUP;*.IDX;*.SUB": what this build reads.
QString PatternsOfContainers() {
  QStringList patterns;
  for (const ContainerFormat& format : ContainerFormats()) {
    for (const std::string_view ending : format.Endings) {
      patterns.append(u'*' +
                      QString::fromLatin1(ending.data(), static_cast<qsizetype>(ending.size())).toUpper());
    }
  }
  return patterns.join(u';');
}

QString NumberOf(const ImportedFile& file, const ImportedTrack& track) {
  return CountText(&track - file.Tracks.data() + 1);
}

/// "Imported movie.mkv, track 2 of 3, German (de), with its palette".
QString ImportedText(const QString& path, const ImportedFile& file, const ImportedTrack& track) {
  QString text = Ui::Tr("Imported %1", {QFileInfo(path).fileName()});
  if (file.Tracks.size() > 1) {
    text += QStringLiteral(", ") +
            Ui::Tr("track %1 of %2",
                   {NumberOf(file, track), CountText(static_cast<std::int64_t>(file.Tracks.size()))});
  }
  if (!track.What.Language.empty()) {
    text += QStringLiteral(", ") + LanguageText(track.What.Language);
  }
  return track.What.Palette ? Ui::Tr("%1, with its palette", {text})
                            : Ui::Tr("%1; it has no palette of its own: the present one stays", {text});
}

}  // namespace

void frmTest::Command_Import_Click() {
  const QString patterns = PatternsOfContainers();
  const QString path =
      AskToOpen(document_->SupPath(), Ui::Tr("Files with subtitles (%1)", {patterns}), patterns);
  if (!path.isEmpty()) {
    Import(path);
  }
}

void frmTest::OpenFile(const QString& path) {
  if (IsSupFile(path)) {
    (void)LoadSup(path);
  } else {
    Import(path);
  }
}

void frmTest::Import(const QString& path) {
  Result<std::optional<ImportedFile>> read = Failure{};
  const Completion ended =
      RunLongWork(this, Ui::Tr("Reading %1", {CutInTheMiddle(QFileInfo(path).fileName())}), patience_,
                  [&](const Progress& progress) { read = ReadForImport(path, progress); });
  if (ended == Completion::Cancelled || (read && !*read)) {
    Tell(Ui::Tr("The import was cancelled; nothing has changed"));
    return;
  }
  if (!read) {
    TellUnreadable(path, read.Reason());
    return;
  }
  ImportedFile& file = **read;
  TrackChoice choice;
  if (file.Tracks.size() > 1) {
    TrackDialog dialog(QFileInfo(path).fileName(), file, document_->Palette(), this);
    if (dialog.exec() != QDialog::Accepted) {
      return;
    }
    choice = dialog.Choice();
  }
  OpenTrack(path, file, file.Tracks[choice.Track]);
  if (!choice.Second || !BeginSecond()) {
    return;
  }
  ImportedTrack& second = file.Tracks[*choice.Second];
  MergeWith(
      path, [&] { return IndexSecondaryStream(TakePackets(second), document_->Primary()); },
      NotesOf(file, second));
}

void frmTest::OpenTrack(const QString& path, const ImportedFile& file, ImportedTrack& track) {
  if (track.What.Palette) {
    document_->TakePalette(*track.What.Palette);
  }
  Tell(ImportedText(path, file, track));
  Open(path, std::move(track.Loaded), track.What.Language, NotesOf(file, track));
}

}  // namespace quillmark
