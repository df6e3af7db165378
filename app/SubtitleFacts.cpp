#include "app/SubtitleFacts.h"

#include "app/Document.h"
#include "sup/ChooseSecondary.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

const QString& Unknown() {
  static const QString text = QStringLiteral("???");
  return text;
}

QString TwoNumbers(int first, const QString& between, int second) {
  return QString::number(first) + between + QString::number(second);
}

}  // namespace

QString SubtitleFacts::NumberText() const {
  const QString number = QString::number(Index + 1);
  return Over ? number + QStringLiteral(" + ") + QString::number(*Over + 1) : number;
}

QString SubtitleFacts::StartText() const {
  return QString::fromStdString(FormatTimecode(StartTicks));
}

QString SubtitleFacts::EndText() const {
  if (!Described) {
    return {};
  }
  return Described->EndTicks ? QString::fromStdString(FormatTimecode(*Described->EndTicks)) : Unknown();
}

QString SubtitleFacts::DurationText() const {
  if (!Described) {
    return {};
  }
  return Described->DurationMs ? QString::fromStdString(FormatSeconds(*Described->DurationMs)) : Unknown();
}

QString SubtitleFacts::PlaceText() const {
  return Described ? TwoNumbers(Described->Control.X1, QStringLiteral(", "), Described->Control.Y1)
                   : QString();
}

QString SubtitleFacts::SizeText() const {
  return Described ? TwoNumbers(Described->Control.Width(), QStringLiteral("x"), Described->Control.Height())
                   : QString();
}

QString SubtitleFacts::CodesText() const {
  if (!Described) {
    return {};
  }
  QString text;
  const auto append = [&text](const std::array<int, 4>& nibbles) {
    for (const int nibble : nibbles) {
      text += QString::number(nibble, 16).toUpper();
    }
  };
  append(Described->Control.Colour);
  text += u' ';
  append(Described->Control.Contrast);
  return text;
}

SubtitleFacts FactsOf(const Document& document, std::size_t index, std::vector<std::uint8_t>& buffer) {
  const auto over = SecondaryOver(document, index);
  const SubtitleUnit unit =
      over ? UnitForMerging(document.Primary(), index, buffer) : UnitOf(document.Primary(), index, buffer);
  return {.Index = index, .StartTicks = unit.StartTime, .Described = DescribeSubtitle(unit), .Over = over};
}

std::optional<std::size_t> SecondaryOver(const Document& document, std::size_t index) {
  const bool merges = document.IsMerging() && document.Secondary().Count >= 1;
  return merges ? ChooseSecondary(document.Primary(), index, document.Secondary()) : std::nullopt;
}

}  // namespace quillmark
