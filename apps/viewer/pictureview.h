// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/viewer/stepitem.h>

#include <QGraphicsView>

namespace lorix::viewer {

struct PictureLayout;

/// The history as a picture: a box for each step, the newest on top, and beside
/// a step the histories that its files bring with them.
///
/// Arrow keys go from step to step, Return asks for a step's files one after
/// the other, + and - zoom, 0 fits everything in. Only what is visible is drawn.
class PictureView : public QGraphicsView
{
    Q_OBJECT

public:
    explicit PictureView(QWidget* parent = nullptr);
    ~PictureView() override;

    /// Shows another history; null empties the picture.
    void setHistory(const QSharedPointer<History>& history);
    /// Where marks come from; must outlive the view.
    void setResults(const CheckResults* results) { m_state.results = results; }
    /// Places to be highlighted, with the names of the variables bound to them.
    void setMatches(const QHash<Place, QString>& matches);
    /// Draws anew what is visible, for new results.
    void refreshStates();

    /// Selects a step or file, and scrolls to it.
    void setCurrent(const Place& place);
    const Place& current() const { return m_state.current; }
    /// Where a step stands, in coordinates of the viewport.
    QRect boxOnScreen(int node) const;

public Q_SLOTS:
    void zoomIn();
    void zoomOut();
    void fit();
    void actualSize();

Q_SIGNALS:
    /// A person has chosen a step or file.
    void placeChosen(const lorix::viewer::Place& place);
    /// ... and begins to drag the file away.
    void dragRequested(const lorix::viewer::Place& place);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void changeEvent(QEvent* event) override;
    void drawBackground(QPainter* painter, const QRectF& rect) override;

private:
    void build();
    void addLinks(const PictureLayout& layout, const QList<qreal>& heights);
    void zoomBy(double factor);
    void choose(const Place& place);
    Place placeAt(const QPoint& where) const;
    Place neighbour(int key) const;
    Place nextFile() const;

    PictureState m_state;
    QList<StepItem*> m_items; // by node
    QPoint m_pressedAt;
    Place m_pressed;
};

} // namespace lorix::viewer
