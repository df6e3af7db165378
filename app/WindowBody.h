#pragma once

#include <QByteArray>
#include <QScrollArea>

class QSplitter;
class QVBoxLayout;

namespace quillmark {

class DisplayFrame;
class FrameView;

/// The commands at the right, scrolling up and down when there is too little room for them. The control that
/// has the focus is brought into sight.
class CommandView : public QScrollArea {
 public:
  CommandView(QWidget* commands, QWidget* parent);

  /// Includes the place of a scroll bar.
  [[nodiscard]] QSize minimumSizeHint() const override;
};

/// The window's columns: the frame at the left, the commands at the right. The groups may stand in either: in
/// one row below the frame where that leaves the frame whole, else as the last of the commands. The list
/// stands among the commands and takes what room they leave; a window of ListColumnWidth has a column of its
/// own for it. All of that follows from the frame at 100 %; a frame that is zoomed has what room the others
/// can spare.
class WindowBody : public QWidget {
 public:
  static constexpr int ListColumnWidth = 1600;
  /// The list's place among the commands.
  static constexpr int ListPlace = 2;

  WindowBody(DisplayFrame* picture, QWidget* parent);

  [[nodiscard]] FrameView& Frame() const { return *frame_; }
  /// The frame's column; what is inserted at 0 stands above the frame.
  [[nodiscard]] QVBoxLayout* FrameColumn() const { return frameColumn_; }
  /// The column of commands, and the parent of what stands in it.
  [[nodiscard]] QVBoxLayout* CommandColumn() const { return commandColumn_; }
  [[nodiscard]] QWidget* Commands() const { return commands_; }
  /// `wide` and the other two groups, which stand beside each other in any case.
  void SetGroups(QWidget* wide, QWidget* second, QWidget* third);
  /// `foldable` stands below the list. To be called after SetGroups().
  void SetList(QWidget* list, QWidget* foldable);
  void ShowList(bool shown);
  /// Whether what stands below the list can do nothing now: it goes while the list needs its place.
  void Fold(bool folds);

  /// How the user parted the commands from the list's own column.
  [[nodiscard]] QByteArray SplitterState() const;
  void RestoreSplitter(const QByteArray& state);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Arrange();
  void PlaceGroups(bool belowFrame);
  void PlaceList(bool apart);
  [[nodiscard]] int Gap() const;
  [[nodiscard]] QSize RowOfGroups() const;
  [[nodiscard]] int CommandWidth() const;
  [[nodiscard]] int HeightAboveFrame() const;

  QWidget* left_;
  QVBoxLayout* frameColumn_;
  FrameView* frame_;
  QWidget* commands_;
  QVBoxLayout* commandColumn_;
  QSplitter* right_;  // the commands and, where it stands apart, the list
  CommandView* commandView_;
  QWidget* groups_;
  QList<QWidget*> group_;
  bool belowFrame_ = false;
  QWidget* list_ = nullptr;
  QWidget* foldable_ = nullptr;
  bool listIsApart_ = false;
  bool folds_ = false;
  bool arranges_ = false;
  QByteArray splitterState_;  // while the list does not stand apart
};

}  // namespace quillmark
