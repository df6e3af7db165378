#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include <QObject>
#include <QString>

namespace quillmark {

class DisplayFrame;
class Document;
class FrameInspector;
class PlayedSubtitle;
class PlayerBar;
struct DisplayState;

/// Draws the document's subtitle into the frame as a player shows it at the bar's time, in place of the still
/// picture, and has the inspector tell of that. Not while two streams are merged: a merged subtitle is one
/// picture from its start to its stop.
class PlayerView : public QObject {
  Q_OBJECT

 public:
  PlayerView(Document& document, DisplayFrame& frame, FrameInspector& inspector, PlayerBar& bar,
             QObject* parent);
  ~PlayerView() override;

  /// The document's subtitle was shown or previewed: takes it over, as it is now, over the background that is
  /// in the frame. False where the view is off; nothing is drawn then. `unit` is whole.
  [[nodiscard]] bool Show(std::span<const std::uint8_t> unit);

 signals:
  /// Something of the subtitle that was taken over is damaged and not carried out.
  void Damaged(const QString& what);

 private:
  void FollowDocument();
  /// The subtitle's bytes may be others, or the time at which the next one starts.
  void FollowStream(bool isAnother);
  void Take(std::vector<std::uint8_t> unit, std::optional<std::int64_t> replacedAt);
  void Draw();

  Document& document_;
  DisplayFrame& frame_;
  FrameInspector& inspector_;
  PlayerBar& bar_;
  std::shared_ptr<PlayedSubtitle> played_;    // none until one was shown
  std::int64_t number_ = 0;                   // of the subtitle in played_; 0 while it is another stream's
  std::optional<const DisplayState*> drawn_;  // null: nothing of it
};

}  // namespace quillmark
