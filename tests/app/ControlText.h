#pragma once

#include <string>

#include <QAbstractItemView>
#include <QAccessible>
#include <QAction>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QSplitter>
#include <QTabBar>
#include <QTableView>

/// What controls are to those who do not see them or do not use a mouse, in a line each.
namespace quillmark::test {

/// Where the text stands, if not at the left and half way down.
inline void TellAlignment(Qt::Alignment alignment, QStringList& facts) {
  if (alignment.testFlag(Qt::AlignRight)) {
    facts.append("at the right");
  } else if (alignment.testFlag(Qt::AlignHCenter)) {
    facts.append("in the middle");
  }
  if (alignment.testFlag(Qt::AlignTop)) {
    facts.append("at the top");
  }
}

inline void TellLabel(const QLabel& label, QStringList& facts) {
  TellAlignment(label.alignment(), facts);
  facts.append(label.textFormat() == Qt::PlainText  ? "plain"
               : label.textFormat() == Qt::RichText ? "rich"
                                                    : "plain or rich");
  if (label.wordWrap()) {
    facts.append("wraps");
  }
  if (label.textInteractionFlags().testFlag(Qt::TextSelectableByMouse)) {
    facts.append("selectable");
  }
}

inline void TellTable(const QTableView& table, QStringList& facts) {
  const QHeaderView& columns = *table.horizontalHeader();
  const std::pair<bool, const char*> said[] = {
      {table.selectionBehavior() == QAbstractItemView::SelectRows, "rows"},
      {table.selectionMode() == QAbstractItemView::SingleSelection, "one"},
      {table.selectionMode() == QAbstractItemView::ExtendedSelection, "many"},
      {table.editTriggers() != QAbstractItemView::NoEditTriggers, "editable"},
      {table.tabKeyNavigation(), "keeps Tab"},
      {table.showGrid(), "grid"},
      {table.alternatingRowColors(), "striped"},
      {table.wordWrap(), "wraps"},
      {table.isCornerButtonEnabled(), "corner"},
      {!table.verticalHeader()->isHidden(), "numbered"},
      {table.horizontalScrollMode() == QAbstractItemView::ScrollPerPixel, "smooth"},
      {columns.highlightSections(), "bold headings"},
      {columns.sectionsMovable(), "movable"},
      {columns.sectionsClickable(), "clickable"},
      {columns.isSortIndicatorShown(), "sorts"},
      {columns.stretchLastSection(), "fills"},
      {columns.defaultAlignment().testFlag(Qt::AlignLeft), "headings at the left"}};
  for (const auto& [is, text] : said) {
    if (is) {
      facts.append(text);
    }
  }
  // Of all rows otherwise.
  if (columns.resizeContentsPrecision() == 0) {
    facts.append("fits what is in sight");
  }
}

/// A line for each column: "  heading, 'in words', right".
inline QString ColumnTexts(const QTableView& table) {
  QString texts;
  const QAbstractItemModel& model = *table.model();
  for (int column = 0; column < model.columnCount(); ++column) {
    const auto data = [&](int role) { return model.headerData(column, Qt::Horizontal, role); };
    texts += "  " + data(Qt::DisplayRole).toString();
    if (data(Qt::ToolTipRole).isValid()) {
      texts += ", '" + data(Qt::ToolTipRole).toString() + '\'';
    }
    texts += (data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight) != 0 ? ", right" : "";
    texts += table.isColumnHidden(column) ? ", hidden\n" : "\n";
  }
  return texts;
}

inline void TellKind(const QWidget& control, QStringList& facts) {
  if (const auto* label = qobject_cast<const QLabel*>(&control)) {
    TellLabel(*label, facts);
  } else if (const auto* table = qobject_cast<const QTableView*>(&control)) {
    TellTable(*table, facts);
  } else if (const auto* line = qobject_cast<const QLineEdit*>(&control)) {
    TellAlignment(line->alignment(), facts);
    if (line->maxLength() != 32767) {
      facts.append(QStringLiteral("%1 signs").arg(line->maxLength()));
    }
    if (line->isReadOnly()) {
      facts.append("read only");
    }
    if (line->isClearButtonEnabled()) {
      facts.append("can be cleared");
    }
    if (!line->placeholderText().isEmpty()) {
      facts.append('"' + line->placeholderText() + '"');
    }
  } else if (const auto* text = qobject_cast<const QPlainTextEdit*>(&control)) {
    facts.append(text->isReadOnly() ? "read only" : "editable");
    facts.append(text->tabChangesFocus() ? "Tab goes on" : "keeps Tab");
    if (text->isUndoRedoEnabled()) {
      facts.append("remembers");
    }
  } else if (const auto* button = qobject_cast<const QPushButton*>(&control)) {
    if (button->isDefault()) {
      facts.append("default");
    } else if (button->autoDefault()) {
      facts.append("Return");
    }
  } else if (const auto* spin = qobject_cast<const QSpinBox*>(&control)) {
    facts.append(QStringLiteral("%1 to %2%3").arg(spin->minimum()).arg(spin->maximum()).arg(spin->suffix()));
    if (spin->singleStep() != 1) {
      facts.append(QStringLiteral("by %1").arg(spin->singleStep()));
    }
    if (!spin->keyboardTracking()) {
      facts.append("tells when all is typed");
    }
  } else if (const auto* slider = qobject_cast<const QSlider*>(&control)) {
    facts.append(QStringLiteral("%1 to %2 by %3 or %4")
                     .arg(slider->minimum())
                     .arg(slider->maximum())
                     .arg(slider->singleStep())
                     .arg(slider->pageStep()));
  } else if (const auto* list = qobject_cast<const QComboBox*>(&control)) {
    facts.append(QStringLiteral("%1 of %2").arg(list->currentIndex()).arg(list->count()));
    if (list->sizeAdjustPolicy() == QComboBox::AdjustToMinimumContentsLengthWithIcon) {
      facts.append(QStringLiteral("%1 letters").arg(list->minimumContentsLength()));
    }
  } else if (const auto* splitter = qobject_cast<const QSplitter*>(&control)) {
    for (int i = 0; i < splitter->count(); ++i) {
      facts.append(splitter->childrenCollapsible() && splitter->isCollapsible(i) ? "collapses" : "stays");
    }
  }
}

/// "Name 'accessible name', 'tooltip', Tab click, ...".
inline QString ControlText(const QWidget& control) {
  QStringList facts;
  const QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&control));
  facts.append(control.objectName() + " '" + (seen == nullptr ? QString() : seen->text(QAccessible::Name)) +
               '\'');
  if (!control.toolTip().isEmpty()) {
    facts.append('\'' + control.toolTip() + '\'');
  }
  if (control.focusPolicy() != Qt::NoFocus) {
    static constexpr const char* Policies[] = {"", "Tab", "click", "Tab click"};
    facts.append(control.focusPolicy() == Qt::WheelFocus ? "Tab click wheel"
                                                         : Policies[control.focusPolicy() & 3]);
  }
  const auto* button = qobject_cast<const QAbstractButton*>(&control);
  if (button != nullptr && button->isChecked()) {
    facts.append("on");
  }
  if (!control.isEnabled()) {
    facts.append("disabled");
  }
  if (control.isHidden()) {
    facts.append("hidden");
  }
  const bool isText = qobject_cast<const QLineEdit*>(&control) != nullptr ||
                      qobject_cast<const QPlainTextEdit*>(&control) != nullptr;
  if (control.testAttribute(Qt::WA_SetCursor) && !isText) {
    facts.append(control.cursor().shape() == Qt::PointingHandCursor ? "hand" : "other pointer");
  }
  if (control.acceptDrops() && !isText) {
    facts.append("takes drops");
  }
  if (control.contextMenuPolicy() != Qt::DefaultContextMenu) {
    facts.append(control.contextMenuPolicy() == Qt::ActionsContextMenu ? "menu of its own"
                 : control.contextMenuPolicy() == Qt::NoContextMenu    ? "no menu"
                                                                       : "other menu");
  }
  TellKind(control, facts);
  return facts.join(", ").replace(QChar::Nbsp, ' ');
}

/// Of all named controls in it but menus, and of what is written beside them; a line each.
inline std::string ControlTexts(const QWidget& window) {
  QString texts = "\n";
  for (const QWidget* control : window.findChildren<QWidget*>()) {
    const auto* label = qobject_cast<const QLabel*>(control);
    if (label != nullptr && label->buddy() != nullptr) {
      texts += label->text() + " for " + label->buddy()->objectName() + '\n';
    } else if (label != nullptr && label->objectName().isEmpty() && !label->text().isEmpty()) {
      texts += "Text '" + label->text() + "'\n";
    } else if (const auto* button = qobject_cast<const QPushButton*>(control);
               button != nullptr && button->objectName().isEmpty()) {
      texts += "Button" + ControlText(*control) + '\n';
    } else if (qobject_cast<const QSplitter*>(control) != nullptr && control->objectName().isEmpty()) {
      texts += "Splitter" + ControlText(*control) + '\n';
    } else if (!control->objectName().isEmpty() && !control->objectName().startsWith("qt_") &&
               qobject_cast<const QMenu*>(control) == nullptr &&
               qobject_cast<const QMenuBar*>(control) == nullptr &&
               qobject_cast<const QTabBar*>(control->parentWidget()) == nullptr) {
      texts += ControlText(*control) + '\n';
      if (const auto* table = qobject_cast<const QTableView*>(control)) {
        texts += ColumnTexts(*table);
      }
    }
  }
  return texts.toStdString();
}

/// "Name 'text', keys", and whether it can be and is chosen.
inline std::string ActionTexts(const QWidget& window) {
  QString texts = "\n";
  for (const QAction* action : window.findChildren<QAction*>()) {
    if (action->objectName().startsWith("Action_")) {
      QStringList facts = {action->objectName() + " '" + action->text() + '\''};
      for (const QKeySequence& keys : action->shortcuts()) {
        facts.append(keys.toString());
      }
      if (action->isCheckable()) {
        facts.append(action->isChecked() ? "on" : "off");
      }
      if (!action->isEnabled()) {
        facts.append("disabled");
      }
      if (!action->isVisible()) {
        facts.append("hidden");
      }
      texts += facts.join(", ") + '\n';
    }
  }
  return texts.toStdString();
}

/// "Name 'title': what it holds", a line for each menu; "-" is a line between entries.
inline std::string MenuTexts(const QWidget& window) {
  QString texts = "\n";
  for (const QMenu* menu : window.findChildren<QMenu*>()) {
    if (menu->objectName().startsWith("Menu_")) {
      QStringList entries;
      for (const QAction* action : menu->actions()) {
        entries.append(action->isSeparator()            ? "-"
                       : action->menu() != nullptr      ? action->menu()->objectName()
                       : action->objectName().isEmpty() ? action->text()
                                                        : action->objectName().remove("Action_"));
      }
      texts += menu->objectName() + " '" + menu->title() + "': " + entries.join(", ") + '\n';
    }
  }
  return texts.toStdString();
}

}  // namespace quillmark::test
