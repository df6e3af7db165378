#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include <QString>

#include "base/Progress.h"

class QWidget;

namespace quillmark {

/// How long work goes on before a dialog tells of it; none: no dialog comes.
using Patience = std::optional<std::chrono::milliseconds>;
inline constexpr std::chrono::milliseconds UsualPatience(500);

/// Runs `work` in a thread of its own and comes back when it has ended. The owner's window is painted
/// meanwhile and takes no input; a dialog named ProgressDialog shows how far the work is, and whoever cancels
/// or closes it ends the work at its next step. Cancelled is told also where the work was done by then.
/// `work` lets no exception out; `what` is for the dialog: "Reading movie.vob".
[[nodiscard]] Completion RunLongWork(QWidget* owner, const QString& what, Patience patience,
                                     const std::function<void(const Progress&)>& work);

}  // namespace quillmark
