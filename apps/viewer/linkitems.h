// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QGraphicsItem>
#include <QPolygonF>

namespace lorix::viewer {

/// The frame around the steps of one container, with the container's name.
class FrameItem : public QGraphicsItem
{
public:
    FrameItem(const QRectF& frame, const QString& title);
    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

private:
    QRectF m_frame;
    QString m_title;
};

/// A line between two boxes, with an arrow head at its end.
class LinkItem : public QGraphicsItem
{
public:
    /// Dashed where a file leads to the history inside of it.
    LinkItem(const QPolygonF& way, bool dashed);
    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

private:
    QPolygonF m_way;
    bool m_dashed;
};

} // namespace lorix::viewer
