#include "app/ImportJob.h"

#include <new>
#include <utility>

#include <QLocale>

#include "app/LanguageName.h"
#include "app/NotesText.h"
#include "app/Ui.h"
#include "base/FilePath.h"
#include "base/Words.h"

namespace quillmark {
namespace {

Result<ImportedFile> Index(Container container) {
  ImportedFile file{.Tracks = {}, .Notes = std::move(container.Notes)};
  std::size_t number = 0;
  std::string why;
  for (Track& track : container.Tracks) {
    ++number;
    Result<LoadedStream> loaded = IndexPrimaryStream(std::move(track.Packets));
    if (loaded && !loaded->LostSignature) {
      file.Tracks.push_back({.What = std::move(track), .Loaded = std::move(*loaded)});
      continue;
    }
    why = loaded ? Words::Tr("No SUP signature found") : loaded.Reason();
    file.Notes.push_back(Words::Tr("track %1 is left out: %2", {std::to_string(number), why}));
  }
  return file.Tracks.empty() ? Result<ImportedFile>(Failure{why}) : Result<ImportedFile>(std::move(file));
}

Result<std::optional<ImportedFile>> Read(const QString& path, const Progress& progress) {
  ReadContainerResult read = ReadContainer(PathFromUtf8(path.toStdString()), progress);
  if (!read) {
    return read.Why();
  }
  if (!*read) {
    return std::optional<ImportedFile>();
  }
  Result<ImportedFile> file = Index(std::move(**read));
  if (!file) {
    return file.Why();
  }
  return std::optional(std::move(*file));
}

}  // namespace

bool IsSupFile(const QString& path) {
  return IsSupFile(PathFromUtf8(path.toStdString()));
}

Result<std::optional<ImportedFile>> ReadForImport(const QString& path, const Progress& progress) {
  try {
    return Read(path, progress);
  } catch (const std::bad_alloc&) {
    return Failure{Words::Tr("there is not enough memory for it")};
  }
}

std::vector<std::uint8_t> TakePackets(ImportedTrack& track) {
  std::vector<std::uint8_t> packets = std::move(track.Loaded.Stream.RawBytes);
  packets.resize(static_cast<std::size_t>(track.Loaded.Stream.FileLength));
  return packets;
}

QString NotesOf(const ImportedFile& file, const ImportedTrack& track) {
  return NotesText({&track.What.Notes, &file.Notes});
}

QString LanguageText(const std::string& code) {
  if (code.empty()) {
    return Ui::Tr("unknown");
  }
  const QString whole = QString::fromStdString(code);
  const QLocale::Language language = QLocale::codeToLanguage(whole.section(u'-', 0, 0).toLower());
  return language == QLocale::AnyLanguage || language == QLocale::C
             ? whole
             : LanguageName(language) + QStringLiteral(" (") + whole + u')';
}

}  // namespace quillmark
