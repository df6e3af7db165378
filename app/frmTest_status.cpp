#include <variant>

#include <QFileInfo>
#include <QPalette>
#include <QPushButton>
#include <QStatusTipEvent>

#include "app/CountText.h"
#include "app/Document.h"
#include "app/StatusLine.h"
#include "app/Ui.h"
#include "app/frmTest.h"

namespace quillmark {
namespace {

/// Black or white, whichever is read better on a button of this colour; styles make the upper half lighter.
QColor TextOn(const QColor& ground) {
  return qGray(ground.lighter(120).rgb()) > 127 ? Qt::black : Qt::white;
}

}  // namespace

void frmTest::ConnectStatus() {
  connect(document_, &Document::NumberChanged, this, &frmTest::ShowPlace);
  connect(document_, &Document::CommandsChanged, this, &frmTest::ShowPlace);
  connect(document_, &Document::SubtitleShown, this, &frmTest::UpdateCommands);
  connect(document_, &Document::NumberChanged, this, &frmTest::UpdateCommands);
  connect(document_, &Document::AboutToEdit, this, [this](const DocumentEdit& edit) {
    if (std::holds_alternative<DvdPalette>(edit.What)) {
      Tell(Ui::Tr("A SUP file holds no palette: Save Palette keeps this one"));
    }
  });
}

void frmTest::Tell(const QString& text) {
  status_->Tell(text);
}

bool frmTest::event(QEvent* event) {
  if (event->type() == QEvent::PaletteChange) {
    KeepHintsReadable();
  }
  if (event->type() == QEvent::StatusTip) {
    // An empty one comes from every menu entry that has none, and is no reason to take away what was told.
    status_->ShowTip(static_cast<QStatusTipEvent*>(event)->tip());
    return true;
  }
  return QMainWindow::event(event);
}

void frmTest::KeepHintsReadable() {
  constexpr int Half = 128;
  QColor hint = palette().color(QPalette::Text);
  hint.setAlpha(Half);
  if (palette().color(QPalette::PlaceholderText) != hint) {
    QPalette own;
    own.setColor(QPalette::PlaceholderText, hint);
    setPalette(own);
  }
}

void frmTest::ShowPlace() {
  const std::int64_t count = document_->Primary().Count;
  if (count < 1) {
    status_->ShowPlace({});
    return;
  }
  const QString number = document_->HasSubtitle() ? CountText(document_->Number()) : document_->NumberText();
  status_->ShowPlace(Ui::Tr("%1 of %2", {number, CountText(count)}));
}

void frmTest::ShowPreviewMark() {
  const bool isPreview = document_->IsPreview();
  if (!status_->ShowPreviewMark(isPreview)) {
    return;
  }
  for (QPushButton* button : {Command_SetActual, Command_SetAll}) {
    QPalette colours;
    if (isPreview) {
      for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        const QColor ground = palette().color(group, QPalette::Highlight);
        colours.setColor(group, QPalette::Button, ground);
        colours.setColor(group, QPalette::ButtonText, TextOn(ground));
      }
    }
    button->setPalette(colours);
  }
}

void frmTest::TellSaved(const QString& path, std::int64_t subtitles, std::int64_t bytes) {
  const QFileInfo file(path);
  const QString name = file.fileName();
  const auto sizeOf = [](std::int64_t count) {
    return TextLocale().formattedDataSize(count, 1, QLocale::DataSizeSIFormat);
  };
  const QString size = sizeOf(bytes);
  const QString told = subtitles > 0 ? Ui::Tr("Saved %1, %n subtitle, %2", "Saved %1, %n subtitles, %2",
                                              subtitles, {name, size})
                                     : Ui::Tr("Saved %1, %2", {name, size});
  const std::int64_t tail = file.size() - bytes;
  Tell(tail > 0 ? Ui::Tr("%1; %2 of the longer old file still follow", {told, sizeOf(tail)}) : told);
}

}  // namespace quillmark
