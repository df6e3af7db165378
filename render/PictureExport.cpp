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

/// name="value" and a blank.
QString Attribute(const QString& name, const QString& value) {
  return name + QStringLiteral("=\"") + value + QStringLiteral("\" ");
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

QString SpuLine(std::int64_t startTicks, std::optional<std::int64_t> endTicks, const QString& picturePath,
                int x1, int y1) {
  return QStringLiteral("    <spu ") + Attribute(QStringLiteral("start"), TimeText(startTicks)) +
         (endTicks ? Attribute(QStringLiteral("end"), TimeText(*endTicks)) : QString()) +
         Attribute(QStringLiteral("image"), AttributeText(picturePath)) +
         Attribute(QStringLiteral("xoffset"), QString::number(x1)) +
         Attribute(QStringLiteral("yoffset"), QString::number(y1)) + QStringLiteral("/>\r\n");
}

Result<void> AppendSpuLine(const QString& listPath, const QString& line) {
  const QByteArray bytes = line.toUtf8();
  return AppendToFile(listPath, {reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                                 static_cast<std::size_t>(bytes.size())});
}

}  // namespace quillmark
