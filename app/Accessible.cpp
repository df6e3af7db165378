#include "app/Accessible.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QComboBox>

#include "app/DisplayFrame.h"

namespace quillmark {
namespace {

class AccessiblePicture : public QAccessibleWidget, public QAccessibleImageInterface {
 public:
  explicit AccessiblePicture(DisplayFrame* frame) : QAccessibleWidget(frame, QAccessible::Graphic) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::ImageInterface ? static_cast<QAccessibleImageInterface*>(this)
                                               : QAccessibleWidget::interface_cast(type);
  }
  QString imageDescription() const override { return text(QAccessible::Description); }
  QSize imageSize() const override { return widget()->size(); }
  QPoint imagePosition() const override { return widget()->mapToGlobal(QPoint()); }
};

/// On Linux Qt gives a combo box's value as its name, so that nobody hears which list it is.
class AccessibleList : public QAccessibleWidget {
 public:
  explicit AccessibleList(QComboBox* list) : QAccessibleWidget(list, QAccessible::ComboBox) {}

  QString text(QAccessible::Text kind) const override {
    if (kind != QAccessible::Value) {
      return QAccessibleWidget::text(kind);
    }
    const QString inWords = List().currentData(Qt::AccessibleTextRole).toString();
    return inWords.isEmpty() ? List().currentText() : inWords;
  }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.expandable = true;
    state.expanded = List().view()->isVisible();
    return state;
  }

  int childCount() const override { return 1; }
  QAccessibleInterface* child(int index) const override {
    return index == 0 ? QAccessible::queryAccessibleInterface(List().view()) : nullptr;
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return child != nullptr && child->object() == List().view() ? 0 : -1;
  }

  QStringList actionNames() const override {
    return QStringList{showMenuAction(), pressAction()} + QAccessibleWidget::actionNames();
  }
  void doAction(const QString& name) override {
    if (name != showMenuAction() && name != pressAction()) {
      QAccessibleWidget::doAction(name);
    } else if (List().view()->isVisible()) {
      List().hidePopup();
    } else if (List().isEnabled()) {
      List().showPopup();
    }
  }

 private:
  [[nodiscard]] QComboBox& List() const { return *static_cast<QComboBox*>(widget()); }
};

QAccessibleInterface* MakeInterface(const QString& /*className*/, QObject* object) {
  if (auto* frame = qobject_cast<DisplayFrame*>(object)) {
    return new AccessiblePicture(frame);
  }
  if (auto* list = qobject_cast<QComboBox*>(object); list != nullptr && !list->isEditable()) {
    return new AccessibleList(list);
  }
  return nullptr;
}

}  // namespace

void InstallAccessibility() {
  QAccessible::installFactory(MakeInterface);
}

}  // namespace quillmark
