#pragma once

#include <array>
#include <deque>
#include <functional>
#include <vector>

#include <QColor>
#include <QDialog>
#include <QFileDialog>
#include <QMessageBox>
#include <QObject>
#include <QString>
#include <QStringList>

namespace quillmark::test {

enum class DialogKind { Message, OpenFile, SaveFile, Input, Colour, Other };

/// A dialog as it stood on the screen when it came up. Only what its kind has is filled in.
struct ShownDialog {
  DialogKind Kind = DialogKind::Other;
  QString Title;
  QWidget* Owner = nullptr;
  bool IsModal = false;
  bool PointerIsNormal = false;  ///< neither the program nor the owner shows a pointer of its own

  QString Text;             ///< of a message; the prompt of an input box
  bool TextIsPlain = true;  ///< no markup is made of the text
  QMessageBox::Icon Icon = QMessageBox::NoIcon;
  QMessageBox::StandardButtons Buttons;

  QStringList Filters;   ///< as the list of file types shows them
  QStringList Patterns;  ///< of the first filter
  QString Folder;
  QString Name;  ///< the file name field
  QFileDialog::FileMode FileMode = QFileDialog::AnyFile;
  bool AsksBeforeReplacing = true;

  QString DefaultText;  ///< of an input box

  QColor Colour;
  std::array<QColor, 16> CustomColours;

  /// Whether the first filter lets a file of this name be seen where upper and lower case differ.
  [[nodiscard]] bool Offers(const QString& fileName) const;
};

/// Answers the program's modal dialogs as a user would. Dialogs are expected in the order of their coming;
/// each is looked at and answered from inside its own event loop, when it has been shown. A dialog that
/// nobody expected is rejected, so that nothing ever hangs, and fails the test, as does an expected one that
/// never came. Nothing waits for time to pass.
class DialogScript : public QObject {
 public:
  using Answer = std::function<void(QDialog& dialog)>;

  DialogScript();
  ~DialogScript() override;

  /// A message of exactly this text.
  void ExpectMessage(const QString& text, QMessageBox::StandardButton answer = QMessageBox::Ok);
  /// A message that holds all these parts, in any order.
  void ExpectMessageWith(const QStringList& parts, QMessageBox::StandardButton answer = QMessageBox::Ok);
  /// The report at the end of loading.
  void ExpectReport() { ExpectMessageWith({"Found Subtitles: "}); }

  void ExpectOpen(const QString& path) { Expect(DialogKind::OpenFile, ConfirmFile(path)); }
  void ExpectSave(const QString& path) { Expect(DialogKind::SaveFile, ConfirmFile(path)); }
  void ExpectInput(const QString& reply);
  void ExpectColour(const QColor& colour);
  void ExpectCancelled(DialogKind kind);
  /// Any other answer. A dialog that is still open after it is rejected, and the test fails.
  void Expect(DialogKind kind, Answer answer);

  /// From now on messages may come or not; each is confirmed.
  void AllowMessages() { messagesAllowed_ = true; }

  /// Fails the test for every expected dialog that has not come, and forgets them.
  void Verify();

  /// All dialogs so far, oldest first.
  [[nodiscard]] const std::vector<ShownDialog>& Shown() const { return shown_; }
  [[nodiscard]] ShownDialog Last() const { return shown_.empty() ? ShownDialog{} : shown_.back(); }
  [[nodiscard]] QStringList MessageTexts() const;

  /// Types the path into the name field and confirms, for answers of a test's own.
  [[nodiscard]] static Answer ConfirmFile(const QString& path);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Expectation {
    DialogKind Kind = DialogKind::Other;
    std::function<bool(const ShownDialog&)> Matches;
    QString What;
    Answer React;
  };

  void AnswerDialog(QDialog& dialog);

  std::deque<Expectation> expected_;
  std::vector<ShownDialog> shown_;
  bool messagesAllowed_ = false;
};

}  // namespace quillmark::test
