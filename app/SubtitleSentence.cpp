#include "app/SubtitleSentence.h"

#include <array>

#include <QStringList>

#include "app/Ui.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

/// "2.34 seconds", "2.5 seconds", "1 second".
QString Seconds(std::int64_t hundredths) {
  QString text = QString::number(hundredths / 100);
  if (const int rest = static_cast<int>(hundredths % 100); rest != 0) {
    text += '.' + QString::number(rest / 10);
    if (rest % 10 != 0) {
      text += QString::number(rest % 10);
    }
  }
  return Ui::Tr("%1 second", "%1 seconds", hundredths == 100 ? 1 : 2, {text});
}

QString Phrase(StreamProblemCode code) {
  return QString::fromStdString(ProblemPhrase(code));
}

}  // namespace

QString DurationInWords(std::int64_t ticks) {
  constexpr std::int64_t TicksPerHundredth = TicksPerSecond / 100;
  const std::int64_t hundredths =
      ticks / TicksPerHundredth + (ticks % TicksPerHundredth * 2 >= TicksPerHundredth ? 1 : 0);
  const std::int64_t hours = hundredths / 360'000;
  const std::int64_t minutes = hundredths / 6000 % 60;
  const std::int64_t seconds = hundredths % 6000;
  QStringList parts;
  if (hours > 0) {
    parts += Ui::Tr("%1 hour", "%1 hours", hours, {QString::number(hours)});
  }
  if (minutes > 0) {
    parts += Ui::Tr("%1 minute", "%1 minutes", minutes, {QString::number(minutes)});
  }
  if (seconds > 0 || parts.isEmpty()) {
    parts += Seconds(seconds);
  }
  return parts.join(' ');
}

QString TimeInWords(std::int64_t ticks) {
  QString text = QString::fromStdString(FormatTimecode(ticks));
  const qsizetype hours = text.startsWith('-') ? 1 : 0;
  if (text.at(hours) == '0' && text.at(hours + 1) != ':') {
    text.remove(hours, 1);
  }
  return text;
}

QString ProblemCountInWords(int count) {
  static constexpr std::array InWords = {Ui::Mark("no problems"),    Ui::Mark("one problem"),
                                         Ui::Mark("two problems"),   Ui::Mark("three problems"),
                                         Ui::Mark("four problems"),  Ui::Mark("five problems"),
                                         Ui::Mark("six problems"),   Ui::Mark("seven problems"),
                                         Ui::Mark("eight problems"), Ui::Mark("nine problems")};
  return count >= 0 && count < static_cast<int>(InWords.size())
             ? Ui::Tr(InWords[static_cast<std::size_t>(count)])
             : Ui::Tr("%1 problems", {QString::number(count)});
}

QString SubtitleSentence(const SpokenSubtitle& subtitle) {
  QStringList parts = {Ui::Tr("Subtitle %1", {QString::number(subtitle.Number)}),
                       TimeInWords(subtitle.StartTicks)};
  if (subtitle.Marks.Has(PacketTrait::Invalid)) {
    parts += Ui::Tr("cannot be shown");
  } else if (subtitle.DurationTicks && *subtitle.DurationTicks >= 0) {
    parts += DurationInWords(*subtitle.DurationTicks);
  }
  if (subtitle.Marks.Has(PacketTrait::Forced)) {
    parts += Ui::Tr("forced");
  }
  if (subtitle.Marks.Has(PacketTrait::Animated)) {
    parts += Ui::Tr("animated");
  }
  if (subtitle.OverNumber) {
    parts += Ui::Tr("under subtitle %1 of the second stream").arg(*subtitle.OverNumber);
  }
  if (subtitle.Marks.HasProblems()) {
    QStringList phrases;
    for (const StreamProblemCode code : subtitle.Marks.Problems()) {
      phrases += Phrase(code);
    }
    parts += ProblemCountInWords(subtitle.Marks.ProblemCount()) + ": " + phrases.join(QStringLiteral(", "));
  }
  return parts.join(QStringLiteral(", "));
}

QString DamageSentence(std::size_t index, std::size_t packets, StreamProblemCode code) {
  QString place = Ui::Tr("Between subtitles %1 and %2").arg(index).arg(index + 1);
  if (packets == 0) {
    place = Ui::Tr("Without a subtitle");
  } else if (index == 0) {
    place = Ui::Tr("Before subtitle 1");
  } else if (index >= packets) {
    place = Ui::Tr("After subtitle %1").arg(packets);
  }
  return place + ", " + ProblemCountInWords(1) + ": " + Phrase(code);
}

}  // namespace quillmark
