#pragma once

#include "Model/TextSearch.h"

#include <QList>
#include <QRectF>

class QTextLayout;

namespace Lumenote {

/// What @p range covers in a laid-out text, in its coordinates: a rectangle for each line that it
/// reaches, and more where writing changes its direction.
QList<QRectF> rectsOf(const TextSearch::Range& range, const QTextLayout& layout);

} // namespace Lumenote
