#pragma once

#include <QApplication>
#include <QFont>

namespace quillmark::test {

/// While it lives, texts are as wide as users see them: window tests else do without the shaper and its
/// kerning, which take a seventh of their time. A base class stands before the one that makes the window.
class ShapedTexts {
 public:
  ShapedTexts() { SetStrategy(QFont::PreferDefault); }
  ~ShapedTexts() { SetStrategy(QFont::PreferNoShaping); }
  ShapedTexts(const ShapedTexts&) = delete;
  ShapedTexts& operator=(const ShapedTexts&) = delete;

  static void SetStrategy(QFont::StyleStrategy strategy) {
    QFont font = QApplication::font();
    font.setStyleStrategy(strategy);
    QApplication::setFont(font);
  }
};

}  // namespace quillmark::test
