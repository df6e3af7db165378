#include "tests/authoring/AuthoringTool.h"

#include <stdexcept>
#include <utility>

#include <QFile>
#include <QProcess>
#include <QStandardPaths>

#include "render/Composition.h"
#include "render/PictureFile.h"
#include "render/SubtitleExport.h"
#include "sup/StreamLoader.h"
#include "tests/authoring/ProgramStream.h"

namespace quillmark::test {
namespace {

QByteArray ReadFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    throw std::runtime_error("cannot read " + path.toStdString());
  }
  return file.readAll();
}

void WriteFile(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
    throw std::runtime_error("cannot write " + path.toStdString());
  }
}

SubtitleDescription Describe(const SubtitleUnit& unit) {
  return DescribeSubtitle(unit).value();
}

ExportedSubtitle ExportOne(const SubtitleUnit& unit, const DvdPalette& palette, const ExportPaths& paths) {
  ExportedSubtitle exported{.Description = Describe(unit), .Picture = {}};
  const SubtitleExport names = DescribeExport(exported.Description, paths);
  cBitmap picture;
  DecodePicture(unit.Bytes, exported.Description.Control,
                MakeCodeColours(palette, exported.Description.Control), picture);
  if (!AppendSpuLine(paths.List, names.ListLine) ||
      !WritePicture(names.PicturePath, picture, Durability::Unsynced)) {
    throw std::runtime_error("cannot export " + names.PicturePath.toStdString());
  }
  exported.Picture = picture.Image();
  return exported;
}

AuthoredSubtitle ReadOne(const SubtitleUnit& unit, std::vector<YCrCb> palette) {
  AuthoredSubtitle authored{.Description = Describe(unit), .Codes = {}, .Palette = std::move(palette)};
  cBitmap codes;
  DecodePicture(unit.Bytes, authored.Description.Control, {1, 2, 3, 4}, codes);
  authored.Codes = codes.Image();
  return authored;
}

std::vector<AuthoredSubtitle> ReadAuthored(const QByteArray& programStream) {
  const std::vector<AuthoredUnit> units =
      ReadProgramStream({reinterpret_cast<const std::uint8_t*>(programStream.constData()),
                         static_cast<std::size_t>(programStream.size())});
  const Result<LoadedStream> loaded = IndexPrimaryStream(MakeSup(units));
  if (!loaded || loaded->LostSignature || loaded->Stream.PacketOffset.size() != units.size()) {
    throw std::runtime_error("the units cannot be loaded");
  }
  const SupStream& stream = loaded->Stream;
  std::vector<AuthoredSubtitle> subtitles;
  subtitles.reserve(units.size());
  std::vector<std::uint8_t> buffer;
  for (std::size_t i = 0; i < units.size(); ++i) {
    subtitles.push_back(ReadOne(UnitOf(stream, i, buffer), units[i].Palette));
  }
  return subtitles;
}

}  // namespace

QString FindSpumux() {
  return QStandardPaths::findExecutable(QStringLiteral("spumux"));
}

std::vector<ExportedSubtitle> ExportAll(const SupStream& stream, const DvdPalette& palette,
                                        const ExportPaths& paths) {
  static_cast<void>(MakeFolder(paths.Folder));
  std::vector<ExportedSubtitle> all;
  all.reserve(stream.PacketOffset.size());
  std::vector<std::uint8_t> buffer;
  for (std::size_t i = 0; i < stream.PacketOffset.size(); ++i) {
    all.push_back(ExportOne(UnitOf(stream, i, buffer), palette, paths));
  }
  return all;
}

AuthoringRun Author(const QString& spumux, const ExportPaths& paths, const QString& format) {
  // The list holds nothing but its lines; the elements around them are the author's to add.
  const QString project = paths.List + QStringLiteral(".project");
  WriteFile(project, "<subpictures format=\"" + format.toUtf8() + "\">\n  <stream>\n" + ReadFile(paths.List) +
                         "  </stream>\n</subpictures>\n");
  const QString output = paths.List + QStringLiteral(".mpg");
  QProcess process;
  process.setStandardInputFile(QProcess::nullDevice());
  process.setStandardOutputFile(output);
  // Without a film to lay the units into, the program stream holds them alone.
  process.start(spumux, {QStringLiteral("-m"), QStringLiteral("dvd"), QStringLiteral("--nomux"), project});
  AuthoringRun run;
  if (process.waitForFinished() && process.exitStatus() == QProcess::NormalExit) {
    run.ExitCode = process.exitCode();
  }
  run.Log = QString::fromUtf8(process.readAllStandardError());
  if (run.ExitCode == 0) {
    run.Subtitles = ReadAuthored(ReadFile(output));
  }
  return run;
}

}  // namespace quillmark::test
