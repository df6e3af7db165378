#pragma once

#include <string>

#include <QAbstractButton>
#include <QColor>
#include <QImage>
#include <QString>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "app/frmTest.h"
#include "tests/support/Abandon.h"
#include "tests/support/DialogScript.h"
#include "tests/support/PacketBuilder.h"

class QComboBox;

namespace quillmark::test {

/// A folder of the test's own for what windows leave behind, made known to those that come after it: neither
/// does a test touch the user's, nor does it find what another one left.
class StateHome {
 public:
  StateHome() { qputenv("XDG_STATE_HOME", folder_.path().toUtf8()); }

  [[nodiscard]] QString Path() const { return folder_.path(); }

 private:
  QTemporaryDir folder_;
};

/// Drives a real, shown main window through its controls, found by their names as an assistive tool would.
class WindowTest : public testing::Test {
 protected:
  WindowTest();

  template <class Widget>
  [[nodiscard]] Widget& Control(const QString& name) const {
    auto* control = Window.findChild<Widget*>(name);
    if (control == nullptr) {
      test::Abandon("no such control: " + name.toStdString());
    }
    return *control;
  }

  [[nodiscard]] bool IsEnabled(const QString& name) const { return Control<QWidget>(name).isEnabled(); }
  [[nodiscard]] bool IsChecked(const QString& name) const {
    return Control<QAbstractButton>(name).isChecked();
  }
  [[nodiscard]] QString TextOf(const QString& name) const;
  /// Presses and releases the mouse on a control, which must be enabled.
  void Click(const QString& name);
  /// Opens a list and picks the item of this text.
  void Choose(const QString& list, const QString& item);
  /// The current item of a list.
  [[nodiscard]] QString Chosen(const QString& list) const;

  /// A file of the test's own folder.
  [[nodiscard]] QString Path(const QString& name) const { return Folder.filePath(name); }
  QString Write(const QString& name, const Bytes& bytes) const;
  QString Write(const QString& name, const QByteArray& text) const;
  [[nodiscard]] static Bytes Read(const QString& path);
  [[nodiscard]] static QByteArray ReadText(const QString& path);

  /// Load SUP: chooses the file and confirms the report.
  void Load(const QString& path);
  /// Opens the file as the program does that is started with it, and confirms the report.
  void StartWith(const QString& path);
  /// Writes the stream to movie.sup and opens it; the path.
  QString LoadStream(const Bytes& stream);
  /// A path of more than 256 characters, in folders that are there.
  QString LongPath(const QString& name);
  /// Save SUP into a new file; what was written.
  Bytes SavedBytes();
  /// GoTo, with the number typed into its box.
  void GoTo(const QString& number);
  void LoadPalette(const QString& path);
  /// The background choice with this picture.
  void ShowBackground(const QString& picture);

  /// The frame as painted.
  [[nodiscard]] QImage Frame() const;
  [[nodiscard]] QColor FrameColour(int x, int y) const { return Frame().pixelColor(x, y); }
  /// A swatch between its edge and its digit.
  [[nodiscard]] QColor SwatchColour(int entry) const;

  QTemporaryDir Folder;
  StateHome State;
  DialogScript Dialogs;
  frmTest Window;
};

/// "Name_3", an element of a control array.
[[nodiscard]] inline QString Element(const QString& array, int index) {
  return array + u'_' + QString::number(index);
}

/// "test.sup", or another name, in the program's folder.
[[nodiscard]] QString InProgramsFolder(const QString& name);

/// Shown in a failed comparison instead of raw memory.
[[nodiscard]] std::string Rgba(const QColor& colour);

}  // namespace quillmark::test

// gtest prints Qt's values through these.
void PrintTo(const QString& text, std::ostream* out);
void PrintTo(const QColor& colour, std::ostream* out);
