#include "tests/support/DialogScript.h"

#include <algorithm>
#include <string>
#include <utility>

#include <QAbstractButton>
#include <QApplication>
#include <QColorDialog>
#include <QComboBox>
#include <QCursor>
#include <QDir>
#include <QEvent>
#include <QInputDialog>
#include <QLineEdit>
#include <QPointer>
#include <QRegularExpression>
#include <gtest/gtest.h>

namespace quillmark::test {
namespace {

std::string KindName(DialogKind kind) {
  static constexpr std::array Names = {"message", "open file", "save file", "input", "colour", "other"};
  return Names.at(static_cast<std::size_t>(kind));
}

bool HasNormalPointer(const QWidget* owner) {
  const bool ownerIsNormal = owner == nullptr || owner->window()->cursor().shape() == Qt::ArrowCursor;
  return QGuiApplication::overrideCursor() == nullptr && ownerIsNormal;
}

void DescribeMessage(const QMessageBox& box, ShownDialog& shown) {
  shown.Kind = DialogKind::Message;
  shown.Text = box.text();
  shown.TextIsPlain = box.textFormat() == Qt::PlainText || !Qt::mightBeRichText(box.text());
  shown.Icon = box.icon();
  shown.Buttons = box.standardButtons();
}

/// A file dialog takes what stands between a filter's last parentheses, parted by blanks.
QStringList PatternsOf(const QString& filter) {
  return filter.section(u'(', -1).section(u')', 0, 0).split(u' ', Qt::SkipEmptyParts);
}

void DescribeFileDialog(const QFileDialog& dialog, ShownDialog& shown) {
  shown.Kind = dialog.acceptMode() == QFileDialog::AcceptOpen ? DialogKind::OpenFile : DialogKind::SaveFile;
  if (const auto* types = dialog.findChild<QComboBox*>("fileTypeCombo")) {
    for (int i = 0; i < types->count(); ++i) {
      shown.Filters.append(types->itemText(i));
    }
  }
  shown.Patterns = PatternsOf(dialog.nameFilters().value(0));
  shown.Folder = dialog.directory().absolutePath();
  const auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
  shown.Name = name == nullptr ? QString() : name->text();
  shown.FileMode = dialog.fileMode();
  shown.AsksBeforeReplacing = !dialog.testOption(QFileDialog::DontConfirmOverwrite);
}

ShownDialog Describe(const QDialog& dialog) {
  ShownDialog shown;
  shown.Title = dialog.windowTitle();
  shown.Owner = dialog.parentWidget();
  shown.IsModal = dialog.isModal();
  shown.PointerIsNormal = HasNormalPointer(dialog.parentWidget());
  if (const auto* box = qobject_cast<const QMessageBox*>(&dialog)) {
    DescribeMessage(*box, shown);
  } else if (const auto* file = qobject_cast<const QFileDialog*>(&dialog)) {
    DescribeFileDialog(*file, shown);
  } else if (const auto* input = qobject_cast<const QInputDialog*>(&dialog)) {
    shown.Kind = DialogKind::Input;
    shown.Text = input->labelText();
    shown.DefaultText = input->textValue();
  } else if (const auto* colour = qobject_cast<const QColorDialog*>(&dialog)) {
    shown.Kind = DialogKind::Colour;
    shown.Colour = colour->currentColor();
    for (std::size_t i = 0; i < shown.CustomColours.size(); ++i) {
      shown.CustomColours.at(i) = QColorDialog::customColor(static_cast<int>(i));
    }
  }
  return shown;
}

DialogScript::Answer PressButton(QMessageBox::StandardButton which) {
  return [which](QDialog& dialog) {
    QAbstractButton* button = qobject_cast<QMessageBox*>(&dialog)->button(which);
    if (button == nullptr) {
      ADD_FAILURE() << "the message has no such button";
      return;
    }
    button->click();
  };
}

}  // namespace

bool ShownDialog::Offers(const QString& fileName) const {
  return std::any_of(Patterns.begin(), Patterns.end(), [&fileName](const QString& pattern) {
    const QString expression = QRegularExpression::wildcardToRegularExpression(pattern);
    return QRegularExpression(expression).match(fileName).hasMatch();
  });
}

DialogScript::DialogScript() {
  qApp->installEventFilter(this);
}

DialogScript::~DialogScript() {
  qApp->removeEventFilter(this);
  Verify();
}

void DialogScript::ExpectMessage(const QString& text, QMessageBox::StandardButton answer) {
  expected_.push_back({DialogKind::Message, [text](const ShownDialog& shown) { return shown.Text == text; },
                       text, PressButton(answer)});
}

void DialogScript::ExpectMessageWith(const QStringList& parts, QMessageBox::StandardButton answer) {
  const auto holdsAll = [parts](const ShownDialog& shown) {
    return std::all_of(parts.begin(), parts.end(),
                       [&shown](const QString& part) { return shown.Text.contains(part); });
  };
  expected_.push_back({DialogKind::Message, holdsAll, parts.join(u" ... "), PressButton(answer)});
}

void DialogScript::ExpectInput(const QString& reply) {
  Expect(DialogKind::Input, [reply](QDialog& dialog) {
    qobject_cast<QInputDialog*>(&dialog)->setTextValue(reply);
    dialog.accept();
  });
}

void DialogScript::ExpectColour(const QColor& colour) {
  Expect(DialogKind::Colour, [colour](QDialog& dialog) {
    qobject_cast<QColorDialog*>(&dialog)->setCurrentColor(colour);
    dialog.accept();
  });
}

void DialogScript::ExpectCancelled(DialogKind kind) {
  Expect(kind, [](QDialog& dialog) { dialog.reject(); });
}

void DialogScript::Expect(DialogKind kind, Answer answer) {
  expected_.push_back({kind, [](const ShownDialog&) { return true; }, "any", std::move(answer)});
}

DialogScript::Answer DialogScript::ConfirmFile(const QString& path) {
  return [path](QDialog& dialog) {
    auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
    if (name == nullptr) {
      ADD_FAILURE() << "the file dialog has no name field; is it a native one?";
      return;
    }
    // As for a user, the typed name counts only in the field that has the focus.
    dialog.activateWindow();
    name->setFocus();
    QCoreApplication::processEvents();
    name->setText(path);
    // What the Open or Save button and the Enter key do; the slot is not public in QFileDialog.
    QMetaObject::invokeMethod(&dialog, "accept");
  };
}

void DialogScript::Verify() {
  for (const Expectation& missing : expected_) {
    ADD_FAILURE() << "no " << KindName(missing.Kind) << " dialog came: " << missing.What.toStdString();
  }
  expected_.clear();
}

QStringList DialogScript::MessageTexts() const {
  QStringList texts;
  for (const ShownDialog& dialog : shown_) {
    if (dialog.Kind == DialogKind::Message) {
      texts.append(dialog.Text);
    }
  }
  return texts;
}

bool DialogScript::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Show) {
    auto* dialog = qobject_cast<QDialog*>(watched);
    if (dialog != nullptr && dialog->isWindow()) {
      // The dialog's own event loop starts after it was shown, and delivers this call first of all.
      const auto answer = [script = QPointer<DialogScript>(this), dialog] {
        if (script) {
          script->AnswerDialog(*dialog);
        }
      };
      QMetaObject::invokeMethod(dialog, answer, Qt::QueuedConnection);
    }
  }
  return QObject::eventFilter(watched, event);
}

void DialogScript::AnswerDialog(QDialog& dialog) {
  const ShownDialog shown = Describe(dialog);
  shown_.push_back(shown);
  const QPointer<QDialog> guarded(&dialog);
  const bool isNext =
      !expected_.empty() && expected_.front().Kind == shown.Kind && expected_.front().Matches(shown);
  if (isNext) {
    const Expectation next = expected_.front();
    expected_.pop_front();
    next.React(dialog);
  } else if (messagesAllowed_ && shown.Kind == DialogKind::Message) {
    dialog.accept();
  } else {
    ADD_FAILURE() << "unexpected " << KindName(shown.Kind) << " dialog \"" << shown.Title.toStdString()
                  << "\": " << shown.Text.toStdString()
                  << (expected_.empty() ? ""
                                        : "\n  expected: " + KindName(expected_.front().Kind) + ' ' +
                                              expected_.front().What.toStdString());
    dialog.reject();
  }
  if (guarded && guarded->isVisible()) {
    ADD_FAILURE() << "the answer did not close the " << KindName(shown.Kind) << " dialog";
    guarded->reject();
  }
}

}  // namespace quillmark::test
