// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/stepitem.h>

#include <apps/viewer/colours.h>
#include <apps/viewer/marks.h>
#include <apps/viewer/picturelayout.h>
#include <apps/viewer/words.h>

#include <QApplication>
#include <QCoreApplication>
#include <QPainter>
#include <QPalette>
#include <QRegularExpression>
#include <QStyleOptionGraphicsItem>
#include <QWidget>

namespace lorix::viewer {

namespace {

const int fileLines = 5;
const qreal padding = 12;
const qreal headHeight = 54; // title and the line below it
const qreal lineHeight = 20;
const qreal markSide = 18;
const qreal smallScale = 0.45; // below, only title and mark can be read

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(StepItem)
};

QList<int> shownFiles(const History& history, int node)
{
    QList<int> files;
    const int count = static_cast<int>(history.step(node).step.files.size());
    for (int i = 0; i < count; ++i)
        if (!history.isOwnSummary({node, i}))
            files.append(i);
    return files;
}

QString subline(const History& history, int node)
{
    const Workflowstep& step = history.step(node).step;
    QStringList parts;
    // Seconds and time zone have no room here; the step's page has them.
    static const QRegularExpression date(QStringLiteral("^\\d{4}-\\d\\d-\\d\\d[ T]\\d\\d:\\d\\d"));
    const QString minutes = date.match(step.timestamp).captured();
    const QString when = minutes.isEmpty() ? step.timestamp : minutes;
    for (const QString& part : {step.tool, step.user, when}) {
        const QString text = history.stepText(node, part.left(200)).simplified();
        if (!text.isEmpty())
            parts.append(text);
    }
    return parts.join(QStringLiteral(" · "));
}

QFont scaled(double factor, bool bold)
{
    QFont font = QApplication::font();
    font.setPixelSize(static_cast<int>(13 * factor));
    font.setBold(bold);
    return font;
}

QString elided(QPainter& painter, const QString& text, qreal width)
{
    return painter.fontMetrics().elidedText(text, Qt::ElideRight, static_cast<int>(width));
}

} // namespace

StepItem::StepItem(int node, const PictureState& state) : m_node(node), m_state(state)
{
    m_files = shownFiles(*state.history, node);
    m_moreFiles = static_cast<int>(m_files.size()) - fileLines;
    // One file more takes no more room than the line that counts it.
    if (m_moreFiles > 1)
        m_files.resize(fileLines);
    else
        m_moreFiles = 0;
    m_height = heightOf(*state.history, node);
}

qreal StepItem::heightOf(const History& history, int node)
{
    const qsizetype files = shownFiles(history, node).size();
    const qsizetype lines = std::min<qsizetype>(files, fileLines + 1);
    return headHeight + padding + (lines > 0 ? static_cast<qreal>(lines) * lineHeight + 4 : 0);
}

int StepItem::fileAt(const QPointF& where) const
{
    const int line = static_cast<int>((where.y() - headHeight - 4) / lineHeight);
    if (where.y() < headHeight + 4 || line >= m_files.size())
        return -1;
    return m_files.at(line);
}

QRectF StepItem::boundingRect() const
{
    return QRectF(-6, -14, PictureLayout::boxWidth + 12, m_height + 20);
}

QString StepItem::matchText() const
{
    QStringList names;
    const auto own = m_state.matches.constFind({m_node, -1});
    if (own != m_state.matches.constEnd())
        names.append(*own);
    const qsizetype files = m_state.history->step(m_node).step.files.size();
    for (int i = 0; i < files && names.size() < 3; ++i) {
        const auto found = m_state.matches.constFind({m_node, i});
        if (found != m_state.matches.constEnd() && !names.contains(*found))
            names.append(*found);
    }
    return names.join(QStringLiteral(", "));
}

void StepItem::paintFrame(QPainter& painter, const QPalette& palette, bool small) const
{
    const bool current = m_state.current.node == m_node;
    const bool damaged =
        m_state.results &&
        m_state.results->of(*m_state.history, {m_node, -1}).state == CheckState::Damaged;
    QColor line = palette.color(QPalette::Text);
    line.setAlphaF(0.55F);
    QPen pen(line, small ? 2.5 : 1.2);
    if (damaged)
        pen = QPen(alarmColour(palette), 2, Qt::DashLine);
    if (current)
        pen = QPen(readable(palette.color(QPalette::Highlight), palette.color(QPalette::Base), 3.0),
                   3);
    painter.setPen(pen);
    painter.setBrush(palette.color(QPalette::Base));
    painter.drawRoundedRect(QRectF(0, 0, PictureLayout::boxWidth, m_height), 8, 8);
}

void StepItem::paintSmall(QPainter& painter, const QPalette& palette, qreal scale) const
{
    if (scale < 0.12)
        return;
    painter.setPen(palette.color(QPalette::Text));
    painter.setFont(scaled(1.6, true));
    const QRectF room(padding + 34, 4, PictureLayout::boxWidth - 2 * padding - 34, m_height - 8);
    painter.drawText(room, Qt::AlignVCenter,
                     elided(painter, m_state.history->step(m_node).title, room.width()));
}

void StepItem::paintFiles(QPainter& painter, const QPalette& palette) const
{
    const History& history = *m_state.history;
    qreal y = headHeight + 4;
    painter.setFont(scaled(0.92, false));
    for (const int file : m_files) {
        const Place place{m_node, file};
        const QRectF line(6, y, PictureLayout::boxWidth - 12, lineHeight);
        const bool current = m_state.current == place;
        if (current) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(selectionGround(palette));
            painter.drawRoundedRect(line, 4, 4);
        }
        painter.setPen(palette.color(current ? QPalette::HighlightedText : QPalette::Text));
        painter.drawText(QRectF(padding + 20, y, 30, lineHeight), Qt::AlignVCenter,
                         purposeArrow(history.file(place).filePurpose));
        QString name = history.fileName(place);
        if (history.nestedIn(place) >= 0)
            name += Text::tr("  (has a history)");
        if (m_state.matches.contains(place))
            name = QStringLiteral("» ") + name;
        const qreal width = PictureLayout::boxWidth - 2 * padding - 54;
        painter.drawText(QRectF(padding + 54, y, width, lineHeight), Qt::AlignVCenter,
                         elided(painter, name, width));
        if (history.file(place).tagId >= 0 && m_state.results)
            drawMark(painter, QRectF(padding, y + 3, 13, 13),
                     m_state.results->of(history, place).state, palette);
        y += lineHeight;
    }
    if (m_moreFiles > 0) {
        painter.setPen(palette.color(QPalette::Text));
        painter.drawText(QRectF(padding + 20, y, PictureLayout::boxWidth, lineHeight),
                         Qt::AlignVCenter, Text::tr("… and %1 more").arg(m_moreFiles));
    }
}

void StepItem::paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget)
{
    // The option keeps the palette that was in force when the scene was made.
    const QPalette palette = widget ? widget->palette() : option->palette;
    const History& history = *m_state.history;
    const qreal scale =
        QStyleOptionGraphicsItem::levelOfDetailFromTransform(painter->worldTransform());
    const bool small = scale < smallScale;
    painter->setRenderHint(QPainter::Antialiasing);

    const QString match = matchText();
    if (!match.isEmpty()) {
        QColor ground = palette.color(QPalette::Highlight);
        ground.setAlphaF(0.35F);
        painter->setPen(Qt::NoPen);
        painter->setBrush(ground);
        painter->drawRoundedRect(QRectF(-6, -6, PictureLayout::boxWidth + 12, m_height + 12), 11,
                                 11);
    }
    paintFrame(*painter, palette, small);
    const CheckState state =
        m_state.results ? m_state.results->of(history, {m_node, -1}).state : CheckState::NotChecked;
    if (small) {
        drawMark(*painter, QRectF(padding, m_height / 2 - 13, 26, 26), state, palette);
        paintSmall(*painter, palette, scale);
        return;
    }
    drawMark(*painter, QRectF(padding, 11, markSide, markSide), state, palette);
    painter->setPen(palette.color(QPalette::Text));
    painter->setFont(scaled(1.1, true));
    const qreal width = PictureLayout::boxWidth - 2 * padding - markSide - 8;
    painter->drawText(QRectF(padding + markSide + 8, 8, width, 24), Qt::AlignVCenter,
                      elided(*painter, history.step(m_node).title, width));
    painter->setFont(scaled(0.9, false));
    QColor faint = palette.color(QPalette::Text);
    faint.setAlphaF(0.75F);
    painter->setPen(faint);
    painter->drawText(QRectF(padding + markSide + 8, 32, width, 18), Qt::AlignVCenter,
                      elided(*painter, subline(history, m_node), width));
    paintFiles(*painter, palette);
    if (!match.isEmpty()) {
        painter->setFont(scaled(0.85, true));
        const QString text = Text::tr("match: %1").arg(match);
        const qreal badge = painter->fontMetrics().horizontalAdvance(text) + 12;
        const QRectF where(PictureLayout::boxWidth - badge - 8, -13, badge, 18);
        painter->setPen(Qt::NoPen);
        painter->setBrush(selectionGround(palette));
        painter->drawRoundedRect(where, 9, 9);
        painter->setPen(palette.color(QPalette::HighlightedText));
        painter->drawText(where, Qt::AlignCenter, text);
    }
}

} // namespace lorix::viewer
