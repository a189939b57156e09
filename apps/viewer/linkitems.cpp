// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/linkitems.h>

#include <apps/viewer/picturelayout.h>

#include <QApplication>
#include <QPainter>
#include <QPalette>
#include <QStyleOptionGraphicsItem>
#include <QWidget>

namespace lorix::viewer {

FrameItem::FrameItem(const QRectF& frame, const QString& title) : m_frame(frame), m_title(title)
{
    setZValue(-2);
}

QRectF FrameItem::boundingRect() const
{
    return m_frame.adjusted(-2, -2, 2, 2);
}

void FrameItem::paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget)
{
    // The option keeps the palette that was in force when the scene was made.
    const QPalette palette = widget ? widget->palette() : option->palette;
    QColor ground = palette.color(QPalette::Text);
    ground.setAlphaF(0.05F);
    QColor line = palette.color(QPalette::Text);
    line.setAlphaF(0.25F);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(line, 1));
    painter->setBrush(ground);
    painter->drawRoundedRect(m_frame, 12, 12);
    QFont font = QApplication::font();
    font.setPixelSize(13);
    painter->setFont(font);
    painter->setPen(palette.color(QPalette::Text));
    const QRectF title(m_frame.left() + PictureLayout::frameMargin, m_frame.top() + 6,
                       m_frame.width() - 2 * PictureLayout::frameMargin, PictureLayout::frameTitle);
    painter->drawText(title, Qt::AlignVCenter,
                      painter->fontMetrics().elidedText(m_title, Qt::ElideMiddle,
                                                        static_cast<int>(title.width())));
}

LinkItem::LinkItem(const QPolygonF& way, bool dashed) : m_way(way), m_dashed(dashed)
{
    setZValue(-1);
}

QRectF LinkItem::boundingRect() const
{
    return m_way.boundingRect().adjusted(-8, -8, 8, 8);
}

void LinkItem::paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget)
{
    const QPalette palette = widget ? widget->palette() : option->palette;
    QColor line = palette.color(QPalette::Text);
    line.setAlphaF(0.7F);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(line, 1.6, m_dashed ? Qt::DashLine : Qt::SolidLine));
    painter->drawPolyline(m_way);
    const QPointF tip = m_way.last();
    const QPointF back = tip - m_way.at(m_way.size() - 2);
    const qreal length = std::max<qreal>(1.0, std::abs(back.x()) + std::abs(back.y()));
    const QPointF along = back / length * 9;
    const QPointF aside(-along.y() * 0.5, along.x() * 0.5);
    painter->setPen(Qt::NoPen);
    painter->setBrush(line);
    painter->drawPolygon(QPolygonF({tip, tip - along + aside, tip - along - aside}));
}

} // namespace lorix::viewer
