#pragma once

#include <QRectF>

#include "sup/StreamProblem.h"

class QPainter;

namespace quillmark {

/// The side, in logical pixels, that the icons are made for.
inline constexpr int SeverityIconSide = 14;

/// How bad a problem is, told by shape as well as by colour: a red disc with a cross where nothing can be
/// shown, an amber triangle with a bar where it is shown wrongly, a blue diamond with a dot where it is
/// untidy. A pale edge keeps them apart from whatever they stand on.
void PaintSeverity(QPainter& painter, const QRectF& where, ProblemSeverity severity);

}  // namespace quillmark
