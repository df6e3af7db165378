#include "tests/app/WindowTest.h"

#include <ostream>

#include <QAbstractItemView>
#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QTest>

namespace quillmark::test {
namespace {

/// Lets everything that a handler has queued come to its end.
void Settle() {
  QCoreApplication::sendPostedEvents();
  QCoreApplication::processEvents();
}

}  // namespace

WindowTest::WindowTest() {
  // However slow the machine is, no dialog comes that a test does not ask for.
  Window.SetPatience(std::nullopt);
  Window.show();
  EXPECT_TRUE(QTest::qWaitForWindowExposed(&Window));
}

QString WindowTest::TextOf(const QString& name) const {
  return Control<QLineEdit>(name).text();
}

void WindowTest::Click(const QString& name) {
  auto& button = Control<QAbstractButton>(name);
  ASSERT_TRUE(button.isEnabled()) << name.toStdString();
  // Round and square marks react to a click on themselves in every style, and stand at the left.
  const QPoint where = button.isCheckable() ? QPoint(8, button.height() / 2) : button.rect().center();
  QTest::mouseClick(&button, Qt::LeftButton, {}, where);
  Settle();
}

void WindowTest::Choose(const QString& list, const QString& item) {
  auto& combo = Control<QComboBox>(list);
  ASSERT_TRUE(combo.isEnabled()) << list.toStdString();
  const int row = combo.findText(item);
  ASSERT_GE(row, 0) << item.toStdString();
  combo.showPopup();
  combo.view()->setCurrentIndex(combo.model()->index(row, combo.modelColumn()));
  QTest::keyClick(combo.view(), Qt::Key_Return);
  Settle();
  ASSERT_EQ(combo.currentIndex(), row);
}

QString WindowTest::Chosen(const QString& list) const {
  return Control<QComboBox>(list).currentText();
}

QString WindowTest::Write(const QString& name, const Bytes& bytes) const {
  return Write(name,
               QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())));
}

QString WindowTest::Write(const QString& name, const QByteArray& text) const {
  QFile file(Path(name));
  EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) == text.size()) << name.toStdString();
  return file.fileName();
}

Bytes WindowTest::Read(const QString& path) {
  const QByteArray text = ReadText(path);
  return {text.begin(), text.end()};
}

QByteArray WindowTest::ReadText(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return file.readAll();
}

void WindowTest::Load(const QString& path) {
  Dialogs.ExpectOpen(path);
  Dialogs.ExpectReport();
  Click("Command_LoadSup");
  Dialogs.Verify();
}

void WindowTest::StartWith(const QString& path) {
  Dialogs.ExpectReport();
  Window.OpenCommandLine(path);
  Settle();
  Dialogs.Verify();
}

QString WindowTest::LoadStream(const Bytes& stream) {
  const QString path = Write("movie.sup", stream);
  StartWith(path);
  return path;
}

QString WindowTest::LongPath(const QString& name) {
  const QString folder = Path(QString(120, 'a') + '/' + QString(120, 'b'));
  EXPECT_TRUE(QDir().mkpath(folder));
  return folder + '/' + name;
}

Bytes WindowTest::SavedBytes() {
  const QString path = Path("saved.sup");
  QFile::remove(path);
  Dialogs.ExpectSave(path);
  Click("Command_SaveSup");
  Dialogs.Verify();
  return Read(path);
}

void WindowTest::GoTo(const QString& number) {
  Dialogs.ExpectInput(number);
  Click("Command_GoTo");
}

void WindowTest::LoadPalette(const QString& path) {
  Dialogs.ExpectOpen(path);
  Click("Command_LoadPalette");
}

void WindowTest::ShowBackground(const QString& picture) {
  Dialogs.ExpectOpen(picture);
  Click("Command_GetGraphics");
  Click("Option_File");
}

QImage WindowTest::Frame() const {
  return Control<QWidget>("Picture1").grab().toImage();
}

QColor WindowTest::SwatchColour(int entry) const {
  auto& swatch = Control<QWidget>(Element("Label1", entry));
  return swatch.grab().toImage().pixelColor(swatch.rect().topLeft() + QPoint(2, 2));
}

QString InProgramsFolder(const QString& name) {
  return QDir(QCoreApplication::applicationDirPath()).filePath(name);
}

std::string Rgba(const QColor& colour) {
  return colour.name(QColor::HexArgb).toStdString();
}

}  // namespace quillmark::test

void PrintTo(const QString& text, std::ostream* out) {
  *out << '"' << text.toStdString() << '"';
}

void PrintTo(const QColor& colour, std::ostream* out) {
  *out << quillmark::test::Rgba(colour);
}
