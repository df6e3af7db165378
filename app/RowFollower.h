#pragma once

#include <functional>

#include <QObject>

namespace quillmark {

class Document;
class SubtitleTable;

/// Keeps a table's current row and what the document shows together. What the user wants is told when the
/// event is over that it belongs to: showing a subtitle may end in a message, and the document may pass
/// several on its way to one.
class RowFollower : public QObject {
  Q_OBJECT

 public:
  /// The table has its model.
  RowFollower(const Document& document, SubtitleTable& table, QObject* parent);

  /// Goes to the row of what the document shows.
  void GoToRow(int row);
  /// The current row may become another one in `change`, and none that the user went to.
  void Keep(const std::function<void()>& change);
  [[nodiscard]] bool IsKeeping() const { return keeps_; }

  /// The user wants the current row, though it may have been it before.
  void Choose();
  /// The document shows something else, or another row shows it.
  void Follow();
  /// Nothing of the document is wanted just now.
  void DropFollow() { follows_ = false; }

 signals:
  /// The current row is another one, whoever went there.
  void RowMoved();
  /// The user went to the current row. No event is in progress, as in the next one.
  void RowChosen();
  /// The current row should be that of what the document shows.
  void DocumentMoved();

 private:
  void SettleLater();
  void Settle();

  SubtitleTable& table_;
  bool isChosen_ = false;  // the user went to another row, and the window not yet
  bool follows_ = false;   // the window went to another subtitle, and the table not yet
  bool keeps_ = false;     // rows are chosen that the window shows
  bool settles_ = false;   // Settle() is about to be called
};

}  // namespace quillmark
