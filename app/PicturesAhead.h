#pragma once

#include <QBasicTimer>
#include <QObject>

namespace quillmark {

class SubtitleModel;
class SubtitlePictures;
class SubtitleTable;

/// While the window has nothing else to do, decodes the pictures of the screenful of rows that scrolling on
/// would show next, one at a time.
class PicturesAhead : public QObject {
  Q_OBJECT

 public:
  PicturesAhead(SubtitleTable& table, const SubtitleModel& model, SubtitlePictures& pictures);

  /// Whether there is nothing left to decode for what is in sight now.
  [[nodiscard]] bool IsDone() const { return !idle_.isActive(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  [[nodiscard]] bool DecodeNext();

  SubtitleTable& table_;
  const SubtitleModel& model_;
  SubtitlePictures& pictures_;
  QBasicTimer idle_;
  int firstBefore_ = 0;  // the first row that was in sight before
  bool goesUp_ = false;
};

}  // namespace quillmark
