#include "render/ContactSheet.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include <QDir>
#include <QFileInfo>
#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QPainter>

#include "base/Words.h"
#include "render/Composition.h"
#include "render/PictureBatch.h"
#include "render/SubtitleDescription.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

constexpr int Columns = 4;
constexpr int Rows = SubtitlesAPage / Columns;
constexpr int Margin = 24;
constexpr int Gap = 16;
constexpr int CaptionHeight = 26;
constexpr int CaptionSize = 17;
constexpr int FooterHeight = 32;
constexpr int CellWidth = FrameWidth / 2;
constexpr int PageWidth = 2 * Margin + Columns * CellWidth + (Columns - 1) * Gap;
constexpr QRgb Paper = 0xFFFFFFFF;
constexpr QRgb Ink = 0xFF202020;
constexpr QRgb FaintInk = 0xFF707070;

std::size_t PageCount(std::size_t subtitles) {
  return (subtitles + SubtitlesAPage - 1) / SubtitlesAPage;
}

/// Names of the pages, in the folder of the base path.
std::vector<QString> PageNames(const QString& basePath, std::size_t pages) {
  const QString ending = QStringLiteral(".png");
  QString base = QFileInfo(basePath).fileName();
  if (base.size() > ending.size() && base.endsWith(ending, Qt::CaseInsensitive)) {
    base.chop(ending.size());
  }
  std::vector<QString> names;
  for (std::size_t page = 1; page <= pages; ++page) {
    names.push_back(base + QLatin1Char('_') + QString::number(page).rightJustified(3, QLatin1Char('0')) +
                    ending);
  }
  return names;
}

std::vector<QString> InFolderOf(const QString& basePath, const std::vector<QString>& names) {
  const QDir folder(QFileInfo(basePath).path());
  std::vector<QString> paths;
  std::ranges::transform(names, std::back_inserter(paths),
                         [&](const QString& name) { return folder.filePath(name); });
  return paths;
}

/// Draws one page after the other.
class PagePainter {
 public:
  PagePainter(const SupStream& stream, const ContactSheetOptions& options, std::size_t pages)
      : stream_(stream), options_(options), pages_(pages) {
    caption_.setPixelSize(CaptionSize);
    number_ = caption_;
    number_.setBold(true);
  }

  void Begin() {
    const int cells = Rows * CellHeight() + (Rows - 1) * Gap;
    page_ = QImage(PageWidth, 2 * Margin + cells + FooterHeight, QImage::Format_RGB32);
    page_.fill(Paper);
    place_ = 0;
    ++pageNumber_;
  }

  [[nodiscard]] bool IsFull() const { return place_ == SubtitlesAPage; }

  void Add(std::size_t index) {
    const QPoint corner(Margin + place_ % Columns * (CellWidth + Gap),
                        Margin + place_ / Columns * (CellHeight() + Gap));
    ++place_;
    const SubtitleUnit unit = UnitOf(stream_, index, buffer_);
    const auto description = DescribeSubtitle(unit);
    frame_.DrawBackground(options_.FrameHeight, {}, nullptr);
    if (description) {
      const SpuControl& control = description->Control;
      cBitmap picture;
      DecodePicture(unit.Bytes, control, MakeCodeColours(options_.Palette, control), picture);
      if (picture.Width() > 0) {
        frame_.Draw(picture, control.X1, control.Y1, nullptr);
      }
    }
    QPainter painter(&page_);
    painter.drawImage(corner + QPoint(0, CaptionHeight), HalfFrame());
    DrawCaption(painter, QRect(corner, QSize(CellWidth, CaptionHeight)), index + 1, unit.StartTime,
                description);
  }

  /// The page that was begun.
  [[nodiscard]] QImage Take() {
    QPainter painter(&page_);
    painter.setFont(caption_);
    painter.setPen(QColor(FaintInk));
    const QString text = QStringLiteral("%1 / %2").arg(pageNumber_).arg(pages_);
    painter.drawText(QRect(0, page_.height() - Margin - FooterHeight, PageWidth, FooterHeight + Margin),
                     Qt::AlignCenter, text);
    painter.end();
    return std::exchange(page_, {});
  }

 private:
  [[nodiscard]] int CellHeight() const { return CaptionHeight + options_.FrameHeight / 2; }

  [[nodiscard]] QImage HalfFrame() const {
    return frame_.Image()
        .copy(0, 0, FrameWidth, options_.FrameHeight)
        .scaled(CellWidth, options_.FrameHeight / 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  }

  void DrawCaption(QPainter& painter, const QRect& area, std::size_t number, std::int64_t start,
                   const std::optional<SubtitleDescription>& description) const {
    std::string times = FormatTimecode(start);
    if (!description) {
      times += "  " + Words::Tr("cannot be converted");
    } else if (description->EndTicks) {
      times += " - " + FormatTimecode(*description->EndTicks);
    }
    painter.setFont(number_);
    painter.setPen(QColor(Ink));
    painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter, QString::number(number));
    painter.setFont(caption_);
    painter.drawText(area, Qt::AlignRight | Qt::AlignVCenter, QString::fromStdString(times));
  }

  const SupStream& stream_;
  const ContactSheetOptions& options_;
  std::size_t pages_;
  std::size_t pageNumber_ = 0;
  QFont caption_ = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
  QFont number_;
  FramePicture frame_;
  QImage page_;
  int place_ = 0;
  std::vector<std::uint8_t> buffer_;
};

}  // namespace

std::vector<QString> ContactSheetPaths(const QString& basePath, const SupStream& stream,
                                       const SubtitleSet& only) {
  const auto subtitles =
      static_cast<std::size_t>(only.SizeWithin(static_cast<std::int64_t>(stream.PacketOffset.size())));
  return InFolderOf(basePath, PageNames(basePath, PageCount(subtitles)));
}

Result<ContactSheetResult> WriteContactSheet(const SupStream& stream, const QString& basePath,
                                             const ContactSheetOptions& options, const Progress& progress) {
  if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr) {
    return Failure{Words::Tr("text cannot be drawn without a display")};
  }
  std::vector<std::size_t> indexes;
  options.Only.ForEachIndex(stream.PacketOffset.size(), [&](std::size_t index) { indexes.push_back(index); });
  const std::vector<QString> names = PageNames(basePath, PageCount(indexes.size()));
  if (options.Existing == Overwriting::Refused) {
    if (const auto free = RefuseExisting(InFolderOf(basePath, names)); !free) {
      return free.Why();
    }
  }
  auto staged = StagedFiles::In(QFileInfo(basePath).path());
  if (!staged) {
    return staged.Why();
  }
  PagePainter painter(stream, options, names.size());
  PictureBatch pages;
  for (std::size_t i = 0; i < indexes.size(); ++i) {
    if (progress && !progress(i, indexes.size())) {
      return ContactSheetResult{.How = Completion::Cancelled};
    }
    if (i % SubtitlesAPage == 0) {
      painter.Begin();
    }
    painter.Add(indexes[i]);
    if (painter.IsFull() || i + 1 == indexes.size()) {
      pages.Add(staged->PathOf(names[i / SubtitlesAPage]), cBitmap(painter.Take()));
    }
  }
  pages.Flush();
  if (const ExportFailures& failures = pages.Failures(); failures.Count > 0) {
    return Failure{staged->NameOf(failures.FirstPath).toStdString() + ": " + failures.FirstReason};
  }
  if (progress && !progress(indexes.size(), indexes.size())) {
    return ContactSheetResult{.How = Completion::Cancelled};
  }
  if (const auto placed = staged->TakePlaces(options.Existing); !placed) {
    return placed.Why();
  }
  return ContactSheetResult{.Subtitles = static_cast<std::int64_t>(indexes.size()), .Pages = pages.Count()};
}

}  // namespace quillmark
