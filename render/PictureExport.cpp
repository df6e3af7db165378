#include "render/PictureExport.h"

#include <QByteArray>
#include <QDir>

#include "files/ReplaceFile.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

/// A SUP file's extension with its dot; nobody looks at what it is.
constexpr qsizetype ExtensionLength = 4;

QString TimeText(std::int64_t ticks) {
  return QString::fromStdString(FormatTimecode(ticks));
}

/// A line break would be read back as a blank, and split the line, unless it is written as an entity.
QString AttributeText(const QString& text) {
  return text.toHtmlEscaped()
      .replace(QLatin1Char('\n'), QLatin1String("&#10;"))
      .replace(QLatin1Char('\r'), QLatin1String("&#13;"))
      .replace(QLatin1Char('\t'), QLatin1String("&#9;"));
}

}  // namespace

ExportPaths ExportPathsFor(const QString& supPath) {
  return ExportPathsForBase(supPath.chopped(qMin(ExtensionLength, supPath.size())));
}

ExportPaths ExportPathsForBase(const QString& base) {
  return {.Folder = base + QStringLiteral("_SubPng"), .List = base + QStringLiteral("_spu.xml")};
}

QString PictureName(std::int64_t startTicks) {
  QString name = TimeText(startTicks);
  name.replace(QLatin1Char(':'), QLatin1Char('+')).replace(QLatin1Char('.'), QLatin1Char('+'));
  return name + QStringLiteral(".png");
}

QString PicturePath(const QString& folder, const QString& name) {
  return folder + QDir::separator() + name;
}

QString XmlAttribute(const QString& name, const QString& value) {
  return name + QStringLiteral("=\"") + AttributeText(value) + QStringLiteral("\" ");
}

QString SpuLine(const SpuElement& element) {
  return QStringLiteral("    <spu ") + XmlAttribute(QStringLiteral("start"), element.Start) +
         (element.End.isEmpty() ? QString() : XmlAttribute(QStringLiteral("end"), element.End)) +
         XmlAttribute(QStringLiteral("image"), element.Image) +
         XmlAttribute(QStringLiteral("xoffset"), QString::number(element.X)) +
         XmlAttribute(QStringLiteral("yoffset"), QString::number(element.Y)) +
         (element.IsForced ? XmlAttribute(QStringLiteral("force"), QStringLiteral("yes")) : QString()) +
         QStringLiteral("/>\r\n");
}

QString SpuLine(std::int64_t startTicks, std::optional<std::int64_t> endTicks, const QString& picturePath,
                int x1, int y1) {
  return SpuLine({.Start = TimeText(startTicks),
                  .End = endTicks ? TimeText(*endTicks) : QString(),
                  .Image = picturePath,
                  .X = x1,
                  .Y = y1});
}

QString AuthoringTimeText(std::int64_t ticks) {
  constexpr std::int64_t PerSecond = 10000;
  constexpr std::int64_t TicksEach = TicksPerSecond / PerSecond;
  const std::int64_t time = (ticks + TicksEach / 2) / TicksEach;
  const auto digits = [](std::int64_t value, int count) {
    return QString::number(value).rightJustified(count, QLatin1Char('0'));
  };
  const std::int64_t seconds = time / PerSecond;
  return digits(seconds / 3600, 2) + QLatin1Char(':') + digits(seconds / 60 % 60, 2) + QLatin1Char(':') +
         digits(seconds % 60, 2) + QLatin1Char('.') + digits(time % PerSecond, 4);
}

Result<void> AppendSpuLine(const QString& listPath, const QString& line) {
  const QByteArray bytes = line.toUtf8();
  return AppendToFile(listPath, {reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                                 static_cast<std::size_t>(bytes.size())});
}

}  // namespace quillmark
