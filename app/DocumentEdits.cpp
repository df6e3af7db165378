#include <algorithm>
#include <cstddef>
#include <utility>

#include "app/Document.h"
#include "app/Ui.h"

namespace quillmark {
namespace {

/// Whether all that the edit puts in stands there already.
bool ChangesNothing(const std::vector<std::uint8_t>& bytes, const StreamEdit& edit) {
  auto inserted = edit.Bytes.begin();
  for (const StreamEdit::Place& place : edit.Places) {
    const std::size_t end = std::size_t{place.Offset} + place.Removed;
    if (place.Removed != place.Inserted || end > bytes.size() ||
        edit.Bytes.end() - inserted < place.Inserted ||
        !std::equal(bytes.begin() + place.Offset, bytes.begin() + static_cast<std::ptrdiff_t>(end),
                    inserted)) {
      return false;
    }
    inserted += place.Inserted;
  }
  return true;
}

/// A hexadecimal digit for each pixel code, code 0 first.
std::string NibbleDigits(const CodeNibbles& nibbles) {
  std::string digits;
  for (const std::uint8_t nibble : nibbles) {
    digits += "0123456789ABCDEF"[nibble & 0x0FU];
  }
  return digits;
}

/// Whether subtitles may stand elsewhere after the edit.
bool MovesPackets(const StreamEdit& edit) {
  return edit.Reindexes || std::ranges::any_of(edit.Places, [](const StreamEdit::Place& place) {
           return place.Removed != place.Inserted;
         });
}

}  // namespace

/// One step of the history. Doing and undoing are the same exchange.
class Document::EditCommand : public QUndoCommand {
 public:
  EditCommand(Document& document, DocumentEdit edit, Result<void>& outcome)
      : QUndoCommand(edit.Name), document_(document), edit_(std::move(edit)), outcome_(&outcome) {}

  /// What the next exchange puts in.
  [[nodiscard]] const DocumentEdit& Edit() const { return edit_; }

  void redo() override {
    const Result<void> applied = document_.Apply(edit_.What);
    if (!applied) {
      setObsolete(true);
    }
    if (outcome_ != nullptr) {
      *std::exchange(outcome_, nullptr) = applied;
    }
  }
  void undo() override {
    if (!document_.Apply(edit_.What)) {
      setObsolete(true);
    }
  }

 private:
  Document& document_;
  DocumentEdit edit_;
  Result<void>* outcome_;  // of the first time
};

Result<void> Document::Apply(std::variant<StreamEdit, DvdPalette>& what) {
  if (auto* palette = std::get_if<DvdPalette>(&what)) {
    std::swap(palette_, *palette);
    emit PaletteChanged();
    return {};
  }
  auto& edit = std::get<StreamEdit>(what);
  const StreamChange change = MovesPackets(edit) ? StreamChange::Packets : StreamChange::Bytes;
  const std::int32_t count = primary_.Count;
  Result<void> applied = ApplyEdit(primary_, edit);
  if (primary_.Count != count) {
    FollowCount();
  }
  emit StreamChanged(change);
  return applied;
}

void Document::FollowCount() {
  shownIndex_.reset();
  if (!failed_ && number_ > primary_.Count) {
    SetNumber(primary_.Count);
  }
  AllowSteps();
}

CodeAssignment Document::Assignment() const {
  return {.Colours = AllFour(choice_.Colours), .Contrasts = AllFour(choice_.Contrasts)};
}

Result<void> Document::Assign(std::int64_t first, std::int64_t end, const QString& name) {
  if (first < 0 || end <= first) {
    return {};
  }
  SubtitleSet only;
  only.Add({.First = first + 1, .Last = end});
  return MakeAssignment(
      AssignCodes(primary_, static_cast<std::size_t>(first), static_cast<std::size_t>(end), Assignment()),
      name, end - first == primary_.Count ? SubtitleSet::All() : only, true);
}

Result<void> Document::MakeAssignment(StreamEdit edit, const QString& name, const SubtitleSet& only,
                                      bool isOfCurrent) {
  StepText tool{.Tool = "assign",
                .Options = {{"colours", NibbleDigits(choice_.Colours)},
                            {"opacities", NibbleDigits(choice_.Contrasts)}}};
  if (only != SubtitleSet::All()) {
    tool.Options.emplace_back("only", only.Text());
  }
  Result<void> made = Make({.Name = name, .What = std::move(edit), .Tool = std::move(tool)});
  if (made && isOfCurrent) {
    written_ = choice_;
    emit ChoiceChanged();
  }
  return made;
}

Result<void> Document::Make(DocumentEdit edit) {
  const auto* bytes = std::get_if<StreamEdit>(&edit.What);
  if (bytes != nullptr ? ChangesNothing(primary_.RawBytes, *bytes)
                       : std::get<DvdPalette>(edit.What) == palette_) {
    return {};
  }
  emit AboutToEdit(edit);
  Result<void> outcome = Push(std::move(edit));
  if (!outcome) {
    emit Refused();
  }
  return outcome;
}

Result<void> Document::Push(DocumentEdit edit) {
  Result<void> outcome;
  history_.push(new EditCommand(*this, std::move(edit), outcome));
  return outcome;
}

const DocumentEdit& Document::EditAt(int step) const {
  return static_cast<const EditCommand*>(history_.command(step))->Edit();
}

Result<void> Document::Restore(std::vector<DocumentEdit> edits, std::size_t done) {
  for (DocumentEdit& edit : edits) {
    if (Result<void> outcome = Push(std::move(edit)); !outcome) {
      history_.setIndex(0);
      history_.clear();
      return outcome;
    }
  }
  history_.setIndex(static_cast<int>(done));
  return {};
}

Result<void> Document::SetActual() {
  return HasSubtitle() ? Assign(Number() - 1, Number(), Ui::Tr("Set for actual")) : Result<void>();
}

Result<void> Document::SetAll() {
  return Assign(0, primary_.Count, Ui::Tr("Set for all"));
}

Result<void> Document::SetSelected(std::span<const std::size_t> indexes) {
  CodeAssignment codes = Assignment();
  codes.NeedsCommands = true;
  const auto current = static_cast<std::size_t>(Number() - 1);
  SubtitleSet only;
  for (const std::size_t index : indexes) {
    only.Append(static_cast<std::int64_t>(index) + 1);
  }
  return MakeAssignment(AssignCodes(primary_, indexes, codes), Ui::Tr("Set for selected"), only,
                        HasSubtitle() && std::ranges::binary_search(indexes, current) &&
                            HasCommandsFor(primary_, current, codes));
}

Result<void> Document::SetPalette(const DvdPalette& palette, const QString& name) {
  return Make({.Name = name, .What = palette});
}

void Document::Undo() {
  if (Enabled().Undo) {
    emit AboutToUndo(EditAt(history_.index() - 1));
    history_.undo();
  }
}

void Document::Redo() {
  if (Enabled().Redo) {
    emit AboutToRedo(EditAt(history_.index()));
    history_.redo();
  }
}

void Document::MarkSaved() {
  history_.setClean();
  emit Saved();
}

}  // namespace quillmark
