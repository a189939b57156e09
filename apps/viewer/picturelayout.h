// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/viewer/history.h>

#include <QList>
#include <QPointF>
#include <QRectF>
#include <QVector>

namespace lorix::viewer {

/// Where the boxes of a history stand in its picture.
///
/// The steps of a container stand below one another, the newest on top. The
/// steps of a container that a step embeds stand to the right of that step,
/// inside a frame.
struct PictureLayout
{
    /// Lays out `history`; `heights` holds each step's height by node.
    PictureLayout(const History& history, const QList<qreal>& heights);

    static constexpr qreal boxWidth = 300;
    static constexpr qreal columnGap = 76;
    static constexpr qreal rowGap = 34;
    static constexpr qreal frameMargin = 16;
    static constexpr qreal frameTitle = 26; ///< Height of the line that names a frame.

    QList<QPointF> boxes; ///< Top left corner by node.
    QList<QRectF> frames; ///< Around its boxes, by container.
    QRectF bounds;        ///< Around everything.
};

} // namespace lorix::viewer
