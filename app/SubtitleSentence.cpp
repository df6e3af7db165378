#include "app/SubtitleSentence.h"

#include <array>

#include <QStringList>

#include "sup/Timecode.h"

namespace quillmark {
namespace {

QString Counted(std::int64_t count, const QString& unit) {
  return QString::number(count) + ' ' + unit + (count == 1 ? "" : "s");
}

/// "2.34", "2.5", "2".
QString Seconds(std::int64_t hundredths) {
  QString text = QString::number(hundredths / 100);
  if (const int rest = static_cast<int>(hundredths % 100); rest != 0) {
    text += '.' + QString::number(rest / 10);
    if (rest % 10 != 0) {
      text += QString::number(rest % 10);
    }
  }
  return text + (hundredths == 100 ? " second" : " seconds");
}

QString Phrase(StreamProblemCode code) {
  const std::string_view phrase = ProblemPhrase(code);
  return QString::fromLatin1(phrase.data(), static_cast<qsizetype>(phrase.size()));
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
    parts += Counted(hours, QStringLiteral("hour"));
  }
  if (minutes > 0) {
    parts += Counted(minutes, QStringLiteral("minute"));
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
  static constexpr std::array Words = {"no",   "one", "two",   "three", "four",
                                       "five", "six", "seven", "eight", "nine"};
  const bool hasWord = count >= 0 && count < static_cast<int>(Words.size());
  return (hasWord ? QString::fromLatin1(Words[static_cast<std::size_t>(count)]) : QString::number(count)) +
         (count == 1 ? " problem" : " problems");
}

QString SubtitleSentence(const SpokenSubtitle& subtitle) {
  QStringList parts = {QStringLiteral("Subtitle ") + QString::number(subtitle.Number),
                       TimeInWords(subtitle.StartTicks)};
  if (subtitle.Marks.Has(PacketTrait::Invalid)) {
    parts += QStringLiteral("cannot be shown");
  } else if (subtitle.DurationTicks && *subtitle.DurationTicks >= 0) {
    parts += DurationInWords(*subtitle.DurationTicks);
  }
  if (subtitle.Marks.Has(PacketTrait::Forced)) {
    parts += QStringLiteral("forced");
  }
  if (subtitle.Marks.Has(PacketTrait::Animated)) {
    parts += QStringLiteral("animated");
  }
  if (subtitle.OverNumber) {
    parts += QStringLiteral("under subtitle %1 of the second stream").arg(*subtitle.OverNumber);
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
  QString place = QStringLiteral("Between subtitles %1 and %2").arg(index).arg(index + 1);
  if (packets == 0) {
    place = QStringLiteral("Without a subtitle");
  } else if (index == 0) {
    place = QStringLiteral("Before subtitle 1");
  } else if (index >= packets) {
    place = QStringLiteral("After subtitle %1").arg(packets);
  }
  return place + ", " + ProblemCountInWords(1) + ": " + Phrase(code);
}

}  // namespace quillmark
