// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/pictureview.h>

#include <apps/viewer/linkitems.h>
#include <apps/viewer/picturelayout.h>

#include <QApplication>
#include <QGraphicsScene>
#include <QKeyEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>

namespace lorix::viewer {

namespace {

const double smallest = 0.01;
const double largest = 4.0;
const double readable = 0.75; // a picture that fits at this scale is shown as a whole

} // namespace

PictureView::PictureView(QWidget* parent) : QGraphicsView(parent)
{
    setScene(new QGraphicsScene(this));
    setDragMode(ScrollHandDrag);
    setTransformationAnchor(AnchorUnderMouse);
    setViewportUpdateMode(MinimalViewportUpdate);
    setOptimizationFlag(DontSavePainterState);
    setFrameShape(NoFrame);
    setAccessibleName(tr("Picture of the history"));
    setAccessibleDescription(tr("A box for each step, the newest on top. The outline shows the "
                                "same as a list."));
}

PictureView::~PictureView() = default;

void PictureView::setHistory(const QSharedPointer<History>& history)
{
    m_state.history = history;
    m_state.current = Place();
    m_state.matches.clear();
    build();
}

void PictureView::build()
{
    m_items.clear();
    scene()->clear();
    if (!m_state.history) {
        scene()->setSceneRect(QRectF());
        return;
    }
    const History& history = *m_state.history;
    const int count = static_cast<int>(history.steps().size());
    QList<qreal> heights;
    heights.reserve(count);
    for (int node = 0; node < count; ++node)
        heights.append(StepItem::heightOf(history, node));
    const PictureLayout layout(history, heights);
    for (int i = 0; i < history.containers().size(); ++i)
        if (!layout.frames.at(i).isEmpty())
            scene()->addItem(
                new FrameItem(layout.frames.at(i),
                              i == 0 ? history.containers().at(i).name
                                     : tr("inside %1").arg(history.containers().at(i).name)));
    for (int node = 0; node < count; ++node) {
        auto* const item = new StepItem(node, m_state);
        item->setPos(layout.boxes.at(node));
        scene()->addItem(item);
        m_items.append(item);
    }
    addLinks(layout, heights);
    scene()->setSceneRect(layout.bounds.adjusted(-40, -40, 40, 40));
    fit();
    if (transform().m11() < readable) {
        actualSize();
        if (count > 0)
            centerOn(layout.boxes.first() + QPointF(PictureLayout::boxWidth / 2, height() / 3.0));
    }
}

// Arrows follow time: from an older step up to the newer one, and from the
// history inside a file to the step that brought the file in.
void PictureView::addLinks(const PictureLayout& layout, const QList<qreal>& heights)
{
    const qreal middle = PictureLayout::boxWidth / 2;
    for (const HistoryContainer& container : m_state.history->containers()) {
        for (int i = 0; i + 1 < container.nodes.size(); ++i) {
            const int newer = container.nodes.at(i);
            if (m_state.history->step(newer).sectionless)
                continue;
            const QPointF from = layout.boxes.at(container.nodes.at(i + 1)) + QPointF(middle, 0);
            const QPointF to = layout.boxes.at(newer) + QPointF(middle, heights.at(newer));
            scene()->addItem(new LinkItem(QPolygonF({from, to}), false));
        }
        if (container.embedding.isNull() || container.nodes.isEmpty())
            continue;
        const QPointF from = layout.boxes.at(container.nodes.first()) +
                             QPointF(0, heights.at(container.nodes.first()) / 2);
        const int holder = container.embedding.node;
        const QPointF to =
            layout.boxes.at(holder) + QPointF(PictureLayout::boxWidth, heights.at(holder) / 2);
        const qreal turn = to.x() + (PictureLayout::columnGap - PictureLayout::frameMargin) / 2;
        scene()->addItem(new LinkItem(
            QPolygonF({from, QPointF(turn, from.y()), QPointF(turn, to.y()), to}), true));
    }
}

void PictureView::setMatches(const QHash<Place, QString>& matches)
{
    m_state.matches = matches;
    viewport()->update();
}

void PictureView::refreshStates()
{
    viewport()->update();
}

void PictureView::setCurrent(const Place& place)
{
    if (!m_state.history || (!place.isNull() && !m_state.history->contains(place)))
        return;
    m_state.current = place;
    if (!place.isNull())
        ensureVisible(m_items.at(place.node), 40, 40);
    viewport()->update();
}

QRect PictureView::boxOnScreen(int node) const
{
    const StepItem* const item = m_items.at(node);
    const QRectF box(item->pos(),
                     QSizeF(PictureLayout::boxWidth, StepItem::heightOf(*m_state.history, node)));
    return mapFromScene(box).boundingRect();
}

void PictureView::zoomBy(double factor)
{
    const double now = transform().m11();
    const double then = std::clamp(now * factor, smallest, largest);
    scale(then / now, then / now);
}

void PictureView::zoomIn()
{
    zoomBy(1.25);
}

void PictureView::zoomOut()
{
    zoomBy(0.8);
}

void PictureView::fit()
{
    if (m_items.isEmpty())
        return;
    fitInView(sceneRect(), Qt::KeepAspectRatio);
    if (transform().m11() > 1.0)
        actualSize();
    else if (transform().m11() < smallest)
        setTransform(QTransform::fromScale(smallest, smallest));
}

void PictureView::actualSize()
{
    resetTransform();
}

void PictureView::choose(const Place& place)
{
    if (place.isNull() || place == m_state.current)
        return;
    setCurrent(place);
    Q_EMIT placeChosen(place);
}

Place PictureView::placeAt(const QPoint& where) const
{
    for (QGraphicsItem* const item : items(where)) {
        if (item->type() != StepItem::Type)
            continue;
        const auto* const step = static_cast<const StepItem*>(item);
        return {step->node(), step->fileAt(step->mapFromScene(mapToScene(where)))};
    }
    return {};
}

// Up is newer, down older, right into what a step brings with it, left out again.
Place PictureView::neighbour(int key) const
{
    const History& history = *m_state.history;
    if (m_state.current.isNull() && key != Qt::Key_End)
        return {0, -1};
    const int node = std::max(m_state.current.node, 0);
    const HistoryContainer& container = history.containers().at(history.step(node).container);
    const int row = static_cast<int>(container.nodes.indexOf(node));
    switch (key) {
    case Qt::Key_Up:
        return row > 0 ? Place{container.nodes.at(row - 1), -1} : Place{node, -1};
    case Qt::Key_Down:
        return row + 1 < container.nodes.size() ? Place{container.nodes.at(row + 1), -1}
                                                : Place{node, -1};
    case Qt::Key_Left:
        return container.embedding.isNull() ? m_state.current : Place{container.embedding.node, -1};
    case Qt::Key_Right:
        for (const HistoryContainer& nested : history.containers())
            if (nested.embedding.node == node && !nested.nodes.isEmpty())
                return {nested.nodes.first(), -1};
        return m_state.current;
    case Qt::Key_Home:
        return {0, -1};
    default:
        return {history.containers().first().nodes.last(), -1};
    }
}

Place PictureView::nextFile() const
{
    Place place = m_state.current;
    if (place.isNull())
        return place;
    const int count = static_cast<int>(m_state.history->step(place.node).step.files.size());
    place.file = place.file + 1 < count ? place.file + 1 : -1;
    return place;
}

void PictureView::keyPressEvent(QKeyEvent* event)
{
    if (!m_state.history || m_items.isEmpty()) {
        QGraphicsView::keyPressEvent(event);
        return;
    }
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Home:
    case Qt::Key_End:
        choose(neighbour(event->key()));
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        choose(nextFile());
        return;
    case Qt::Key_Plus:
        zoomIn();
        return;
    case Qt::Key_Minus:
        zoomOut();
        return;
    case Qt::Key_0:
        fit();
        return;
    default:
        QGraphicsView::keyPressEvent(event);
    }
}

void PictureView::mousePressEvent(QMouseEvent* event)
{
    m_pressedAt = event->pos();
    m_pressed = event->button() == Qt::LeftButton ? placeAt(event->pos()) : Place();
    if (m_pressed.isNull())
        QGraphicsView::mousePressEvent(event);
    else
        choose(m_pressed);
}

void PictureView::mouseMoveEvent(QMouseEvent* event)
{
    if (m_pressed.isNull() || !(event->buttons() & Qt::LeftButton)) {
        QGraphicsView::mouseMoveEvent(event);
        return;
    }
    const int moved = (event->pos() - m_pressedAt).manhattanLength();
    if (m_pressed.isFile() && moved >= QApplication::startDragDistance()) {
        const Place dragged = m_pressed;
        m_pressed = Place();
        Q_EMIT dragRequested(dragged);
    }
}

void PictureView::wheelEvent(QWheelEvent* event)
{
    if (!(event->modifiers() & Qt::ControlModifier)) {
        QGraphicsView::wheelEvent(event);
        return;
    }
    zoomBy(std::pow(1.0015, event->angleDelta().y()));
}

void PictureView::changeEvent(QEvent* event)
{
    QGraphicsView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        viewport()->update();
}

void PictureView::drawBackground(QPainter* painter, const QRectF& rect)
{
    painter->fillRect(rect, palette().color(QPalette::Window));
}

} // namespace lorix::viewer
