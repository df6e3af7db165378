#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <QObject>
#include <QString>
#include <QTimer>

#include "app/JournalFolder.h"
#include "base/ContentHash.h"

namespace quillmark {

class Document;
struct DocumentEdit;

/// Writes the document's unsaved edits down before they are shown, and offers what a window that is gone left
/// behind of the stream that was opened. A journal ends when the stream is saved; one that ends with unsaved
/// edits because another stream is opened, or the program ends, stays for the next time.
///
/// What content the edits start from is worked out while nothing else is to be done, as that takes as long as
/// reading all of it once.
class RecoveryJournal : public QObject {
  Q_OBJECT

 public:
  explicit RecoveryJournal(Document& document, QObject* parent = nullptr);
  ~RecoveryJournal() override;

  /// Whether there are unsaved edits of the stream from before.
  [[nodiscard]] bool HasOffer() const { return offer_.has_value(); }
  /// They can be restored while the stream is as it was opened, and may be edited.
  [[nodiscard]] bool CanRestore() const;
  /// How many they are, and of when; empty without an offer.
  [[nodiscard]] QString OfferText() const;

  /// Makes the edits of the offer, each a step of the history, as they were: undone ones can be redone.
  void Restore();
  /// Removes the offered edits for good; older ones are offered then.
  void Discard();

 signals:
  void OfferChanged();
  /// Something that the user should know.
  void Told(const QString& text);

 private:
  /// What a change in the journal is: an edit of the history, or one taken back.
  struct Step {
    int Edit = 0;
    bool IsUndo = false;

    bool operator==(const Step&) const = default;
  };

  void Begin();
  void End();
  void Look(std::uint64_t length, const std::function<std::uint64_t()>& hash);
  void Note(Step step, const DocumentEdit& edit);
  void TakeBack();
  void WriteStep(Step step, const DocumentEdit& edit);
  void WriteEdit(const DocumentEdit& edit);
  void TakeOver(AppendFile left, std::size_t length);
  void Append(AppendFile left);
  [[nodiscard]] bool IsStarted();
  void GiveUp(const std::string& reason);
  [[nodiscard]] std::span<const std::uint8_t> Content() const;
  void HashSome();
  [[nodiscard]] std::uint64_t Hash();

  Document& document_;
  JournalFolder folder_;

  std::vector<int> edits_;            // of the history, a number of its own each
  int lastEdit_ = 0;                  // the highest number so far
  std::optional<AppendFile> file_;    // none before the first edit
  std::size_t length_ = 0;            // bytes in the file
  std::size_t lengthBefore_ = 0;      // before the last change
  std::vector<Step> steps_;           // the journal's changes, undone ones included
  std::size_t done_ = 0;              // how many of them are in force
  std::vector<std::uint8_t> record_;  // what is written at a time, memory reused
  bool gaveUp_ = false;               // until the next stream or save
  bool told_ = false;                 // that it gave up

  ContentHasher hasher_;  // of the content before the first edit
  std::size_t hashed_ = 0;
  QTimer idle_;

  std::optional<LeftJournal> offer_;
};

}  // namespace quillmark
