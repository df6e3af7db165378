#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include <QLabel>
#include <QWidget>
#include <gtest/gtest.h>

/// Where controls stand in a window.
namespace quillmark::test {

inline std::vector<QWidget*> VisibleControls(const QWidget& window) {
  std::vector<QWidget*> controls;
  for (QWidget* control : window.findChildren<QWidget*>()) {
    if (control->isVisible() && !control->isWindow() && control->window() == window.window()) {
      controls.push_back(control);
    }
  }
  return controls;
}

inline QRect PlaceIn(const QWidget& window, const QString& name) {
  const auto* control = window.findChild<QWidget*>(name);
  return control == nullptr || !control->isVisible()
             ? QRect()
             : QRect(control->mapTo(&window, QPoint()), control->size());
}

/// No control lies over another one, nor outside of what it is in; what is written beside one is before it.
inline void ExpectApart(const QWidget& window) {
  const std::vector<QWidget*> controls = VisibleControls(window);
  for (const QWidget* one : controls) {
    EXPECT_TRUE(one->parentWidget()->rect().contains(one->geometry()))
        << one->metaObject()->className() << ' ' << one->objectName().toStdString();
    for (const QWidget* other : controls) {
      if (one < other && one->parentWidget() == other->parentWidget()) {
        EXPECT_FALSE(one->geometry().intersects(other->geometry()))
            << one->objectName().toStdString() << " and " << other->objectName().toStdString();
      }
    }
    const auto* label = qobject_cast<const QLabel*>(one);
    if (label != nullptr && label->buddy() != nullptr) {
      const QRect text(label->mapTo(&window, QPoint()), label->size());
      const QRect named(label->buddy()->mapTo(&window, QPoint()), label->buddy()->size());
      const bool isAbove = text.bottom() < named.top();
      const bool isLeft = text.right() < named.left() && text.bottom() > named.top();
      EXPECT_TRUE(isAbove || isLeft) << label->text().toStdString();
    }
  }
}

/// Each begins below the one before it.
inline void ExpectDownwards(const QWidget& window, std::initializer_list<const char*> names) {
  int bottom = -1;
  for (const char* name : names) {
    const QRect place = PlaceIn(window, name);
    EXPECT_GT(place.top(), bottom) << name;
    bottom = place.bottom();
  }
}

/// Each begins right of the one before it, and all in one line.
inline void ExpectAcross(const QWidget& window, std::initializer_list<const char*> names) {
  int right = -1;
  QRect first;
  for (const char* name : names) {
    const QRect place = PlaceIn(window, name);
    EXPECT_GT(place.left(), right) << name;
    EXPECT_TRUE(first.isNull() || (place.top() <= first.bottom() && place.bottom() >= first.top())) << name;
    right = place.right();
    first = first.isNull() ? place : first;
  }
}

}  // namespace quillmark::test
