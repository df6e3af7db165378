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

/// An edit that was made of a stream fits it.
void Apply(SupStream& stream, StreamEdit edit) {
  static_cast<void>(ApplyEdit(stream, edit));
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
  const auto number = static_cast<std::size_t>(std::max<std::int64_t>(SubtitleNumber(), 0));
  Apply(primary_, AssignCodes(primary_, number - 1, number, ChosenCodes()));
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
  Apply(primary_, AssignCodes(primary_, 0, static_cast<std::size_t>(primary_.Count), ChosenCodes()));
}

CodeAssignment frmTest::ChosenCodes() const {
  return {.Colours = AllFour(ChosenColours()), .Contrasts = AllFour(ChosenContrasts())};
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
