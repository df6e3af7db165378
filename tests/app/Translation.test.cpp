#include <functional>
#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QSet>
#include <QStyleOptionComboBox>
#include <QTabBar>

#include "base/Words.h"
#include "tests/app/MergeTest.h"
#include "tests/app/ShapedTexts.h"
#include "tests/containers/PackBuilder.h"
#include "tests/support/IfoBuilder.h"
#include "translations/UsersLanguage.h"

namespace quillmark::test {
namespace {

/// What a screen of 1366x768 leaves of it: a title bar and borders around the window.
constexpr QSize SmallestScreen(1366 - 8, 768 - 40);

std::optional<std::string> InMarks(const char* /*context*/, const char* text, const char* many, int count) {
  return "{" + std::string(count < 0 || count == 1 ? text : many) + "}";
}

/// The language of all texts until the test ends; "marks": English, each text between braces.
class SpokenLanguage {
 public:
  explicit SpokenLanguage(const QString& language) {
    Speak(language);
    if (language == "marks") {
      InstallTranslator(InMarks);
    }
    TranslateToolkit();
  }
  ~SpokenLanguage() {
    Speak({});
    TranslateToolkit();
  }
  SpokenLanguage(const SpokenLanguage&) = delete;
  SpokenLanguage& operator=(const SpokenLanguage&) = delete;
};

using LookAtWindow = std::function<void(const QWidget&)>;

/// Brings up all that the program shows, in a language that is spoken before the window is made.
class SpokenWindow : public SpokenLanguage, public ShapedTexts, public MergeTest {
 protected:
  // Reports come in every language.
  explicit SpokenWindow(const QString& language) : SpokenLanguage(language) { Dialogs.AllowMessages(); }

  void Open(const Bytes& stream) {
    Window.OpenCommandLine(Write("movie.sup", stream));
    QCoreApplication::processEvents();
  }

  void Trigger(const QString& action) {
    Window.findChild<QAction*>("Action_" + action)->trigger();
    QCoreApplication::processEvents();
  }
  void LookAtDialog(const QString& action, const LookAtWindow& look) {
    SCOPED_TRACE(action.toStdString());
    Dialogs.Expect(DialogKind::Other, [&look](QDialog& dialog) {
      QCoreApplication::processEvents();
      look(dialog);
      dialog.reject();
    });
    Trigger(action);
    Dialogs.Verify();
  }
  /// The window without a stream, with one that has problems, with its dialogs, compared, and with a second
  /// one.
  void LookAtAll(const LookAtWindow& look) {
    Window.resize(SmallestScreen);
    QCoreApplication::processEvents();
    look(Window);
    Open(InvalidSecond());
    LookAt("invalid", look);
    Open(ThreeSubtitles());
    LookAt("stream", look);
    Choose("Combo1_1", "7");
    LookAt("preview", look);
    for (const char* tool :
         {"Retime", "Ends", "Move", "Force", "Cut", "Keep", "Join", "Sort", "Fix", "Salvage"}) {
      LookAtDialog(tool, look);
    }
    LookAtDialog("Export", look);
    Dialogs.ExpectOpen(WriteTwoLanguages());
    LookAtDialog("Import", look);
    LookAtStrips(look);
    Dialogs.ExpectOpen(
        Write("vts_01_0.ifo", TitleSetFile({{.Category = 0x81, .Palette = {{0x10, 0x80, 0x80}}},
                                            {.Category = 0x82, .Palette = {{0x52, 0xF0, 0x5A}}}})));
    LookAtDialog("ProgramChains", look);
    Dialogs.ExpectOpen(Write("other.sup", FourCodes(PacketBuilder().Time(1 * Second).Delay(100), 100, 420)));
    Trigger("Compare");
    LookAt("compared", look);
    look(Control<QWidget>("CompareWindow"));
    Control<QWidget>("CompareWindow").close();
    Dialogs.ExpectOpen(Write("second.sup", SecondaryStream({90, 450})));
    Dialogs.ExpectInput("0");
    Click("Command_LoadSecond");
    Trigger("MergeReview");
    LookAt("merged", look);
    Control<QAbstractButton>("Check_MergedCodes").click();
    LookAt("codes", look);
    for (const char* asks : {"Keys", "About", "Report"}) {
      Trigger(asks);
    }
  }
  /// The strips above the frame: edits were left unsaved, and no stream is open.
  void LookAtStrips(const LookAtWindow& look) {
    Choose("Combo1_1", "7");
    Click("Command_SetAll");
    Open(InvalidSecond());
    Open(ThreeSubtitles());
    ASSERT_TRUE(Control<QWidget>("Strip_Recover").isVisible());
    LookAt("unsaved", look);
    Dialogs.ExpectCancelled(DialogKind::OpenFile);
    Click("Command_LoadSup");
    ASSERT_TRUE(Control<QWidget>("Strip_Closed").isVisible());
    LookAt("closed", look);
    Click("Command_Reopen");
    Click("Command_Forget");
  }
  /// A file of two tracks, with a remark on it.
  [[nodiscard]] QString WriteTwoLanguages() const {
    const auto pack = [](int second, unsigned y, std::uint8_t track) {
      const Bytes packet = FourCodes(PacketBuilder().Time(second * Second).Delay(100), 100, y);
      return Pack(SubtitlePacket(Bytes(packet.begin() + 10, packet.end()), second * Second, track));
    };
    Write("movie.sub", Join({pack(1, 100, 0x20), pack(2, 200, 0x21)}));
    return Write("movie.idx", QByteArray("# VobSub index file, v7 (do not modify this line!)\n"
                                         "id: en, index: 0\ntimestamp: 00:00:01:000, filepos: 000000000\n"
                                         "id: de, index: 1\ntimestamp: 00:00:02:000, filepos: 000000800\n"));
  }
  void LookAt(const char* what, const LookAtWindow& look) {
    SCOPED_TRACE(what);
    QCoreApplication::processEvents();
    look(Window);
  }
};

// --- every text is translated ---

/// What of a text is between no braces.
QString Unmarked(const QString& text) {
  QString unmarked;
  int depth = 0;
  for (const QChar letter : text) {
    depth += letter == u'{' ? 1 : 0;
    if (depth == 0) {
      unmarked += letter;
    }
    depth -= letter == u'}' ? 1 : 0;
  }
  return unmarked;
}

/// Names, digits and units need no translation: files and folders, times, palette entries, sizes, markup.
bool NeedsTranslation(const QString& text) {
  static const QRegularExpression names(
      "(/[\\w./"
      "-]+|\\w+\\.(sup|ifo)|Quillmark|<[^>]*>|&\\w+;|0x[0-9A-F]+|\\b[0-9A-F.]+\\b|\\d+x\\d+|#[0-9A-F]{6}|"
      "\\bkB\\b|\\bms\\b|\\([a-z]{2}\\))");
  static const QRegularExpression word("[A-Za-z]{2}");
  QString unmarked = Unmarked(text);
  return unmarked.contains(word) && unmarked.replace(names, " ").contains(word);
}

class MarkedTexts : public SpokenWindow {
 protected:
  MarkedTexts() : SpokenWindow("marks") {}

  static void Check(const QString& text, const QObject& owner) {
    EXPECT_FALSE(NeedsTranslation(text)) << owner.metaObject()->className() << ' '
                                         << owner.objectName().toStdString() << ": " << text.toStdString();
  }
  static void CheckModel(const QAbstractItemModel& model, const QObject& owner) {
    for (const int role : {Qt::DisplayRole, Qt::ToolTipRole, Qt::AccessibleTextRole}) {
      for (int column = 0; column < model.columnCount(); ++column) {
        Check(model.headerData(column, Qt::Horizontal, role).toString(), owner);
        for (int row = 0; row < std::min(model.rowCount(), 12); ++row) {
          Check(model.index(row, column).data(role).toString(), owner);
        }
      }
    }
  }
  static void CheckWidget(const QWidget& widget) {
    // Qt translates its own.
    if (widget.objectName().startsWith("Scroll") && widget.parentWidget()->inherits("QTabBar")) {
      return;
    }
    const auto* box = qobject_cast<QDialogButtonBox*>(widget.parentWidget());
    if (box != nullptr && box->standardButton(const_cast<QAbstractButton*>(
                              qobject_cast<const QAbstractButton*>(&widget))) != QDialogButtonBox::NoButton) {
      return;
    }
    for (const char* property :
         {"text", "title", "toolTip", "statusTip", "whatsThis", "accessibleName", "accessibleDescription",
          "windowTitle", "placeholderText", "plainText", "suffix"}) {
      if (!widget.inherits("QTextEdit") || QByteArray(property) != "text") {
        Check(widget.property(property).toString(), widget);
      }
    }
    for (const QAction* action : widget.actions()) {
      Check(action->text(), *action);
      Check(action->toolTip(), *action);
    }
    if (const auto* list = qobject_cast<const QComboBox*>(&widget)) {
      CheckModel(*list->model(), widget);
    } else if (const auto* view = qobject_cast<const QAbstractItemView*>(&widget); view && view->model()) {
      CheckModel(*view->model(), widget);
    } else if (const auto* tabs = qobject_cast<const QTabBar*>(&widget)) {
      for (int i = 0; i < tabs->count(); ++i) {
        Check(tabs->tabText(i), widget);
      }
    }
  }
};

TEST_F(MarkedTexts, NothingIsShownThatNobodyTranslates) {
  LookAtAll([](const QWidget& window) {
    CheckWidget(window);
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
      CheckWidget(*widget);
    }
  });
  for (const ShownDialog& dialog : Dialogs.Shown()) {
    Check(dialog.Title, Window);
    // What keys are called is Qt's to say.
    Check(dialog.Text.startsWith("{&") || dialog.Text.contains("Ctrl+") ? QString() : dialog.Text, Window);
    Check(dialog.Filters.join(' '), Window);
  }
}

// --- every text fits ---

QString NameOf(const QWidget& widget) {
  return QString::fromLatin1(widget.metaObject()->className()) + ' ' + widget.objectName();
}

/// Some dialogs are looked at while they are laid out for the smallest screen; the main window has its size.
void ExpectTextFits(const QWidget& widget, const QString& text, int needed, int room) {
  EXPECT_LE(needed, room) << NameOf(widget).toStdString() << ": " << text.toStdString();
}

void ExpectListFits(const QComboBox& list) {
  QStyleOptionComboBox option;
  option.initFrom(&list);
  const int room =
      list.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &list).width();
  ExpectTextFits(list, list.currentText(), list.fontMetrics().horizontalAdvance(list.currentText()), room);
}

void ExpectHeadingsFit(const QHeaderView& header) {
  for (int section = 0; section < header.count() && header.orientation() == Qt::Horizontal; ++section) {
    if (!header.isSectionHidden(section)) {
      const QString text = header.model()->headerData(section, Qt::Horizontal).toString();
      ExpectTextFits(header, text, header.fontMetrics().horizontalAdvance(text),
                     header.sectionSize(section) - 4);
    }
  }
}

void ExpectToFit(const QWidget& widget) {
  if (const auto* list = qobject_cast<const QComboBox*>(&widget)) {
    ExpectListFits(*list);
  } else if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
    if (!button->text().isEmpty() && !widget.inherits("quillmark::ColourSwatch")) {
      ExpectTextFits(widget, button->text(), button->sizeHint().width(), button->width());
      ExpectTextFits(widget, button->text(), button->sizeHint().height(), button->height());
    }
  } else if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
    if (label->wordWrap()) {
      ExpectTextFits(widget, label->text(), label->heightForWidth(label->width()), label->height());
    } else {
      ExpectTextFits(widget, label->text(), label->sizeHint().width(), label->width());
    }
  } else if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) {
    ExpectTextFits(widget, group->title(), group->fontMetrics().horizontalAdvance(group->title()) + 8,
                   group->width());
  } else if (const auto* field = qobject_cast<const QLineEdit*>(&widget)) {
    const QString& hint = field->placeholderText();
    ExpectTextFits(widget, hint, field->fontMetrics().horizontalAdvance(hint) + 6, field->width());
  } else if (const auto* tabs = qobject_cast<const QTabBar*>(&widget)) {
    for (int i = 0; i < tabs->count(); ++i) {
      ExpectTextFits(widget, tabs->tabText(i), tabs->fontMetrics().horizontalAdvance(tabs->tabText(i)) + 8,
                     tabs->tabRect(i).width());
    }
  } else if (const auto* header = qobject_cast<const QHeaderView*>(&widget)) {
    ExpectHeadingsFit(*header);
  }
}

/// What has a text and stands where another one's room ends, as in a column that scrolls, is seen in part.
void ExpectToBeWhole(const QWidget& widget) {
  if (qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
      qobject_cast<const QLabel*>(&widget) != nullptr || qobject_cast<const QComboBox*>(&widget) != nullptr) {
    EXPECT_EQ(widget.visibleRegion().boundingRect(), widget.rect()) << NameOf(widget).toStdString();
  }
}

void ExpectMenusToFit(const QWidget& window) {
  QList<const QWidget*> menus;
  for (const QMenu* menu : window.findChildren<QMenu*>()) {
    ExpectTextFits(*menu, menu->title(), menu->sizeHint().height(), SmallestScreen.height());
    ExpectTextFits(*menu, menu->title(), menu->sizeHint().width(), SmallestScreen.width());
    menus.append(menu);
  }
  for (const QMenuBar* bar : window.findChildren<QMenuBar*>()) {
    ExpectTextFits(*bar, "the menus", bar->sizeHint().width(), bar->width());
    menus.append(bar);
  }
  for (const QWidget* menu : menus) {
    QSet<QChar> letters;
    for (const QAction* entry : menu->actions()) {
      const QString letter = entry->text().section(u'&', 1, 1).left(1).toUpper();
      if (!entry->isSeparator() && !letter.isEmpty()) {
        EXPECT_FALSE(letters.contains(letter.front())) << entry->text().toStdString();
        letters.insert(letter.front());
      }
    }
  }
}

void ExpectWindowToFit(const QWidget& window) {
  EXPECT_LE(window.width(), SmallestScreen.width()) << NameOf(window).toStdString();
  EXPECT_LE(window.height(), SmallestScreen.height()) << NameOf(window).toStdString();
  for (const QWidget* widget : window.findChildren<QWidget*>()) {
    // Another window in it is looked at by itself.
    if (widget->isVisible() && widget->window() == &window && !widget->size().isEmpty()) {
      ExpectToFit(*widget);
      ExpectToBeWhole(*widget);
      const bool scrolls = widget->parentWidget()->objectName() == "qt_scrollarea_viewport";
      EXPECT_TRUE(scrolls || widget->parentWidget()->rect().contains(widget->geometry()))
          << NameOf(*widget).toStdString();
    }
  }
  ExpectMenusToFit(window);
}

class EnglishWindow : public SpokenWindow {
 protected:
  EnglishWindow() : SpokenWindow("") {}
};

class GermanWindow : public SpokenWindow {
 protected:
  GermanWindow() : SpokenWindow("de") {}

  void SetUp() override {
    if (Languages().isEmpty()) {
      GTEST_SKIP() << "built without translations";
    }
  }
};

TEST_F(EnglishWindow, EveryTextFitsOnASmallScreen) {
  LookAtAll(ExpectWindowToFit);
}

TEST_F(GermanWindow, EveryTextFitsOnASmallScreen) {
  LookAtAll(ExpectWindowToFit);
}

TEST_F(GermanWindow, SpeaksGerman) {
  Open(ThreeSubtitles());
  EXPECT_EQ(Control<QPushButton>("Command_LoadSup").text(), "SUP laden");
  EXPECT_EQ(Control<QLabel>("Status_Place").text(), "1 von 3");
  EXPECT_THAT(Dialogs.Shown().front().Text.toStdString(), testing::HasSubstr("Gefundene Untertitel: 3\r\n"));
  EXPECT_EQ(Window.findChild<QMenu*>("Menu_Help")->title(), "&Hilfe");
}

}  // namespace
}  // namespace quillmark::test
