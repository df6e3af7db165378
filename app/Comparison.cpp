#include "app/Comparison.h"

#include <new>
#include <utility>

#include <QStringList>

#include "app/CountText.h"
#include "app/HourglassPointer.h"
#include "app/Ui.h"
#include "base/Words.h"
#include "sup/HeldUnit.h"

namespace quillmark {
namespace {

/// "3 moved in time", "2 with other pixels".
QString CountedDifference(std::int64_t count, SubtitleDifference difference) {
  const QString number = CountText(count);
  switch (difference) {
    case SubtitleDifference::Missing:
      return Ui::Tr("%1 missing", {number});
    case SubtitleDifference::Added:
      return Ui::Tr("%1 added", {number});
    case SubtitleDifference::Validity:
      return Ui::Tr("%1 where only one of the two can be shown", {number});
    case SubtitleDifference::Start:
      return Ui::Tr("%1 moved in time", {number});
    case SubtitleDifference::Duration:
      return Ui::Tr("%1 with other duration", {number});
    case SubtitleDifference::Place:
      return Ui::Tr("%1 moved in place", {number});
    case SubtitleDifference::Size:
      return Ui::Tr("%1 with other size", {number});
    case SubtitleDifference::Colours:
      return Ui::Tr("%1 with other colours", {number});
    case SubtitleDifference::Opacities:
      return Ui::Tr("%1 with other opacities", {number});
    case SubtitleDifference::Forced:
      return Ui::Tr("%1 with other forced flag", {number});
    case SubtitleDifference::Pixels:
      return Ui::Tr("%1 with other pixels", {number});
    case SubtitleDifference::Bytes:
      return Ui::Tr("%1 the same, otherwise written", {number});
  }
  return {};
}

}  // namespace

ComparedRow::ComparedRow(const ComparedPair& pair)
    : here_(pair.Pair.First ? static_cast<std::uint32_t>(*pair.Pair.First) : None),
      there_(pair.Pair.Second ? static_cast<std::uint32_t>(*pair.Pair.Second) : None),
      otherPixels_(static_cast<std::uint32_t>(pair.OtherPixels)) {
  for (const SubtitleDifference difference : pair.Differences) {
    differences_ |= 1U << static_cast<unsigned>(difference);
  }
}

QString ComparedRow::Words() const {
  QStringList phrases;
  for (unsigned difference = 0; difference < SubtitleDifferences; ++difference) {
    if ((differences_ >> difference & 1U) != 0) {
      phrases.append(QString::fromStdString(
          DifferencePhrase(static_cast<SubtitleDifference>(difference), std::int64_t{otherPixels_})));
    }
  }
  return phrases.join(QStringLiteral(", "));
}

Comparison::Comparison(const Document& document, QObject* parent) : QObject(parent), document_(document) {
  connect(&document, &Document::StreamChanged, this, [this](StreamChange what) {
    if (what == StreamChange::Stream) {
      Close();
    } else {
      MakeAnewLater();
    }
  });
  connect(&document, &Document::MergeChanged, this, [this] {
    if (document_.IsMerging()) {
      Close();
    }
  });
}

Result<void> Comparison::Open(SupStream other, const QString& name) {
  other_ = std::move(other);
  otherName_ = name;
  isOpen_ = true;
  Result<void> made = Make();
  if (!made) {
    Close();
    return made;
  }
  emit Changed();
  return {};
}

void Comparison::Close() {
  if (!std::exchange(isOpen_, false)) {
    return;
  }
  other_ = {};
  rows_ = {};
  rowOf_ = {};
  emit Changed();
}

/// One command may consist of several edits.
void Comparison::MakeAnewLater() {
  if (!isOpen_ || std::exchange(isStale_, true)) {
    return;
  }
  QMetaObject::invokeMethod(
      this,
      [this] {
        isStale_ = false;
        if (!isOpen_) {
          return;
        }
        if (const Result<void> made = Make(); !made) {
          Close();
          emit Failed(QString::fromStdString(made.Reason()));
          return;
        }
        emit Changed();
      },
      Qt::QueuedConnection);
}

Result<void> Comparison::Make() {
  const HourglassPointer hourglass;
  try {
    rows_.clear();
    rowOf_.assign(SubtitleCount(document_.Primary()), 0);
    counts_ = {};
    CompareStreams(document_.Primary(), other_, [this](const ComparedPair& pair) {
      if (pair.Pair.First) {
        rowOf_[*pair.Pair.First] = static_cast<std::uint32_t>(rows_.size());
      }
      rows_.emplace_back(pair);
      counts_.Add(pair);
    });
    hasSameTrailingBytes_ = HaveSameTrailingBytes(document_.Primary(), other_);
    return {};
  } catch (const std::bad_alloc&) {
    return Failure{Words::Tr("there is not enough memory")};
  }
}

std::optional<std::size_t> Comparison::RowOf(std::size_t index) const {
  return index < rowOf_.size() ? std::optional<std::size_t>(rowOf_[index]) : std::nullopt;
}

QString Comparison::WordsOf(std::size_t index) const {
  const auto row = RowOf(index);
  return row ? rows_[*row].Words() : QString();
}

QString Comparison::CountsText() const {
  QStringList parts;
  if (counts_.Same > 0 || counts_.AreAllSame()) {
    parts.append(Ui::Tr("%n subtitle the same", "%n subtitles the same", counts_.Same));
  }
  if (counts_.Different > 0) {
    QStringList kinds;
    for (std::size_t i = 0; i < SubtitleDifferences; ++i) {
      const auto difference = static_cast<SubtitleDifference>(i);
      if (counts_.With[i] > 0 && difference != SubtitleDifference::Missing &&
          difference != SubtitleDifference::Added) {
        kinds.append(CountedDifference(counts_.With[i], difference));
      }
    }
    parts.append(
        Ui::Tr("%1 different (%2)", {CountText(counts_.Different), kinds.join(QStringLiteral(", "))}));
  }
  for (const auto& [count, difference] : {std::pair(counts_.Missing, SubtitleDifference::Missing),
                                          std::pair(counts_.Added, SubtitleDifference::Added)}) {
    if (count > 0) {
      parts.append(CountedDifference(count, difference));
    }
  }
  if (!hasSameTrailingBytes_) {
    parts.append(Ui::Tr("other bytes after the last subtitle"));
  }
  return parts.join(QStringLiteral(", "));
}

}  // namespace quillmark
