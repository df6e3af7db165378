#pragma once

#include <array>

#include <QList>
#include <QWidget>

#include "app/Document.h"

class QComboBox;
class QGridLayout;
class QPushButton;

namespace quillmark {

/// What becomes of the pixel codes of two streams that are merged: which code each of the second stream's
/// becomes, and which palette entries and opacities the codes of the result have. It keeps nothing: what it
/// shows is the document's.
class MergedCodesForm : public QWidget {
  Q_OBJECT

 public:
  MergedCodesForm(const Document& document, QWidget* parent);

  /// In the order in which Tab goes through them.
  [[nodiscard]] QList<QWidget*> TabOrder() const;

 signals:
  /// The user chose these.
  void Chosen(const quillmark::MergedCodes& codes);

 private:
  using Lists = std::array<QComboBox*, 4>;

  void Build();
  [[nodiscard]] QComboBox* AddList(const QString& name, std::size_t code, int row, const QString& inWords);
  void Choose(const MergedCodes& codes);
  void ShowCodes();
  void ShowPalette();
  [[nodiscard]] MergedCodes ChosenCodes() const;

  const Document& document_;
  QGridLayout* grid_;
  Lists codes_{};
  Lists colours_{};
  Lists opacities_{};
  QPushButton* default_ = nullptr;
};

}  // namespace quillmark
