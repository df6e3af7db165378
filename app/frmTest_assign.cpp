#include <QComboBox>
#include <QLineEdit>

#include "app/Dialogs.h"
#include "app/ImageList.h"
#include "app/PaletteSwatch.h"
#include "app/frmTest.h"
#include "sup/CodeAssignment.h"

namespace quillmark {
namespace {

QString LossWarning(const QString& firstLine) {
  return firstLine + QStringLiteral(
                         "\r\nThis information will be lost,"
                         "\r\nif the Set All option is used!"
                         "\r\nContinue?");
}

}  // namespace

void frmTest::CodeListChanged() {
  if (!filling_) {
    RefreshCodeColours();
  }
}

void frmTest::RefreshCodeColours() {
  const std::int64_t index = SubtitleNumber() - 1;
  if (!ShowsSubtitle() || !primary_.Holds(index)) {
    return;
  }
  const CodeNibbles colours = ChosenColours();
  const CodeNibbles contrasts = ChosenContrasts();
  for (std::size_t code = 0; code < 4; ++code) {
    codeColours_[code] = GetARGBColor(Label1[colours[code]]->Colour(), contrasts[code]);
  }
  RenderSubtitle(UnitOf(primary_, index, unit_).Bytes);
}

void frmTest::Command_SetActual_Click() {
  if (!ShowsSubtitle()) {
    return;
  }
  const std::int64_t index = SubtitleNumber() - 1;
  AssignCodes(primary_, index, index + 1, {.Colours = ChosenColours(), .Contrasts = ChosenContrasts()});
}

void frmTest::Command_SetAll_Click() {
  if (primary_.Stats.MultipleColours &&
      !ConfirmWarning(this, LossWarning(QStringLiteral("The subtitles use different colors.")))) {
    return;
  }
  if (primary_.Stats.MultipleOpacities &&
      !ConfirmWarning(this, LossWarning(QStringLiteral("The subtitles use different opacities.")))) {
    return;
  }
  AssignCodes(primary_, 0, primary_.Count, {.Colours = ChosenColours(), .Contrasts = ChosenContrasts()});
}

CodeNibbles frmTest::ChosenColours() const {
  CodeNibbles colours{};
  const auto lists = ColourLists();
  for (std::size_t code = 0; code < 4; ++code) {
    colours[code] =
        static_cast<std::uint8_t>(EntryOfKey(lists[code]->currentData(ImageList::KeyRole).toString()));
  }
  return colours;
}

CodeNibbles frmTest::ChosenContrasts() const {
  CodeNibbles contrasts{};
  for (std::size_t code = 0; code < 4; ++code) {
    contrasts[code] = static_cast<std::uint8_t>(Combo1[code]->currentText().toUInt(nullptr, 16));
  }
  return contrasts;
}

}  // namespace quillmark
