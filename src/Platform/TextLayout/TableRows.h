#pragma once

#include <QRect>

#include <vector>

namespace Platform {

/// Whether the boxes on the left and on the right of a strip are cells of the same rows. Lines of
/// two text columns may stand in rows too, but are long; the lines of cards don't follow each other
/// at one step; and two or three rows are as likely anything else side by side.
bool areCellsOfOneTable(const std::vector<QRect>& left, const std::vector<QRect>& right);

} // namespace Platform
