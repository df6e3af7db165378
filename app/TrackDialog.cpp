#include "app/TrackDialog.h"

#include <algorithm>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableWidget>
#include <QVBoxLayout>

#include "app/CountText.h"
#include "app/ImportJob.h"
#include "app/PaletteStrip.h"
#include "app/PathText.h"
#include "app/Ui.h"
#include "render/SubtitleDescription.h"
#include "render/Thumbnail.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

struct TrackColumns {
  enum Column { Number, Language, Name, Count, First, Last, Colours, Picture, Columns };
};

// In logical pixels.
constexpr QSize PictureRoom(280, 40);
constexpr int RowHeight = 46;
constexpr int BetweenColumns = 12;
constexpr int WidestColumn = 320;  ///< names may be of any length

constexpr int MostRows = 8;    ///< in sight at once
constexpr int NotesLines = 4;  ///< the same

/// Of the first subtitle in which anything is to be seen; null where there is none.
QImage FirstPicture(const SupStream& stream, const DvdPalette& palette, double scale) {
  ThumbnailPainter painter;
  std::vector<std::uint8_t> buffer;
  for (std::size_t index = 0; stream.Holds(index); ++index) {
    const SubtitleUnit unit = UnitOf(stream, index, buffer);
    const auto described = DescribeSubtitle(unit);
    if (!described) {
      continue;
    }
    QImage picture =
        painter.Paint(unit.Bytes, described->Control, MakeCodeColours(palette, described->Control),
                      {.Pixels = (QSizeF(PictureRoom) * scale).toSize(), .Scale = scale});
    if (!picture.isNull()) {
      return picture;
    }
  }
  return {};
}

QString TimeText(const std::vector<std::int64_t>& starts, bool last) {
  return starts.empty() ? QString()
                        : QString::fromStdString(FormatTimecode(last ? starts.back() : starts.front()));
}

}  // namespace

TrackDialog::TrackDialog(const QString& name, const ImportedFile& file, const DvdPalette& present,
                         QWidget* parent)
    : QDialog(parent), file_(file), present_(present) {
  setObjectName(QStringLiteral("TrackDialog"));
  setWindowTitle(Ui::Tr("Import subtitles"));
  auto* rows = new QVBoxLayout(this);
  auto* label =
      new QLabel(Ui::Tr("&Tracks of %1", {CutInTheMiddle(name).replace(u'&', QStringLiteral("&&"))}), this);
  rows->addWidget(label);
  BuildList(name);
  label->setBuddy(List_Tracks);
  rows->addWidget(List_Tracks);

  Text_Notes = new QPlainTextEdit(this);
  Text_Notes->setObjectName(QStringLiteral("Text_Notes"));
  Text_Notes->setAccessibleName(Ui::Tr("What was noted in reading"));
  Text_Notes->setReadOnly(true);
  Text_Notes->setTabChangesFocus(true);
  Text_Notes->setMaximumHeight((NotesLines + 1) * fontMetrics().lineSpacing());
  rows->addWidget(Text_Notes);

  Combo_Second = new QComboBox(this);
  Combo_Second->setObjectName(QStringLiteral("Combo_Second"));
  Combo_Second->setToolTip(Ui::Tr("As Load/Merge secondary SUP does with a file"));
  auto* second = new QFormLayout;
  second->addRow(Ui::Tr("&Merge with"), Combo_Second);
  rows->addLayout(second);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  auto* open = buttons->addButton(Ui::Tr("&Open"), QDialogButtonBox::AcceptRole);
  open->setObjectName(QStringLiteral("Command_Open"));
  open->setDefault(true);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  rows->addWidget(buttons);

  connect(List_Tracks, &QTableWidget::currentCellChanged, this, &TrackDialog::ShowTrack);
  connect(List_Tracks, &QTableWidget::cellDoubleClicked, this, &QDialog::accept);
  List_Tracks->setCurrentCell(0, TrackColumns::Number);
  List_Tracks->setFocus();
  resize(minimumSizeHint());
}

void TrackDialog::BuildList(const QString& name) {
  const auto count = static_cast<int>(file_.Tracks.size());
  List_Tracks = new QTableWidget(count, TrackColumns::Columns, this);
  List_Tracks->setObjectName(QStringLiteral("List_Tracks"));
  List_Tracks->setAccessibleName(Ui::Tr("Tracks of %1", {name}));
  List_Tracks->setHorizontalHeaderLabels({Ui::Tr("Track"), Ui::Tr("Language"), Ui::Tr("Name"),
                                          Ui::Tr("Subtitles"), Ui::Tr("First"), Ui::Tr("Last"),
                                          Ui::Tr("Palette"), Ui::Tr("First picture")});
  List_Tracks->setSelectionBehavior(QAbstractItemView::SelectRows);
  List_Tracks->setSelectionMode(QAbstractItemView::SingleSelection);
  List_Tracks->setEditTriggers(QAbstractItemView::NoEditTriggers);
  List_Tracks->setTabKeyNavigation(false);
  List_Tracks->setShowGrid(false);
  List_Tracks->setWordWrap(false);
  List_Tracks->setCornerButtonEnabled(false);
  List_Tracks->setIconSize(PictureRoom);
  List_Tracks->verticalHeader()->setDefaultSectionSize(RowHeight);
  List_Tracks->verticalHeader()->hide();
  List_Tracks->horizontalHeader()->setHighlightSections(false);
  List_Tracks->horizontalHeader()->setStretchLastSection(true);
  List_Tracks->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  for (int row = 0; row < count; ++row) {
    FillRow(row);
  }
  List_Tracks->setColumnHidden(
      TrackColumns::Name,
      std::ranges::all_of(file_.Tracks, [](const ImportedTrack& track) { return track.What.Name.empty(); }));
  FitList();
}

void TrackDialog::FillRow(int row) {
  const ImportedTrack& track = file_.Tracks[static_cast<std::size_t>(row)];
  const SupStream& stream = track.Loaded.Stream;
  const auto set = [&](TrackColumns::Column column, const QString& text) {
    List_Tracks->setItem(row, column, new QTableWidgetItem(text));
  };
  set(TrackColumns::Number, CountText(row + 1));
  List_Tracks->item(row, TrackColumns::Number)
      ->setToolTip(Ui::Tr("In the file: %1", {QString::fromStdString(track.What.Id)}));
  set(TrackColumns::Language, LanguageText(track.What.Language));
  set(TrackColumns::Name, QString::fromStdString(track.What.Name));
  List_Tracks->item(row, TrackColumns::Name)
      ->setToolTip(List_Tracks->item(row, TrackColumns::Name)->text().toHtmlEscaped());
  set(TrackColumns::Count, CountText(stream.Count));
  set(TrackColumns::First, TimeText(stream.StartTime, false));
  set(TrackColumns::Last, TimeText(stream.StartTime, true));
  const double scale = devicePixelRatioF();
  if (track.What.Palette) {
    const QPixmap swatches = DrawSwatches(*track.What.Palette, palette().color(QPalette::Mid), scale);
    SetPicture(row, TrackColumns::Colours, Untinted(swatches), PaletteText(*track.What.Palette));
  } else {
    set(TrackColumns::Colours, Ui::Tr("none"));
    List_Tracks->item(row, TrackColumns::Colours)->setToolTip(Ui::Tr("The present palette would stay"));
  }
  const QImage picture = FirstPicture(stream, track.What.Palette.value_or(present_), scale);
  if (picture.isNull()) {
    set(TrackColumns::Picture, Ui::Tr("none"));
  } else {
    SetPicture(row, TrackColumns::Picture, Untinted(QPixmap::fromImage(picture)),
               Ui::Tr("its first picture"));
  }
}

void TrackDialog::SetPicture(int row, int column, const QIcon& picture, const QString& said) {
  auto* item = new QTableWidgetItem(picture, QString());
  item->setData(Qt::AccessibleTextRole, said);
  List_Tracks->setItem(row, column, item);
}

/// As wide as its columns and as high as its rows, unless these are many.
void TrackDialog::FitList() {
  List_Tracks->resizeColumnsToContents();
  QHeaderView& columns = *List_Tracks->horizontalHeader();
  for (int column = 0; column < TrackColumns::Columns; ++column) {
    columns.resizeSection(column, std::min(columns.sectionSize(column) + BetweenColumns, WidestColumn));
  }
  const int frame = 2 * List_Tracks->frameWidth();
  const int rows = std::min(List_Tracks->rowCount(), MostRows);
  List_Tracks->setMinimumWidth(columns.length() + frame +
                               List_Tracks->verticalScrollBar()->sizeHint().width());
  List_Tracks->setMinimumHeight(columns.sizeHint().height() + rows * RowHeight + frame);
}

void TrackDialog::ShowTrack() {
  const ImportedTrack& track = file_.Tracks[Choice().Track];
  const QString notes = NotesOf(file_, track);
  Text_Notes->setPlainText(notes);
  Text_Notes->setVisible(!notes.isEmpty());
  FillSecond();
}

/// Every track but the one that is to be opened; what was chosen stays where it can.
void TrackDialog::FillSecond() {
  const TrackChoice choice = Choice();
  Combo_Second->clear();
  Combo_Second->addItem(Ui::Tr("no other track"), -1);
  for (std::size_t i = 0; i < file_.Tracks.size(); ++i) {
    if (i != choice.Track) {
      const ImportedTrack& track = file_.Tracks[i];
      Combo_Second->addItem(CountText(static_cast<std::int64_t>(i) + 1) + QStringLiteral(": ") +
                                LanguageText(track.What.Language) + QStringLiteral(", ") +
                                SubtitlesText(track.Loaded.Stream.Count),
                            static_cast<int>(i));
    }
  }
  const int kept = choice.Second ? Combo_Second->findData(static_cast<int>(*choice.Second)) : 0;
  Combo_Second->setCurrentIndex(std::max(kept, 0));
}

TrackChoice TrackDialog::Choice() const {
  const int second = Combo_Second->count() == 0 ? -1 : Combo_Second->currentData().toInt();
  return {.Track = static_cast<std::size_t>(std::max(List_Tracks->currentRow(), 0)),
          .Second = second < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(second))};
}

}  // namespace quillmark
