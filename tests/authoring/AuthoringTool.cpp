#include "tests/authoring/AuthoringTool.h"

#include <utility>

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include "render/Composition.h"
#include "render/PictureFile.h"
#include "render/SubtitleExport.h"
#include "sup/StreamLoader.h"
#include "tests/support/Abandon.h"

namespace quillmark::test {
namespace {

QByteArray ReadFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    test::Abandon("cannot read " + path.toStdString());
  }
  return file.readAll();
}

void WriteFile(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
    test::Abandon("cannot write " + path.toStdString());
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
    test::Abandon("cannot export " + names.PicturePath.toStdString());
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

std::vector<AuthoredUnit> UnitsOf(const QByteArray& programStream) {
  return ReadProgramStream({reinterpret_cast<const std::uint8_t*>(programStream.constData()),
                            static_cast<std::size_t>(programStream.size())});
}

std::vector<AuthoredSubtitle> ReadAuthored(const std::vector<AuthoredUnit>& units) {
  const Result<LoadedStream> loaded = IndexPrimaryStream(MakeSup(units));
  if (!loaded || loaded->LostSignature || loaded->Stream.PacketOffset.size() != units.size()) {
    test::Abandon("the units cannot be loaded");
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

QByteArray ProgramStreamOf(const SupStream& stream) {
  std::vector<AuthoredUnit> units(stream.PacketOffset.size());
  for (std::size_t i = 0; i < units.size(); ++i) {
    units[i].Start = stream.StartTime[i];
    CopyUnit(stream, i, units[i].Bytes);
  }
  const std::vector<std::uint8_t> bytes = MakeProgramStream(units);
  return {reinterpret_cast<const char*>(bytes.data()), static_cast<int>(bytes.size())};
}

/// The list that spuunmux writes; it names the pictures by their whole paths.
std::vector<UnmuxedSubtitle> ReadList(const QString& path) {
  std::vector<UnmuxedSubtitle> subtitles;
  QXmlStreamReader list(ReadFile(path));
  while (!list.atEnd()) {
    if (list.readNext() == QXmlStreamReader::StartElement && list.name() == QStringLiteral("spu")) {
      const QXmlStreamAttributes values = list.attributes();
      const auto value = [&values](const char* name) { return values.value(QLatin1String(name)).toString(); };
      subtitles.push_back({.Start = value("start"),
                           .End = value("end"),
                           .Place = value("xoffset") + QStringLiteral(", ") + value("yoffset"),
                           .IsForced = value("force") == QStringLiteral("yes"),
                           .Picture = QImage(value("image"))});
    }
  }
  if (list.hasError()) {
    test::Abandon("cannot read " + path.toStdString());
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
  return AuthorList(spumux, project);
}

ToolRun RunIn(const QString& folder, const QString& program, const QStringList& arguments,
              const QString& input, const QString& output) {
  QProcess process;
  process.setWorkingDirectory(folder);
  process.setStandardInputFile(input.isEmpty() ? QProcess::nullDevice() : input);
  if (!output.isEmpty()) {
    process.setStandardOutputFile(output);
  }
  process.start(program, arguments);
  ToolRun run;
  run.IsDone = process.waitForFinished(120000) && process.exitStatus() == QProcess::NormalExit &&
               process.exitCode() == 0;
  run.Log = QString::fromUtf8(process.readAllStandardError());
  return run;
}

AuthoringRun AuthorList(const QString& spumux, const QString& list) {
  const QString output = list + QStringLiteral(".mpg");
  // Without a film to lay the units into, the program stream holds them alone.
  const ToolRun tool =
      RunIn(QFileInfo(list).path(), spumux,
            {QStringLiteral("-m"), QStringLiteral("dvd"), QStringLiteral("--nomux"), list}, {}, output);
  AuthoringRun run{.ExitCode = tool.IsDone ? 0 : -1, .Log = tool.Log, .Units = {}, .Subtitles = {}};
  if (tool.IsDone) {
    run.Units = UnitsOf(ReadFile(output));
    run.Subtitles = ReadAuthored(run.Units);
  }
  return run;
}

QString FindSpuunmux() {
  return QStandardPaths::findExecutable(QStringLiteral("spuunmux"));
}

std::vector<UnmuxedSubtitle> Unmux(const QString& spuunmux, const SupStream& stream, const QString& folder) {
  QTemporaryDir own(folder + QStringLiteral("/unmuxed"));
  const QString film = own.filePath(QStringLiteral("film.mpg"));
  const QString base = own.filePath(QStringLiteral("out"));
  WriteFile(film, ProgramStreamOf(stream));
  QProcess process;
  process.setStandardInputFile(QProcess::nullDevice());
  process.start(spuunmux, {QStringLiteral("-F"), QStringLiteral("PAL"), QStringLiteral("-o"), base, film});
  if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
    test::Abandon("spuunmux failed: " + process.readAllStandardError().toStdString());
  }
  return ReadList(base + QStringLiteral(".xml"));
}

}  // namespace quillmark::test
