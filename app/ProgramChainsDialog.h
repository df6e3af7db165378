#pragma once

#include <cstddef>
#include <optional>

#include <QDialog>
#include <QString>

#include "containers/Ifo.h"
#include "sup/SupStream.h"

class QTableView;

namespace quillmark {

class SubtitleFrame;

/// What the palettes are tried on. The stream must not change while the dialog is open.
struct ChainTrial {
  const SupStream& Stream;
  std::optional<std::size_t> Index;  ///< of the subtitle shown, from 0; the stream holds it
  const DvdPalette& Present;
  int FrameLines = 576;
};

/// Shows every program chain of a disc's information file: its palette, and a subtitle in it.
class ProgramChainsDialog : public QDialog {
  Q_OBJECT

 public:
  /// `name` is the file's; `info` has at least one chain and must live as long as the dialog.
  ProgramChainsDialog(const QString& name, const IfoInfo& info, ChainTrial trial, QWidget* parent);

  [[nodiscard]] const ProgramChain& Chosen() const;

 private:
  void BuildList(const QString& name);
  [[nodiscard]] int FirstChoice() const;
  void ShowChain();

  const IfoInfo& info_;
  ChainTrial trial_;
  QTableView* List_ProgramChains = nullptr;
  SubtitleFrame* Picture_Chain = nullptr;
};

}  // namespace quillmark
