// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/marks.h>

#include <apps/viewer/colours.h>

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace lorix::viewer {

namespace {

void drawValid(QPainter& painter, bool dark)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(dark ? QColor(0x3f, 0xb9, 0x6b) : QColor(0x1b, 0x7f, 0x3f));
    painter.drawEllipse(QRectF(1, 1, 14, 14));
    painter.setPen(
        QPen(dark ? Qt::black : Qt::white, 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF({{4.6, 8.4}, {7.0, 10.8}, {11.4, 5.6}}));
}

void drawDamaged(QPainter& painter, bool dark)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(dark ? QColor(0xff, 0x7b, 0x72) : QColor(0xb3, 0x1d, 0x28));
    QPainterPath triangle;
    triangle.addPolygon(QPolygonF({{8, 0.5}, {15.7, 15}, {0.3, 15}, {8, 0.5}}));
    painter.drawPath(triangle);
    painter.setPen(QPen(dark ? Qt::black : Qt::white, 2.0, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(8, 5.6), QPointF(8, 9.8));
    painter.drawPoint(QPointF(8, 12.7));
}

void drawNotChecked(QPainter& painter, const QPalette& palette)
{
    painter.setBrush(Qt::NoBrush);
    QColor color = palette.color(QPalette::WindowText);
    color.setAlphaF(0.75F);
    painter.setPen(QPen(color, 1.4, Qt::DotLine));
    painter.drawEllipse(QRectF(2, 2, 12, 12));
}

using Draw = void (*)(QPainter&);

void drawOpen(QPainter& p)
{
    p.drawPolyline(QPolygonF({{1.5, 13}, {1.5, 3}, {6, 3}, {7.5, 5}, {13, 5}, {13, 7}}));
    p.drawPolygon(QPolygonF({{1.5, 13}, {4, 7.4}, {15, 7.4}, {12.6, 13}}));
}

void drawCheck(QPainter& p)
{
    p.drawPolygon(QPolygonF({{8, 1}, {14, 3}, {13.4, 9}, {8, 15}, {2.6, 9}, {2, 3}}));
    p.drawPolyline(QPolygonF({{5, 7.4}, {7.3, 9.8}, {11, 5.2}}));
}

void drawFind(QPainter& p)
{
    p.drawEllipse(QRectF(1.5, 1.5, 9, 9));
    p.drawLine(QPointF(9.6, 9.6), QPointF(14.5, 14.5));
}

void drawExtract(QPainter& p)
{
    p.drawPolyline(QPolygonF({{4, 7}, {1.5, 7}, {1.5, 14.5}, {14.5, 14.5}, {14.5, 7}, {12, 7}}));
    p.drawLine(QPointF(8, 11), QPointF(8, 1.5));
    p.drawPolyline(QPolygonF({{4.8, 4.8}, {8, 1.5}, {11.2, 4.8}}));
}

void drawCompare(QPainter& p)
{
    p.drawRect(QRectF(1.2, 2, 5, 12));
    p.drawRect(QRectF(9.8, 2, 5, 12));
    p.drawLine(QPointF(6.2, 6), QPointF(9.8, 6));
    p.drawLine(QPointF(6.2, 10), QPointF(9.8, 10));
}

void drawZoomIn(QPainter& p)
{
    drawFind(p);
    p.drawLine(QPointF(3.8, 6), QPointF(8.2, 6));
    p.drawLine(QPointF(6, 3.8), QPointF(6, 8.2));
}

void drawZoomOut(QPainter& p)
{
    drawFind(p);
    p.drawLine(QPointF(3.8, 6), QPointF(8.2, 6));
}

void drawFit(QPainter& p)
{
    for (const qreal x : {1.5, 14.5})
        for (const qreal y : {1.5, 14.5}) {
            const qreal dx = x < 8 ? 4 : -4;
            const qreal dy = y < 8 ? 4 : -4;
            p.drawPolyline(QPolygonF({{x + dx, y}, {x, y}, {x, y + dy}}));
        }
    p.drawRect(QRectF(5, 5.5, 6, 5));
}

void drawStep(QPainter& p)
{
    p.drawRoundedRect(QRectF(1.5, 3, 13, 10), 2.5, 2.5);
    p.drawLine(QPointF(4, 6.4), QPointF(12, 6.4));
    p.drawLine(QPointF(4, 9.6), QPointF(9, 9.6));
}

void drawFile(QPainter& p)
{
    p.drawPolygon(QPolygonF({{3, 1.2}, {9.6, 1.2}, {13, 4.6}, {13, 14.8}, {3, 14.8}}));
    p.drawPolyline(QPolygonF({{9.6, 1.2}, {9.6, 4.6}, {13, 4.6}}));
}

void drawNested(QPainter& p)
{
    drawFile(p);
    p.drawRect(QRectF(5.2, 7, 5.6, 2));
    p.drawRect(QRectF(5.2, 10.8, 5.6, 2));
}

Draw drawing(Symbol symbol)
{
    static const Draw all[] = {drawOpen,    drawCheck,  drawFind,    drawExtract,
                               drawCompare, drawZoomIn, drawZoomOut, drawFit,
                               drawStep,    drawFile,   drawNested};
    return all[static_cast<int>(symbol)];
}

template <typename Paint>
QPixmap pixmapOf(int side, const Paint& paint)
{
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(side / 16.0, side / 16.0);
    paint(painter);
    return pixmap;
}

} // namespace

void drawMark(QPainter& painter, const QRectF& where, CheckState state, const QPalette& palette)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(where.topLeft());
    painter.scale(where.width() / 16.0, where.height() / 16.0);
    if (state == CheckState::Valid)
        drawValid(painter, isDark(palette));
    else if (state == CheckState::Damaged)
        drawDamaged(painter, isDark(palette));
    else
        drawNotChecked(painter, palette);
    painter.restore();
}

QIcon markIcon(CheckState state, const QPalette& palette)
{
    QIcon icon;
    for (const int side : {16, 24, 32, 48})
        icon.addPixmap(pixmapOf(side, [&](QPainter& painter) {
            drawMark(painter, QRectF(0, 0, 16, 16), state, palette);
        }));
    return icon;
}

QIcon symbolIcon(Symbol symbol, const QPalette& palette)
{
    QIcon icon;
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Disabled}) {
        const auto group = mode == QIcon::Normal ? QPalette::Active : QPalette::Disabled;
        for (const int side : {16, 24, 32, 48})
            icon.addPixmap(pixmapOf(side,
                                    [&](QPainter& painter) {
                                        painter.setPen(
                                            QPen(palette.color(group, QPalette::WindowText), 1.15,
                                                 Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
                                        drawing(symbol)(painter);
                                    }),
                           mode);
    }
    return icon;
}

} // namespace lorix::viewer
