#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include <QObject>
#include <QPoint>
#include <QPointer>

#include "app/ShownPixels.h"

class QLineEdit;
class QWidget;

namespace quillmark {

class DisplayFrame;
class FrameView;
class Loupe;

/// Tells what the frame's pixels are: of the one under the pointer in a field, in the loupe while it is open,
/// and of the areas of what is shown to the guides.
class FrameInspector : public QObject {
  Q_OBJECT

 public:
  FrameInspector(DisplayFrame* frame, FrameView* view, QLineEdit* field, QObject* parent);

  /// What is about to be drawn; as the functions of ShownPixels.
  void Show(std::span<const std::uint8_t> unit, const SpuControl& control, const CodeChoice& choice);
  void ShowOver(std::span<const std::uint8_t> unit, const SpuControl& control, int moved,
                const CodeMap& codes);
  void ShowPlayed(std::shared_ptr<PlayedSubtitle> played, const DisplayState* state);

  /// Opens the loupe at the pointer, or else in the middle of the subtitle or the frame, and gives it the
  /// focus; or closes it and gives the focus back.
  void OpenLoupe();
  void CloseLoupe();
  [[nodiscard]] bool IsLoupeOpen() const;

 signals:
  void LoupeClosed();

 private:
  void Point(std::optional<QPoint> pixel);
  void LookAt(QPoint pixel);
  /// Tells of the same place once more.
  void Follow();
  void TellAreas();
  [[nodiscard]] QPoint Middle() const;

  DisplayFrame* frame_;
  FrameView* view_;
  QLineEdit* field_;
  Loupe* loupe_;
  ShownPixels pixels_;
  std::optional<QPoint> pointed_;
  QPointer<QWidget> focusBefore_;
};

}  // namespace quillmark
