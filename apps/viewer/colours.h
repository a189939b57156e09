// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QColor>
#include <QPalette>

namespace lorix::viewer {

/// How far two opaque colours stand out from one another: 1 for the same, 21 for
/// black and white (the contrast ratio of WCAG 2.1). Text needs 4.5, marks and
/// lines need 3.
double contrast(const QColor& one, const QColor& other);

/// The colour, made lighter or darker as far as it takes to be read on `ground`.
QColor readable(const QColor& colour, const QColor& ground, double least = 4.5);

/// The ground of what is selected, on which QPalette::HighlightedText can be read.
QColor selectionGround(const QPalette& palette);

/// What is wrong, on the ground of texts.
QColor alarmColour(const QPalette& palette);

/// Whether the palette has light text on dark ground.
bool isDark(const QPalette& palette);

} // namespace lorix::viewer
