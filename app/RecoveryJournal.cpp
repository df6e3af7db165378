#include "app/RecoveryJournal.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QLocale>

#include "app/Document.h"
#include "app/Ui.h"

namespace quillmark {
namespace {

/// Bytes of the content that are hashed at a time, which takes about a millisecond.
constexpr std::size_t HashedAtATime = std::size_t{4} << 20U;
/// What is shown of a stream that was opened is painted before that begins.
constexpr std::chrono::milliseconds BeforeHashing(100);
static_assert(HashedAtATime % ContentHasher::BlockSize == 0);

}  // namespace

RecoveryJournal::RecoveryJournal(Document& document, QObject* parent) : QObject(parent), document_(document) {
  const auto index = [this] { return static_cast<std::size_t>(document_.History().index()); };
  connect(&document_, &Document::Opened, this, [this] {
    edits_.clear();
    End();
    Begin();
    Look(Content().size(), [this] { return Hash(); });
  });
  connect(&document_, &Document::Saved, this, [this] {
    steps_.clear();
    done_ = 0;
    End();
    Begin();
  });
  connect(&document_, &Document::AboutToEdit, this, [this, index](const DocumentEdit& edit) {
    edits_.resize(index());
    edits_.push_back(++lastEdit_);
    Note({.Edit = edits_.back(), .IsUndo = false}, edit);
  });
  connect(&document_, &Document::Refused, this, &RecoveryJournal::TakeBack);
  connect(&document_, &Document::AboutToUndo, this, [this, index](const DocumentEdit& edit) {
    Note({.Edit = edits_[index() - 1], .IsUndo = true}, edit);
  });
  connect(&document_, &Document::AboutToRedo, this, [this, index](const DocumentEdit& edit) {
    Note({.Edit = edits_[index()], .IsUndo = false}, edit);
  });
  connect(&document_, &Document::CommandsChanged, this, [this] {
    if (offer_) {
      emit OfferChanged();
    }
  });
  connect(&idle_, &QTimer::timeout, this, [this] {
    idle_.setInterval(0);
    HashSome();
  });
}

RecoveryJournal::~RecoveryJournal() {
  End();
}

std::span<const std::uint8_t> RecoveryJournal::Content() const {
  const SupStream& stream = document_.Primary();
  return std::span(stream.RawBytes)
      .first(std::min(stream.RawBytes.size(), static_cast<std::size_t>(stream.FileLength)));
}

void RecoveryJournal::Begin() {
  gaveUp_ = false;
  hasher_ = ContentHasher();
  hashed_ = 0;
  idle_.start(BeforeHashing);
}

void RecoveryJournal::End() {
  idle_.stop();
  if (file_ && done_ == 0) {
    (void)file_->Remove();
  }
  file_.reset();
  steps_.clear();
  done_ = 0;
}

void RecoveryJournal::HashSome() {
  const auto part = Content().subspan(std::min(hashed_, Content().size()));
  const std::size_t length = std::min(part.size(), HashedAtATime);
  hasher_.Add(part.first(length));
  hashed_ += length;
  if (hashed_ >= Content().size()) {
    idle_.stop();
  }
}

std::uint64_t RecoveryJournal::Hash() {
  while (idle_.isActive()) {
    HashSome();
  }
  return hasher_.Hash();
}

void RecoveryJournal::Look(std::uint64_t length, const std::function<std::uint64_t()>& hash) {
  offer_.reset();
  JournalFolder::Search search = folder_.Find(length, hash);
  offer_ = std::move(search.Found);
  if (!search.PutAside.isEmpty()) {
    emit Told(Ui::Tr("A journal of unsaved edits of this stream is damaged and was put aside: %1")
                  .arg(QDir::toNativeSeparators(search.PutAside.join(QStringLiteral(", ")))));
  }
  emit OfferChanged();
}

void RecoveryJournal::Note(Step step, const DocumentEdit& edit) {
  record_.clear();
  if (gaveUp_ || Content().empty() || !IsStarted()) {
    return;
  }
  length_ += record_.size();
  lengthBefore_ = length_;
  const std::size_t start = record_.size();
  WriteStep(step, edit);
  length_ += record_.size() - start;
  if (const auto written = file_->Append(record_); !written) {
    GiveUp(written.Reason());
  }
}

/// The edit that was noted last was not made.
void RecoveryJournal::TakeBack() {
  edits_.pop_back();
  if (gaveUp_ || done_ == 0) {
    return;
  }
  steps_.pop_back();
  --done_;
  length_ = lengthBefore_;
  if (const auto cut = file_->CutTo(static_cast<std::int64_t>(length_)); !cut) {
    GiveUp(cut.Reason());
  }
}

/// Opens the journal where that was not done yet; its first record goes to the disk with the first edit.
bool RecoveryJournal::IsStarted() {
  if (file_) {
    return true;
  }
  const JournalBase base = {.Length = Content().size(), .Hash = Hash(), .Path = document_.Primary().Path};
  auto file = folder_.Create(base);
  if (!file) {
    GiveUp(file.Reason());
    return false;
  }
  file_ = std::move(*file);
  length_ = 0;
  WriteJournalBase(base, record_);
  return true;
}

void RecoveryJournal::WriteStep(Step step, const DocumentEdit& edit) {
  const Step back = {.Edit = step.Edit, .IsUndo = !step.IsUndo};
  if (done_ > 0 && steps_[done_ - 1] == back) {
    WriteJournalUndo(record_);
    --done_;
    return;
  }
  if (done_ < steps_.size() && steps_[done_] == step) {
    WriteJournalRedo(record_);
    ++done_;
    return;
  }
  // A new edit, or a step across the place where the stream was saved, from which on nothing was written.
  WriteEdit(edit);
  steps_.resize(done_);
  steps_.push_back(step);
  ++done_;
}

void RecoveryJournal::WriteEdit(const DocumentEdit& edit) {
  const std::string name = edit.Name.toStdString();
  if (const auto* bytes = std::get_if<StreamEdit>(&edit.What)) {
    WriteJournalEdit(name, *bytes, record_);
  } else {
    WriteJournalPalette(name, std::get<DvdPalette>(edit.What), record_);
  }
}

/// Edits go on without a journal. What was written before stays: it is an earlier state, but a whole one.
void RecoveryJournal::GiveUp(const std::string& reason) {
  gaveUp_ = true;
  if (!std::exchange(told_, true)) {
    emit Told(Ui::Tr("Unsaved edits cannot be kept for the case of a crash: %1")
                  .arg(QString::fromStdString(reason)));
  }
}

bool RecoveryJournal::CanRestore() const {
  return offer_ && document_.History().index() == 0 && document_.Enabled().Editing &&
         document_.Primary().Count > 0;
}

QString RecoveryJournal::OfferText() const {
  if (!offer_) {
    return {};
  }
  const QDateTime when = QFileInfo(offer_->File.Path()).lastModified();
  const QString date = QLocale().toString(when, QLocale::ShortFormat);
  const std::size_t count = offer_->Content.Done;
  QString text =
      Ui::Tr("One edit of this stream was not saved (%2).", "%1 edits of this stream were not saved (%2).",
             static_cast<std::int64_t>(count), {QString::number(count), date});
  if (document_.History().index() != 0) {
    text += u' ' + Ui::Tr("Undo what you changed since then to restore them.");
  }
  return text;
}

void RecoveryJournal::Restore() {
  if (!CanRestore()) {
    return;
  }
  LeftJournal left = *std::exchange(offer_, std::nullopt);
  const std::size_t count = left.Content.Changes.size();
  std::vector<DocumentEdit> edits;
  edits.reserve(count);
  record_.clear();
  for (JournalChange& change : left.Content.Changes) {
    edits.push_back({.Name = QString::fromStdString(change.Name), .What = std::move(change.What)});
    if (done_ > 0) {
      WriteEdit(edits.back());
    }
  }
  for (std::size_t undone = left.Content.Done; done_ > 0 && undone < count; ++undone) {
    WriteJournalUndo(record_);
  }
  if (const auto restored = document_.Restore(std::move(edits), left.Content.Done); !restored) {
    const auto aside = left.File.PutAside(QStringLiteral(".damaged"));
    emit Told(Ui::Tr("The unsaved edits cannot be restored (%1) and were put aside: %2")
                  .arg(QString::fromStdString(restored.Reason()), aside ? *aside : left.File.Path()));
    emit OfferChanged();
    return;
  }
  if (done_ == 0) {
    TakeOver(std::move(left.File), left.Content.Length);
  } else {
    Append(std::move(left.File));
  }
  edits_.clear();
  steps_.resize(done_);
  for (std::size_t i = 0; i < count; ++i) {
    edits_.push_back(++lastEdit_);
    steps_.push_back({.Edit = lastEdit_, .IsUndo = false});
  }
  done_ += left.Content.Done;
  emit OfferChanged();
}

/// The journal that was left goes on.
void RecoveryJournal::TakeOver(AppendFile left, std::size_t length) {
  End();
  gaveUp_ = false;
  if (const auto cut = left.CutTo(static_cast<std::int64_t>(length)); !cut) {
    GiveUp(cut.Reason());
  }
  file_ = std::move(left);
  length_ = length;
}

/// The stream was saved since it was opened, and that was undone: what is on the disk is what was saved, from
/// where only the window's own journal leads to what is restored. So that takes the edits, which `record_`
/// has.
void RecoveryJournal::Append(AppendFile left) {
  if (gaveUp_) {
    return;
  }
  if (const auto written = file_->Append(record_); !written) {
    GiveUp(written.Reason());
    return;
  }
  length_ += record_.size();
  (void)left.Remove();
}

void RecoveryJournal::Discard() {
  if (offer_) {
    const JournalBase base = offer_->Content.Base;
    (void)offer_->File.Remove();
    Look(base.Length, [&base] { return base.Hash; });
  }
}

}  // namespace quillmark
