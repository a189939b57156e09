// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/picturelayout.h>

#include <algorithm>

namespace lorix::viewer {

// Nodes come depth first: a step, all that is nested in it, the next older step.
// `bottoms` holds for every container how far down it reaches, all that it
// embeds included.
PictureLayout::PictureLayout(const History& history, const QList<qreal>& heights)
{
    const QList<HistoryContainer>& containers = history.containers();
    boxes.resize(history.steps().size());
    frames.resize(containers.size());
    QList<qreal> bottoms(containers.size(), 0.0);
    QList<bool> begun(containers.size(), false);

    for (int node = 0; node < boxes.size(); ++node) {
        const int index = history.step(node).container;
        const HistoryContainer& container = containers.at(index);
        const qreal x = container.depth * (boxWidth + columnGap);
        qreal y = bottoms.at(index) + rowGap;
        if (!begun.at(index)) {
            begun[index] = true;
            y = frameTitle + frameMargin;
            if (container.parent >= 0) {
                const qreal stepTop = boxes.at(container.embedding.node).y();
                const qreal stepBottom = stepTop + heights.at(container.embedding.node);
                const qreal reached = bottoms.at(container.parent);
                // The first one stands beside its step, others below that.
                const qreal top = reached > stepBottom ? reached + frameMargin : stepTop;
                y = top + frameTitle + frameMargin;
            }
            frames[index] = QRectF(x - frameMargin, y - frameTitle - frameMargin,
                                   boxWidth + 2 * frameMargin, 0);
        }
        boxes[node] = QPointF(x, y);
        const qreal bottom = y + heights.at(node);
        frames[index].setBottom(bottom + frameMargin);
        bottoms[index] = bottom;
        for (int around = container.parent; around >= 0; around = containers.at(around).parent)
            bottoms[around] = std::max(bottoms.at(around), bottom + frameMargin);
    }
    for (const QRectF& frame : frames)
        bounds |= frame;
}

} // namespace lorix::viewer
