// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/viewer/checkresults.h>

#include <QIcon>
#include <QPalette>
#include <QRectF>

QT_BEGIN_NAMESPACE
class QPainter;
QT_END_NAMESPACE

namespace lorix::viewer {

/// Draws the mark of a state: a round tick, a pointed exclamation mark or a
/// dashed ring. The shapes differ, so that no one needs to see colours.
void drawMark(QPainter& painter, const QRectF& where, CheckState state, const QPalette& palette);

/// The same as an icon of 16 by 16.
QIcon markIcon(CheckState state, const QPalette& palette);

/// The pictures on the buttons.
enum class Symbol { Open, Check, Find, Extract, Compare, ZoomIn, ZoomOut, Fit, Step, File, Nested };

/// A symbol in the colours of a palette, so that it shows on dark and on light.
QIcon symbolIcon(Symbol symbol, const QPalette& palette);
} // namespace lorix::viewer
